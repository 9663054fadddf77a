// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/StudyFileModel.h"

#include "base/modFile.h"
#include "text/modReadText.h"
#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/PageColours.h"
#include "widgets/PaintedIcon.h"

#include <QFileInfo>
#include <QPainter>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file's name as it is shown and found: all end in the same way.
QString WithoutEnding(const QString &name)
{
    return QFileInfo(name).completeBaseName();
}

} // namespace

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

void StudyFileModel::SetMarks(const QHash<QString, QStringList> &entries)
{
    m_marks.clear();
    m_markCount = 0;
    for (auto ofFile = entries.begin(); ofFile != entries.end(); ++ofFile) {
        m_marks.insert(ofFile.key(), int(ofFile->size()));
        m_markCount += ofFile->size();
    }
}

int StudyFileModel::HardCount(const QString &name) const
{
    return m_marks.value(ListField(GetFileTitle(m_folder.PathOf(name))));
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
    if (m_markCount > 0)
        matching += HardNoteTitle.toString();
    std::copy_if(
        m_folder.Names().begin(), m_folder.Names().end(), std::back_inserter(matching),
        [this](const QString &name) { return m_filter.isEmpty() || MatchesFilter(WithoutEnding(name), m_filter); });
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
        if (m_shown.at(row) != HardNoteTitle && !m_folder.IsChecked(m_shown.at(row)))
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
    if (name == HardNoteTitle)
        return DataOfNote(role);
    switch (role) {
    case Qt::DisplayRole:
        return name;
    case Qt::ToolTipRole:
        return PlainToolTip(Description(name).isEmpty() ? name : QString(name + u'\n' + Description(name)));
    case Qt::AccessibleTextRole:
        return Description(name).isEmpty() ? name : QString(name + u'，' + Description(name));
    case RemarksRole:
        return Remarks(name);
    case BlanksRole:
        return HasFigures(name) ? Blanks(name) : QString();
    case StudiedRole:
        return HasFigures(name) ? Studied(name) : QString();
    case HardRole:
        return HasFigures(name) && HardCount(name) > 0 ? QString::number(HardCount(name)) : QString();
    case PrintableCopyRole:
        return IsPrintableCopy(name);
    default:
        return QVariant();
    }
}

QVariant StudyFileModel::DataOfNote(int role) const
{
    const QString blanks = QString::number(m_markCount) + u'問';
    const QString files = QString::number(m_marks.size()) + u"ファイル"_s;
    switch (role) {
    case Qt::DisplayRole:
        return HardNoteTitle.toString();
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return QString(HardNoteTitle + u'　' + blanks + u'（' + files + u'）');
    case BlanksRole:
        return blanks;
    case StudiedRole:
        return QString(files + u"の苦手をまとめて学習します"_s);
    case NoteRole:
        return true;
    default:
        return QVariant();
    }
}

StudyTally StudyFileModel::TallyOf(const QString &name) const
{
    return m_tallies.Of(RecordedTitle(m_folder.PathOf(name)));
}

bool StudyFileModel::HasFigures(const QString &name) const
{
    return m_folder.IsChecked(name) && m_folder.Facts(name).remarks.isEmpty();
}

QString StudyFileModel::Remarks(const QString &name) const
{
    const StudyFileFacts facts = m_folder.Facts(name);
    return facts.remarks.isEmpty() || facts.remedy == Remedy::None
               ? facts.remarks
               : QString(facts.remarks + u'　' + RemedyText(facts.remedy));
}

/// "1問（全角の［ ］ 10）" if some brackets hide nothing.
QString StudyFileModel::Blanks(const QString &name) const
{
    const StudyFileFacts facts = m_folder.Facts(name);
    const QString blanks = QString::number(facts.blanks) + u'問';
    return facts.fullWidth == 0 ? blanks
                                : QString(blanks + u"（全角の［ ］ "_s + QString::number(facts.fullWidth) + u'）');
}

QString StudyFileModel::Studied(const QString &name) const
{
    const StudyTally tally = TallyOf(name);
    if (tally.times == 0 && m_tallies.IsComplete())
        return u"まだ学習していません"_s;
    return StudiedText(tally, m_today);
}

/// What is known about a file besides its name.
QString StudyFileModel::Description(const QString &name) const
{
    if (!HasFigures(name))
        return Remarks(name);
    const StudyFileFacts facts = m_folder.Facts(name);
    const QString sentence = StudyFiguresSentence(facts.blanks, HardCount(name), TallyOf(name), m_today);
    return facts.fullWidth == 0 ? sentence
                                : QString(sentence + u"，全角の［ ］"_s + QString::number(facts.fullWidth) + u'　' +
                                          RemedyText(Remedy::Mend));
}

QString StudyFileDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return NameInLine(WithoutEnding(value.toString()));
}

namespace {

/// The places in a row, by the font of its list.
class RowPlaces
{
  public:
    RowPlaces(const QFont &font, const QRect &row)
        : m_name(font), m_small(SmallFont(font)), m_em(Ems(m_name, 1)), m_row(row)
    {
    }

    static QFont SmallFont(QFont font)
    {
        constexpr double ofWindow = 0.88;
        if (font.pixelSize() > 0)
            font.setPixelSize(qRound(font.pixelSize() * ofWindow));
        else
            font.setPointSizeF(font.pointSizeF() * ofWindow);
        return font;
    }

    int Height() const
    {
        return m_name.height() + m_small.height() + 2 * Padding();
    }

    QRectF Sign() const
    {
        const double side = 1.4 * m_em;
        return QRectF(m_row.left() + m_em, m_row.center().y() - side / 2, side, side);
    }

    QRect FirstLine() const
    {
        return Line(Padding(), m_name.height());
    }

    QRect SecondLine() const
    {
        return Line(Padding() + m_name.height(), m_small.height());
    }

  private:
    int Padding() const
    {
        return Ems(m_name, 0.4);
    }

    QRect Line(int top, int height) const
    {
        const int left = 3 * m_em;
        return QRect(m_row.left() + left, m_row.top() + top, m_row.width() - left - m_em, height);
    }

    QFontMetrics m_name;
    QFontMetrics m_small;
    int m_em;
    QRect m_row;
};

constexpr int AlignedLeft = int(Qt::AlignLeft) | int(Qt::AlignVCenter) | int(Qt::TextSingleLine);
constexpr int AlignedRight = int(Qt::AlignRight) | int(Qt::AlignVCenter) | int(Qt::TextSingleLine);

struct RowColours
{
    QColor text;
    QColor dim;
    QColor warning;
    QColor hard;
};

void PaintNameAndBlanks(QPainter *painter, const QRect &line, const QString &name, bool isBold, const QString &blanks,
                        const RowColours &colours, bool isDim)
{
    const int blanksWidth = blanks.isEmpty() ? 0 : painter->fontMetrics().horizontalAdvance(blanks + u'　');
    painter->setPen(colours.text);
    painter->drawText(line, AlignedRight, blanks);
    QFont font = painter->font();
    font.setBold(isBold);
    painter->setFont(font);
    painter->setPen(isDim ? colours.dim : colours.text);
    painter->drawText(line, AlignedLeft,
                      painter->fontMetrics().elidedText(name, Qt::ElideMiddle, line.width() - blanksWidth));
}

void PaintSecondLine(QPainter *painter, QRect line, const QModelIndex &index, const RowColours &colours)
{
    QString text = index.data(StudyFileModel::StudiedRole).toString();
    painter->setPen(colours.dim);
    if (const QString remarks = index.data(StudyFileModel::RemarksRole).toString(); !remarks.isEmpty()) {
        const int side = line.height();
        PaintIcon(painter, Icon::Warn, QRectF(line.left(), line.top(), side, side), colours.warning, QColor());
        line.setLeft(line.left() + side + IconGap(painter->fontMetrics()));
        text = remarks;
        painter->setPen(colours.text);
    }
    if (const QString hard = index.data(StudyFileModel::HardRole).toString(); !hard.isEmpty()) {
        PaintHardCorner(painter, line, hard, painter->fontMetrics(), colours.hard);
        painter->setPen(colours.text);
        painter->drawText(line, AlignedRight, hard);
        line.setRight(line.right() - painter->fontMetrics().horizontalAdvance(hard + u"　　"_s));
        painter->setPen(colours.dim);
    }
    painter->drawText(line, AlignedLeft, painter->fontMetrics().elidedText(text, Qt::ElideRight, line.width()));
}

} // namespace

void StudyFileDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr int edgePx = 3;
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const DesktopColours desktop = ColoursOn(item.palette);
    const QColor ground = isSelected ? desktop.tint : item.palette.color(QPalette::Base);
    const QColor text = isSelected ? desktop.onTint : item.palette.color(QPalette::Text);
    const RowColours colours{text, Dimmed(text, ground), WithContrast(desktop.warning, ground, text, ShapeContrast),
                             WithContrast(desktop.hard, ground, text, ShapeContrast)};
    const RowPlaces places(item.font, item.rect);

    const bool isNote = index.data(StudyFileModel::NoteRole).toBool();
    const QColor accent = WithContrast(desktop.accent, ground, text, ShapeContrast);

    painter->save();
    painter->fillRect(item.rect, ground);
    if (isNote)
        painter->fillRect(QRect(item.rect.left(), item.rect.bottom(), item.rect.width(), 1), colours.dim);
    if (item.state.testFlag(QStyle::State_HasFocus)) // also where only the cursor is, between several selected rows
        painter->fillRect(QRect(item.rect.topLeft(), QSize(edgePx, item.rect.height())), accent);
    PaintIcon(painter, isNote ? Icon::Notebook : Icon::File, places.Sign(), isNote ? accent : colours.dim, QColor());
    painter->setFont(item.font);
    PaintNameAndBlanks(painter, places.FirstLine(), item.text, isSelected || isNote,
                       index.data(StudyFileModel::BlanksRole).toString(), colours,
                       index.data(StudyFileModel::PrintableCopyRole).toBool());
    painter->setFont(RowPlaces::SmallFont(item.font));
    PaintSecondLine(painter, places.SecondLine(), index, colours);
    painter->restore();
}

QSize StudyFileDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return QSize(1, RowPlaces(option.font, QRect()).Height());
}
