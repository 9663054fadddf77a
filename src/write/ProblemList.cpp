// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/ProblemList.h"

#include "base/modLog.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/PageColours.h"
#include "widgets/PaintedIcon.h"
#include "write/LineChecks.h"

#include <QAbstractListModel>
#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class ProblemModel : public QAbstractListModel
{
  public:
    using QAbstractListModel::QAbstractListModel;

    void Set(const std::vector<FoundProblems::InLine> &problems)
    {
        beginResetModel();
        m_problems = problems;
        endResetModel();
    }

    const FoundProblems::InLine &At(int row) const
    {
        return m_problems.at(size_t(row));
    }

    const std::vector<FoundProblems::InLine> &All() const
    {
        return m_problems;
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_problems.size());
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        return ProblemEntry(At(index.row()).line, At(index.row()).problem);
    }

  private:
    std::vector<FoundProblems::InLine> m_problems;
};

namespace {

constexpr int MarginPx = 6; // above and below the heading

int RowPx(const QFontMetrics &font)
{
    return font.height() * 8 / 5;
}

/// A sign, the line, what is wrong, and at the right what mending does about it.
class ProblemDelegate : public QStyledItemDelegate
{
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        return QSize(0, RowPx(option.fontMetrics));
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const FoundProblems::InLine &item = static_cast<const ProblemModel *>(index.model())->At(index.row());
        const QPalette &palette = option.palette;
        const QFontMetrics font = option.fontMetrics;
        const bool isChosen = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setFont(option.font);
        if (isChosen) {
            painter->fillRect(option.rect, palette.color(QPalette::AlternateBase));
            QRect edge = option.rect;
            edge.setWidth(3);
            if (option.state.testFlag(QStyle::State_HasFocus))
                painter->fillRect(edge, palette.color(QPalette::Highlight));
        }
        QRect rest = option.rect.adjusted(WindowMargin, 0, -WindowMargin, 0);
        const int side = IconSize(font);
        const QRect sign(rest.left(), rest.top() + (rest.height() - side) / 2, side, side);
        PaintIcon(painter, Icon::Warn, sign, palette.color(QPalette::BrightText), QColor());
        rest.setLeft(sign.right() + 1 + IconGap(font));
        const auto put = [&](const QString &text, const QColor &colour, int flags) {
            painter->setPen(colour);
            painter->drawText(rest, flags | int(Qt::AlignVCenter) | int(Qt::TextSingleLine),
                              font.elidedText(text, Qt::ElideRight, rest.width()));
        };
        const QString line = QString::number(item.line) + u"行目"_s;
        const int linePx = qMax(font.horizontalAdvance(u"00000行目"_s), font.horizontalAdvance(line));
        QRect number = rest;
        number.setWidth(linePx);
        painter->setPen(palette.color(QPalette::WindowText));
        painter->drawText(number, Qt::AlignRight | Qt::AlignVCenter, line);
        rest.setLeft(number.right() + 1 + ControlGap(font));
        const QString remedy = item.problem.offer.isEmpty() ? QString() : QString(u"直す："_s + item.problem.offer);
        const int whatPx = font.horizontalAdvance(item.problem.what);
        const int remedyPx = font.horizontalAdvance(remedy);
        if (!remedy.isEmpty() && whatPx + GroupGap(font) + remedyPx <= rest.width())
            put(remedy, DimmedBarPalette(palette).color(QPalette::WindowText), Qt::AlignRight);
        put(item.problem.what, palette.color(QPalette::WindowText), Qt::AlignLeft);
        painter->restore();
    }
};

} // namespace

ProblemList::ProblemList(QWidget *parent)
    : QWidget(parent), m_model(new ProblemModel(this)), lblProblems(NamedLabel(u"lblProblems"_s, QString(), this)),
      lblNextProblem(NamedLabel(u"lblNextProblem"_s, u"F8：次へ"_s, this)), lstProblems(new QListView(this))
{
    NameControl(lstProblems, u"lstProblems"_s, u"気になる所"_s, u"Enter かクリックでその所に移ります (F8)"_s);
    lstProblems->setModel(m_model);
    lstProblems->setItemDelegate(new ProblemDelegate(lstProblems));
    lstProblems->setUniformItemSizes(true);
    lstProblems->setFrameShape(QFrame::NoFrame);
    lstProblems->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstProblems->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstProblems->viewport()->setBackgroundRole(QPalette::Window);
    lstProblems->installEventFilter(this);
    connect(lstProblems, &QListView::clicked, this, [this](const QModelIndex &index) { Choose(index.row()); });
    QFont bold = font();
    bold.setBold(true);
    lblProblems->setFont(bold);
    auto *const head = new QHBoxLayout;
    head->setContentsMargins(WindowMargin, 0, WindowMargin, 0);
    head->addWidget(lblProblems);
    head->addWidget(lblNextProblem);
    head->addStretch();
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, MarginPx, 0, 0);
    column->setSpacing(MarginPx);
    column->addLayout(head);
    column->addWidget(lstProblems);
    ReserveSpace();
    hide();
}

QWidget *ProblemList::List() const
{
    return lstProblems;
}

void ProblemList::Show(const FoundProblems &found)
{
    const bool isMore = found.count > m_count;
    m_count = found.count;
    const QModelIndex current = lstProblems->currentIndex();
    m_model->Set(found.listed);
    if (current.isValid() && current.row() < m_model->rowCount())
        lstProblems->setCurrentIndex(m_model->index(current.row()));
    lblProblems->setText(u"気になる所 "_s + QString::number(found.count));
    lblProblems->setAccessibleName(ProblemCountText(found.count));
    setVisible(found.count > 0);
    if (isMore && QAccessible::isActive()) {
        QAccessibleEvent changed(lblProblems, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&changed);
        QAccessibleEvent alert(lblProblems, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void ProblemList::GoToNext(int line, int column)
{
    const auto &problems = m_model->All();
    if (problems.empty())
        return;
    auto next = std::ranges::find_if(problems, [line, column](const FoundProblems::InLine &item) {
        return std::pair(item.line, item.problem.column) > std::pair(line, column);
    });
    if (next == problems.end())
        next = problems.begin();
    lstProblems->setCurrentIndex(m_model->index(int(next - problems.begin())));
    Choose(lstProblems->currentIndex().row());
}

void ProblemList::Choose(int row)
{
    WriteTrace(u"■frmWrite.lstProblems_Click");
    if (row < 0 || row >= m_model->rowCount())
        return;
    const FoundProblems::InLine item = m_model->At(row);
    Q_EMIT Chosen(item.line, item.problem.column, item.problem.length);
}

void ProblemList::SetRows(int rows)
{
    if (rows == m_rows)
        return;
    m_rows = rows;
    ReserveSpace();
}

void ProblemList::ReserveSpace()
{
    lstProblems->setFixedHeight(m_rows * RowPx(fontMetrics()));
    lblNextProblem->setPalette(DimmedBarPalette(palette()));
}

bool ProblemList::eventFilter(QObject *object, QEvent *event)
{
    if (object == lstProblems && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Choose(lstProblems->currentIndex().row());
            return true; // the list would pass it on to the buttons
        }
    }
    return QWidget::eventFilter(object, event);
}

void ProblemList::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        ReserveSpace();
}

void ProblemList::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(0, 0, width(), 1, palette().color(QPalette::Mid));
}
