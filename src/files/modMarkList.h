// The blanks that a user has marked as hard, in the list "ListMark.txt". An entry is told by what it marks and not by
// where that stands, so that a mark survives lines inserted above it and goes with its line:
//
//     user TAB title of the study file TAB line, with its brackets TAB number of the blank in the line [TAB occurrence]
//
// The occurrence, 2 or more, tells lines apart that say the same.
#pragma once

#include "text/modDisplayText.h"

#include <QString>

#include <vector>

class MarkList
{
  public:
    /// @param path  of the list, which all users share
    MarkList(const QString &path, const QString &userName);

    /// The blanks of a text that are marked, ascending. An entry that fits no blank of it marks nothing.
    /// @param title  of the study file, as GetFileTitle gives it
    std::vector<int> Find(const QString &title, const DisplayText &text) const;

    /// The entries for some blanks of a text, as the list has them. @param blanks  ascending
    QStringList Entries(const QString &title, const DisplayText &text, const std::vector<int> &blanks) const;

    /// The blanks of a text that such entries mark.
    std::vector<int> FindIn(const QStringList &entries, const QString &title, const DisplayText &text) const;

    /// The same as Find of a study file; none where it cannot be read.
    std::vector<int> FindInFile(const QString &studyFilePath) const;

    /// Writes the marks of a text in the place of those that the list has for its file. All other lines stay as
    /// they are, those that are no entries too.
    /// @param blanks  ascending
    /// @return false on failure; message then holds the whole of it for the user, and the list is as it was
    bool Write(const QString &title, const DisplayText &text, const std::vector<int> &blanks, QString *message) const;

  private:
    QString m_path;
    QString m_userName;
};
