// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/FileTable.h"

#include "base/modDateText.h"
#include "base/modFile.h"
#include "history/DayChart.h"
#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/PageColours.h"
#include "widgets/PaintedIcon.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

void FileTableModel::Show(const StudyTallies::ByTitle &tallies, const HardByTitle &files, const QDate &today)
{
    beginResetModel();
    m_today = today;
    m_longest = 0;
    m_rows.clear();
    for (auto tally = tallies.begin(); tally != tallies.end(); ++tally) {
        m_rows.push_back({tally.key(), tally.value(), files.value(tally.key()), !files.contains(tally.key())});
        m_longest = qMax(m_longest, tally->sum.seconds);
    }
    Sort();
    endResetModel();
}

int FileTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int FileTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant FileTableModel::data(const QModelIndex &index, int role) const
{
    const Row &row = m_rows[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return Text(row, index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter | (index.column() == TitleColumn ? Qt::AlignLeft : Qt::AlignRight));
    case PartRole:
        return index.column() == TimeColumn && m_longest > 0 ? double(row.tally.sum.seconds) / double(m_longest) : 0.0;
    case IsGoneRole:
        return row.isGone;
    default:
        return QVariant();
    }
}

QString FileTableModel::Text(const Row &row, int column) const
{
    switch (column) {
    case TitleColumn:
        return NameInLine(row.title);
    case TimeColumn:
        return StudyTimeText(row.tally.sum.seconds);
    case TimesColumn:
        return QString::number(row.tally.times);
    case AnswersColumn:
        return QString::number(row.tally.sum.answers);
    case LastColumn:
        return row.tally.lastDay.isValid() ? RecentDayText(row.tally.lastDay, m_today) : QString();
    default:
        return row.hard == 0 ? QString() : QString::number(row.hard);
    }
}

QVariant FileTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList names = {u"ファイル"_s, u"時間"_s, u"回"_s, u"回答"_s, u"最後"_s, u"苦手"_s};
    if (orientation == Qt::Vertical)
        return QVariant();
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter | (section == TitleColumn ? Qt::AlignLeft : Qt::AlignRight));
    return role == Qt::DisplayRole ? names.at(section) : QVariant();
}

void FileTableModel::sort(int column, Qt::SortOrder order)
{
    beginResetModel();
    m_column = column;
    m_order = order;
    Sort();
    endResetModel();
}

/// Rows with the same value stand by title.
void FileTableModel::Sort()
{
    const auto value = [this](const Row &row) -> qint64 {
        switch (m_column) {
        case TimeColumn:
            return row.tally.sum.seconds;
        case TimesColumn:
            return row.tally.times;
        case AnswersColumn:
            return row.tally.sum.answers;
        case LastColumn:
            return row.tally.lastDay.toJulianDay();
        case HardColumn:
            return row.hard;
        default:
            return 0;
        }
    };
    const bool isDescending = m_order == Qt::DescendingOrder;
    std::ranges::sort(m_rows, [&](const Row &one, const Row &other) {
        if (const qint64 first = value(one), second = value(other); first != second)
            return isDescending ? second < first : first < second;
        return isDescending && m_column == TitleColumn ? other.title < one.title : one.title < other.title;
    });
}

namespace {

/// Paints a cell with a bar below the time, the corner of a hard word before their number, and what is gone dimmed.
class FileTableDelegate : public QStyledItemDelegate
{
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        const bool isSelected = item.state.testFlag(QStyle::State_Selected);
        const DesktopColours desktop = ColoursOn(item.palette);
        const QColor ground = isSelected ? desktop.tint : item.palette.color(QPalette::Base);
        const QColor text = isSelected ? desktop.onTint : item.palette.color(QPalette::Text);
        const int margin = FieldMargin(item.fontMetrics);
        const QRect inside = item.rect.adjusted(margin, 0, -margin, 0);
        painter->save();
        painter->fillRect(item.rect, ground);
        if (const double part = index.data(FileTableModel::PartRole).toDouble(); part > 0) {
            constexpr int barPx = 3;
            const int width = qMax(1, qRound(part * inside.width()));
            painter->fillRect(QRect(inside.right() + 1 - width, inside.bottom() - barPx, width, barPx),
                              ChartColoursOn(item.palette).other);
        }
        if (index.column() == FileTableModel::HardColumn && !item.text.isEmpty())
            PaintHardCorner(painter, inside, item.text, item.fontMetrics, desktop.hard);
        painter->setFont(item.font);
        painter->setPen(index.data(FileTableModel::IsGoneRole).toBool() ? Dimmed(text, ground) : text);
        painter->drawText(inside, int(item.displayAlignment) | int(Qt::TextSingleLine),
                          item.fontMetrics.elidedText(item.text, Qt::ElideMiddle, inside.width()));
        painter->restore();
    }
};

} // namespace

FileTable::FileTable(QWidget *parent) : QTableView(parent), m_model(new FileTableModel(this))
{
    setObjectName(u"tblFiles"_s);
    setAccessibleName(u"ファイル別の学習"_s);
    setToolTip(u"見出しを押すか，1～6 のキーを押すと，その順に並びます"_s);
    setModel(m_model);
    setItemDelegate(new FileTableDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(FileTableModel::TitleColumn, QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    setSortingEnabled(true);
    sortByColumn(FileTableModel::TimeColumn, Qt::DescendingOrder);
    connect(this, &QTableView::doubleClicked, this, &FileTable::Ask);
    FitRows();
}

void FileTable::ShowRead(const StudyTallies &tallies, const HardByTitle &files, const QDate &today)
{
    const QString chosen = currentIndex().isValid() ? m_model->TitleAt(currentIndex().row()) : QString();
    m_model->Show(tallies.OfAll(), files, today);
    for (int row = 0; row < m_model->rowCount() && !chosen.isEmpty(); ++row)
        if (m_model->TitleAt(row) == chosen)
            setCurrentIndex(m_model->index(row, 0));
    if (tallies.HasFailed())
        m_sentence = u"読めませんでした"_s;
    else
        m_sentence = tallies.IsComplete() ? AllTalliesSentence(tallies.OfAll()) : u"読み込み中…"_s;
    setAccessibleDescription(m_sentence);
    viewport()->update();
}

QSize FileTable::sizeHint() const
{
    return QSize(Ems(fontMetrics(), 30), Ems(fontMetrics(), 13));
}

QSize FileTable::minimumSizeHint() const
{
    return QSize(Ems(fontMetrics(), 20), Ems(fontMetrics(), 7));
}

void FileTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        FitRows();
}

/// Rows and columns as their font needs them.
void FileTable::FitRows()
{
    constexpr std::array<double, FileTableModel::ColumnCount> ems = {0, 8, 4.6, 6, 7.6, 3.8};
    verticalHeader()->setDefaultSectionSize(qRound(1.6 * fontMetrics().height()));
    for (int column = FileTableModel::TimeColumn; column < FileTableModel::ColumnCount; ++column)
        horizontalHeader()->resizeSection(column, Ems(fontMetrics(), ems[size_t(column)]));
}

void FileTable::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Ask(currentIndex()); // and not the default button
    else if (const int column = event->key() - Qt::Key_1; column >= 0 && column < FileTableModel::ColumnCount)
        SortBy(column);
    else
        QTableView::keyPressEvent(event);
}

/// Sorts by a column as a click on its heading does: the largest values first, and the other way at the next time.
void FileTable::SortBy(int column)
{
    const QHeaderView *const header = horizontalHeader();
    const bool isAgain = header->sortIndicatorSection() == column;
    const bool isDescending =
        isAgain ? header->sortIndicatorOrder() == Qt::AscendingOrder : column != FileTableModel::TitleColumn;
    sortByColumn(column, isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void FileTable::Ask(const QModelIndex &index)
{
    if (index.isValid())
        Q_EMIT FileAsked(m_model->TitleAt(index.row()));
}

void FileTable::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (m_model->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(Dimmed(palette().color(QPalette::Text), palette().color(QPalette::Base)));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, m_sentence);
}
