#include "files/StudyFileModel.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

StudyFileModel::StudyFileModel(StudyFolder &folder, QObject *parent) : QAbstractListModel(parent), m_folder(folder)
{
    m_checking.setObjectName(u"tmrCheck"_s);
    m_checking.setSingleShot(true);
    connect(&m_checking, &QTimer::timeout, this, &StudyFileModel::CheckNext);
}

void StudyFileModel::Refresh()
{
    beginResetModel();
    DropChecks();
    m_folder.Refresh();
    endResetModel();
}

void StudyFileModel::DropChecks()
{
    m_pending.clear();
    m_newRequests = 0;
    m_checking.stop();
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
    if (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole) {
        const QString fault = m_folder.Fault(name);
        if (fault.isEmpty())
            return name;
        return QString(name + (role == Qt::ToolTipRole ? u'\n' : u'、') + fault);
    }
    if (role != FaultRole)
        return QVariant();
    if (!m_folder.IsChecked(name) && !m_pending.contains(name)) {
        m_pending.insert(m_newRequests++, name);
        m_checking.start(0);
    }
    return m_folder.Fault(name);
}

void StudyFileModel::CheckNext()
{
    const QString name = m_pending.takeFirst();
    m_newRequests = 0;
    m_folder.Check(name);
    const QModelIndex changed = index(int(m_folder.Names().indexOf(name)));
    Q_EMIT dataChanged(changed, changed, {FaultRole, Qt::ToolTipRole, Qt::AccessibleTextRole});
    if (!m_pending.isEmpty())
        m_checking.start(0);
}

void StudyFileDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle *const style = item.widget ? item.widget->style() : QApplication::style();
    const QFontMetrics metrics(item.font);
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    const QRect available = item.rect.adjusted(margin, 0, -margin, 0);
    const QString fault =
        metrics.elidedText(index.data(StudyFileModel::FaultRole).toString(), Qt::ElideRight, available.width());
    const int faultWidth = fault.isEmpty() ? 0 : metrics.horizontalAdvance(fault) + 2 * metrics.averageCharWidth();
    item.text = metrics.elidedText(item.text, Qt::ElideMiddle, qMax(0, available.width() - faultWidth));
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const QPalette::ColorGroup group =
        item.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const QColor colour =
        isSelected ? item.palette.color(group, QPalette::HighlightedText)
                   : Dimmed(item.palette.color(group, QPalette::Text), item.palette.color(group, QPalette::Base));
    painter->save();
    painter->setFont(item.font);
    painter->setPen(colour);
    painter->drawText(available, Qt::AlignRight | Qt::AlignVCenter, fault);
    painter->restore();
}

QSize StudyFileDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QSize(1, QStyledItemDelegate::sizeHint(option, index).height());
}
