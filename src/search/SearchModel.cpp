// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/SearchModel.h"

#include "widgets/NamedControls.h"

using namespace Qt::Literals::StringLiterals;

SearchModel::SearchModel(KeywordSearch &search, QObject *parent)
    : QAbstractListModel(parent), m_search(search), m_typedHits(search.HitsOfText(QString(), 1))
{
}

void SearchModel::SetFilter(const QString &typed, int startLine)
{
    beginResetModel();
    m_typed = typed;
    m_typedHits = m_search.HitsOfText(typed, startLine);
    m_keywords = m_search.KeywordsWith(typed);
    endResetModel();
}

QString SearchModel::SearchText(int row) const
{
    return IsTypedText(row) ? m_typed : m_keywords.at(row - (m_typed.isEmpty() ? 0 : 1));
}

int SearchModel::RowOf(const QString &keyword) const
{
    return int(m_keywords.indexOf(keyword)) + (m_typed.isEmpty() ? 0 : 1);
}

void SearchModel::ShowCounts()
{
    if (const int rows = rowCount(); rows > 0)
        Q_EMIT dataChanged(index(0), index(rows - 1), {Qt::DisplayRole, Qt::ToolTipRole});
}

void SearchModel::PutFoundFirst()
{
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    QStringList chosen;
    for (const QModelIndex &entry : before)
        chosen += SearchText(entry.row());
    m_keywords = m_search.KeywordsWith(m_typed);
    for (qsizetype i = 0; i < before.size(); ++i)
        if (!IsTypedText(before[i].row()))
            changePersistentIndex(before[i], index(RowOf(chosen[i])));
    Q_EMIT layoutChanged();
}

int SearchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_keywords.size()) + (m_typed.isEmpty() ? 0 : 1);
}

QVariant SearchModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    const bool isTyped = IsTypedText(index.row());
    const QString wanted = SearchText(index.row());
    const QString text = (isTyped ? QString(u'「' + wanted + u'」') : wanted) + u"　"_s +
                         (isTyped ? CountText(m_typedHits->Count(), m_typedHits->IsComplete())
                                  : CountText(m_search.CountOf(wanted), m_search.IsCounted()));
    return role == Qt::ToolTipRole ? PlainToolTip(text) : text;
}
