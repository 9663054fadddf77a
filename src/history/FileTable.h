// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The whole record by study file, as a table that can be sorted by each column.
#pragma once

#include "history/modStudyTally.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <vector>

/// The study files that there are, by the title under which their sessions are recorded, with the number of their hard
/// words.
using HardByTitle = QHash<QString, int>;

class FileTableModel : public QAbstractTableModel
{
    Q_OBJECT

  public:
    enum Column
    {
        TitleColumn,
        TimeColumn,
        TimesColumn,
        AnswersColumn,
        LastColumn,
        HardColumn,
        ColumnCount,
    };

    enum Role
    {
        PartRole = Qt::UserRole, ///< of the time column: 0 to 1, the part of the longest time
        IsGoneRole,              ///< whether there is no such study file any more
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows other rows, in the order chosen last.
    void Show(const StudyTallies::ByTitle &tallies, const HardByTitle &files, const QDate &today);

    /// The recorded title in a row.
    const QString &TitleAt(int row) const
    {
        return m_rows[size_t(row)].title;
    }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    struct Row
    {
        QString title;
        StudyTally tally;
        int hard;    ///< number of hard words
        bool isGone; ///< no such file
    };

    QString Text(const Row &row, int column) const;
    void Sort();

    std::vector<Row> m_rows;
    QDate m_today;
    qint64 m_longest = 0; // seconds
    int m_column = TimeColumn;
    Qt::SortOrder m_order = Qt::DescendingOrder;
};

class FileTable : public QTableView
{
    Q_OBJECT

  public:
    explicit FileTable(QWidget *parent);

    /// Shows what has been read by now. @param files  the study files that there are
    void ShowRead(const StudyTallies &tallies, const HardByTitle &files, const QDate &today);

    /// What all of it says.
    const QString &Sentence() const
    {
        return m_sentence;
    }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void FileAsked(const QString &title); ///< the user wants to study the file

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

  private:
    void FitRows();
    void SortBy(int column);
    void Ask(const QModelIndex &index);

    FileTableModel *m_model;
    QString m_sentence;
};
