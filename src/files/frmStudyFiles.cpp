#include "files/frmStudyFiles.h"

#include <QPainter>

StudyFileModel::StudyFileModel(StudyFolder &folder, QObject *parent) : QAbstractListModel(parent), m_folder(folder) {}

void StudyFileModel::Refresh()
{
    beginResetModel();
    m_folder.Refresh();
    endResetModel();
}

int StudyFileModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_folder.Names().size());
}

QVariant StudyFileModel::data(const QModelIndex &index, int role) const
{
    const QString &name = m_folder.Names().at(index.row());
    if (role == Qt::DisplayRole)
        return name;
    if (role == FaultRole)
        return m_folder.Fault(name);
    return QVariant();
}

void StudyFileDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    const QString fault = index.data(StudyFileModel::FaultRole).toString();
    if (fault.isEmpty())
        return;
    constexpr int gapPx = 16;
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    QColor colour = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    colour.setAlphaF(isSelected ? 1.0f : 0.65f);
    const int nameWidth = option.fontMetrics.horizontalAdvance(index.data(Qt::DisplayRole).toString());
    painter->save();
    painter->setClipRect(option.rect);
    painter->setFont(option.font);
    painter->setPen(colour);
    painter->drawText(option.rect.adjusted(nameWidth + gapPx, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, fault);
    painter->restore();
}
