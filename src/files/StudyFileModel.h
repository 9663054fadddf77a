// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// List model of the study files. Above them is a row for the note of hard words if the user has any. Only files in view
// are checked, one at a time between two events of the window.
#pragma once

#include "files/modStudyFolder.h"
#include "history/modStudyTally.h"
#include "records/modHardNote.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <QTimer>

class StudyFileModel : public QAbstractListModel
{
    Q_OBJECT

  public:
    enum Role
    {
        RemarksRole = Qt::UserRole, ///< remarks on the file and what helps, or an empty text
        BlanksRole,        ///< "67問", "1問（全角の［ ］ 10）"; empty with remarks or before the check
        StudiedRole,       ///< when the file was studied; empty with remarks or before that is known
        PrintableCopyRole, ///< whether the file is a printable copy
        HardRole,          ///< number of hard words; empty if there are none
        NoteRole,          ///< whether the row is that of the note of hard words
    };

    StudyFileModel(StudyFolder &folder, const StudyTallies &tallies, QObject *parent);

    /// Lists the folder again. @param today  reference date for showing the last day of study
    void Refresh(const QDate &today);

    /// Sets the user's marks, as MarkList::EntriesByTitle gives them, to be shown from the next Refresh on.
    void SetMarks(const QHash<QString, QStringList> &entries);

    /// Number of marks of hard words that a file has.
    int HardCount(const QString &name) const;

    /// Shows only files whose names contain every word of a text; without words, all files. The note is always shown.
    void SetFilter(const QString &wanted);

    /// Has views show the figures of all rows again.
    void ShowTallies();

    /// Checks the files of some rows, from 0, and no longer those of other rows. dataChanged is emitted after each.
    /// @param last  may be past the end
    void CheckRows(int first, int last);

    /// Cancels all pending checks.
    void DropChecks();

    /// The row of a file, or of HardNoteTitle, or an invalid index if it is not shown.
    QModelIndex IndexOf(const QString &name) const;

    /// The row of the first file; an invalid index if there is none.
    QModelIndex FirstFile() const
    {
        return index(m_rows.contains(HardNoteTitle.toString()) ? 1 : 0);
    }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;

    /// Qt::DisplayRole: the file's name, or HardNoteTitle. Tooltip and accessible text: name, plus remarks or figures
    /// if known.
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    void ShowMatching();
    void CheckNext();
    QVariant DataOfNote(int role) const;
    StudyTally TallyOf(const QString &name) const;
    bool HasFigures(const QString &name) const;
    QString Remarks(const QString &name) const;
    QString Blanks(const QString &name) const;
    QString Studied(const QString &name) const;
    QString Description(const QString &name) const;

    StudyFolder &m_folder;
    const StudyTallies &m_tallies;
    QDate m_today;
    QHash<QString, int> m_marks; // numbers of marks by title
    qsizetype m_markCount = 0;   // of all
    QString m_filter;
    QStringList m_shown;        // beginning with HardNoteTitle if there is a note
    QHash<QString, int> m_rows; // of the names shown
    QStringList m_pending;      // files to be checked, the next one first
    QTimer m_checking{this};
};

/// Paints a file on two lines, and the note of hard words in the same way: its name, dimmed for a printable copy, and
/// the number of its blanks; below, dimmed, when it was studied, or remarks after a sign. A name that does not fit is
/// elided in the middle, because its end tells the chapters of a textbook apart.
class StudyFileDelegate : public QStyledItemDelegate
{
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The name without its ending, which is the same for all files.
    QString displayText(const QVariant &value, const QLocale &locale) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// Has width 1: a long name must not make a row wider than the list and push the number out of view.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
