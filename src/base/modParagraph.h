// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Messages about many files.
#pragma once

#include <QString>
#include <QStringList>

/// Each on an indented line of its own, at most ten, and how many more there are.
QString Indented(const QStringList &lines);

/// What has become of several files that something was done to.
struct DoneFiles
{
    QStringList done{};    ///< names
    QStringList remarks{}; ///< "name：remark" on some of these
    QStringList kept{};    ///< names of existing files that were not to be replaced
    QStringList failed{};  ///< "name：reason"
    QStringList left{};    ///< names of files that were not looked at, because the user stopped the work

    bool IsAllDone() const
    {
        return remarks.isEmpty() && kept.isEmpty() && failed.isEmpty() && left.isEmpty();
    }
};

/// The report about them. @param what  was done, "書き出し"
QString DoneFilesMessage(const QString &what, const DoneFiles &files);

/// A paragraph with such lines, to be appended to a message; empty if there are no lines.
QString Paragraph(QStringView heading, const QStringList &lines);
