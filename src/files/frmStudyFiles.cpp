#include "files/frmStudyFiles.h"

#include "platform/frmBusyPointer.h"

#include <QPainter>

StudyFileModel::StudyFileModel(StudyFolder &folder, QObject *parent) : QAbstractListModel(parent), m_folder(folder)
{
    m_checking.setSingleShot(true);
    connect(&m_checking, &QTimer::timeout, this, &StudyFileModel::CheckNext);
}

void StudyFileModel::Refresh()
{
    beginResetModel();
    m_wanted.clear();
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
    if (role != FaultRole)
        return QVariant();
    if (!m_folder.IsChecked(name) && !m_wanted.contains(name)) {
        m_wanted += name;
        m_checking.start(0);
    }
    return m_folder.Fault(name);
}

void StudyFileModel::CheckNext()
{
    if (m_wanted.isEmpty())
        return;
    const QString name = m_wanted.takeFirst();
    {
        BusyPointer pointer;
        m_folder.Check(name, [&pointer] { pointer.Tick(); });
    }
    const QModelIndex changed = index(int(m_folder.Names().indexOf(name)));
    if (changed.isValid()) // the folder may have been listed again meanwhile
        Q_EMIT dataChanged(changed, changed, {FaultRole});
    if (!m_wanted.isEmpty())
        m_checking.start(0);
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
