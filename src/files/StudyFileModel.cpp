// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/StudyFileModel.h"

#include "base/modFile.h"
#include "text/modReadText.h"
#include "widgets/Contrast.h"
#include "widgets/NamedControls.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

StudyFileModel::StudyFileModel(StudyFolder &folder, const StudyTallies &tallies, QObject *parent)
    : QAbstractListModel(parent), m_folder(folder), m_tallies(tallies)
{
    m_checking.setObjectName(u"tmrCheck"_s);
    connect(&m_checking, &QTimer::timeout, this, &StudyFileModel::CheckNext);
}

void StudyFileModel::Refresh(const QDate &today)
{
    m_today = today;
    DropChecks();
    m_folder.Refresh();
    ShowMatching();
}

void StudyFileModel::SetFilter(const QString &wanted)
{
    m_filter = wanted;
    ShowMatching();
}

/// Keeps the scroll position if the same files match as before.
void StudyFileModel::ShowMatching()
{
    QStringList matching;
    std::copy_if(m_folder.Names().begin(), m_folder.Names().end(), std::back_inserter(matching),
                 [this](const QString &name) { return m_filter.isEmpty() || MatchesFilter(name, m_filter); });
    if (matching == m_shown) {
        ShowTallies();
        return;
    }
    beginResetModel();
    m_shown = matching;
    m_rows.clear();
    for (const QString &name : m_shown)
        m_rows.insert(name, int(m_rows.size()));
    endResetModel();
}

void StudyFileModel::ShowTallies()
{
    if (!m_shown.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_shown.size()) - 1));
}

void StudyFileModel::CheckRows(int first, int last)
{
    DropChecks();
    for (int row = first; row <= last && row < m_shown.size(); ++row)
        if (!m_folder.IsChecked(m_shown.at(row)))
            m_pending += m_shown.at(row);
    if (!m_pending.isEmpty())
        m_checking.start(0);
}

void StudyFileModel::CheckNext()
{
    const QString name = m_pending.takeFirst();
    if (m_pending.isEmpty())
        m_checking.stop();
    m_folder.Check(name);
    if (const QModelIndex changed = IndexOf(name); changed.isValid())
        Q_EMIT dataChanged(changed, changed);
}

void StudyFileModel::DropChecks()
{
    m_pending.clear();
    m_checking.stop();
}

QModelIndex StudyFileModel::IndexOf(const QString &name) const
{
    const auto row = m_rows.constFind(name);
    return row == m_rows.constEnd() ? QModelIndex() : index(*row);
}

int StudyFileModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

QVariant StudyFileModel::data(const QModelIndex &index, int role) const
{
    const QString &name = m_shown.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return name;
    case Qt::ToolTipRole:
        return PlainToolTip(Description(name).isEmpty() ? name : QString(name + u'\n' + Description(name)));
    case Qt::AccessibleTextRole:
        return Description(name).isEmpty() ? name : QString(name + u'，' + Description(name));
    case RemarksRole:
        return m_folder.Facts(name).remarks;
    case FiguresRole:
        if (!m_folder.IsChecked(name) || !m_folder.Facts(name).remarks.isEmpty())
            return QVariant();
        return QVariant::fromValue(FiguresOf(m_folder.Facts(name).blanks, TallyOf(name), m_today));
    case IsStudiedRole:
        return !m_tallies.IsEmpty();
    case PrintableCopyRole:
        return IsPrintableCopy(name);
    default:
        return QVariant();
    }
}

StudyTally StudyFileModel::TallyOf(const QString &name) const
{
    return m_tallies.Of(RecordedTitle(m_folder.PathOf(name)));
}

/// What is known about a file besides its name.
QString StudyFileModel::Description(const QString &name) const
{
    if (!m_folder.IsChecked(name))
        return QString();
    const StudyFileFacts facts = m_folder.Facts(name);
    return facts.remarks.isEmpty() ? StudyFiguresSentence(facts.blanks, TallyOf(name)) : facts.remarks;
}

namespace {

/// The right part of a row: remarks, or figures in columns of their usual width. A name that would not fit gets the
/// room of empty figures.
class RightPart
{
  public:
    RightPart(const QModelIndex &index, const QFontMetrics &metrics, const QRect &available)
        : m_gapPx(metrics.horizontalAdvance(u'　')), m_leftPx(available.right() + 1)
    {
        const QString remarks = index.data(StudyFileModel::RemarksRole).toString();
        if (!remarks.isEmpty()) {
            AddField(metrics.elidedText(remarks, Qt::ElideRight, available.width()), metrics, available, 0);
            return;
        }
        const QVariant figures = index.data(StudyFileModel::FiguresRole);
        if (!figures.isValid())
            return;
        const bool isStudied = index.data(StudyFileModel::IsStudiedRole).toBool();
        AddFigures(figures.value<StudyFigures>(), isStudied, metrics, available);
        if (!isStudied || metrics.horizontalAdvance(index.data().toString()) <= NameWidthPx(available))
            return;
        m_fields.clear();
        m_leftPx = available.right() + 1;
        AddFigures(figures.value<StudyFigures>(), false, metrics, available);
    }

    /// Width left for the name.
    int NameWidthPx(const QRect &available) const
    {
        return m_fields.empty() ? available.width() : qMax(0, m_leftPx - m_gapPx - available.left());
    }

    void Paint(QPainter *painter) const
    {
        for (const auto &[rect, text] : m_fields)
            painter->drawText(rect, Qt::AlignRight | Qt::AlignVCenter, text);
    }

  private:
    /// @param hasGaps  whether empty figures keep their columns
    void AddFigures(const StudyFigures &figures, bool hasGaps, const QFontMetrics &metrics, const QRect &available)
    {
        const std::pair<QString, QString> fields[] = {
            {figures.lastDay, u"8888年"_s}, {figures.times, u"88回"_s}, {figures.blanks, u"888問"_s}};
        for (const auto &[text, usual] : fields)
            if (hasGaps || !text.isEmpty())
                AddField(text, metrics, available, metrics.horizontalAdvance(usual));
    }

    void AddField(const QString &text, const QFontMetrics &metrics, const QRect &available, int minWidthPx)
    {
        const int rightPx = m_fields.empty() ? m_leftPx : m_leftPx - m_gapPx;
        const int widthPx = qMax(minWidthPx, metrics.horizontalAdvance(text));
        m_leftPx = rightPx - widthPx;
        m_fields.emplace_back(QRect(m_leftPx, available.top(), widthPx, available.height()), text);
    }

    int m_gapPx;
    int m_leftPx; // of the field added last
    std::vector<std::pair<QRect, QString>> m_fields;
};

/// Whether a style paints selected items on a pale background in the colour of other text, as that of Windows does,
/// whatever the palette says.
bool HasPaleSelection(const QStyle *style)
{
    const auto *const proxy = qobject_cast<const QProxyStyle *>(style);
    return (proxy ? proxy->baseStyle() : style)->inherits("QWindowsVistaStyle");
}

} // namespace

QString StudyFileDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return NameInLine(value.toString());
}

void StudyFileDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle *const style = item.widget ? item.widget->style() : QApplication::style();
    const QFontMetrics metrics(item.font);
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    const QRect available = item.rect.adjusted(margin, 0, -margin, 0);
    const RightPart rightPart(index, metrics, available);
    item.text = metrics.elidedText(item.text, Qt::ElideMiddle, rightPart.NameWidthPx(available));

    const QPalette::ColorRole selected = HasPaleSelection(style) ? QPalette::Text : QPalette::HighlightedText;
    const QPalette::ColorGroup group =
        item.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const QColor dimmed = Dimmed(item.palette.color(group, QPalette::Text), item.palette.color(group, QPalette::Base));
    if (index.data(StudyFileModel::PrintableCopyRole).toBool())
        item.palette.setColor(group, QPalette::Text, dimmed);
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    painter->save();
    painter->setFont(item.font);
    painter->setPen(item.state.testFlag(QStyle::State_Selected) ? item.palette.color(group, selected) : dimmed);
    rightPart.Paint(painter);
    painter->restore();
}

QSize StudyFileDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QSize(1, QStyledItemDelegate::sizeHint(option, index).height());
}
