// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What can go wrong with a file, reading whole files, joining paths and making file names.
#pragma once

#include <QByteArray>
#include <QString>

class QFile;
class QFileDevice;

/// Why a file could not be read or written; like std::error_code, true if there is a fault.
struct [[nodiscard]] FileFault
{
    QString path{};   ///< of the file at fault, which need not be the one that was asked for
    QString reason{}; ///< the system's or ours, for the user; empty if there is no fault

    explicit operator bool() const
    {
        return !reason.isEmpty();
    }
};

/// What the system says about a file that it could not open, read or write.
FileFault FaultOf(const QFileDevice &file);

/// Complete text for the user: what has failed, then the path and the reason, each on an indented line.
QString FaultMessage(const QString &heading, const FileFault &fault);

/// Joins folder and name with the system's path separator.
QString JoinPath(const QString &folder, const QString &name);

/// Opens a file for reading if, following links, it is a regular one. Anything else must not even be opened: a FIFO may
/// block forever, and a device may never end.
FileFault OpenToRead(QFile *file);

/// Why a path must not be created or changed as a file. It may be if it is a regular file or does not exist, and, if it
/// is a link, leads to a file in the folder of the link, without ".." in its target. In a folder that comes from
/// somewhere else, any other link would make the program write to a file elsewhere, even a new one, or replace the
/// database by a printed sheet. A linked folder is allowed, because users keep study files and records where they like.
FileFault WriteRefusal(const QString &path);

constexpr qint64 BytesPerMegabyte = qint64(1024) * 1024;

/// Largest file that is read. All files are text typed by people; a study file of a million lines has half this size.
/// The window is blocked while a file is read, and the limit keeps that short. Lists and settings have smaller limits.
constexpr qint64 MaxFileMegabytes = 64;
constexpr qint64 MaxFileBytes = MaxFileMegabytes * BytesPerMegabyte;

/// Reads a whole regular file.
/// @param maxBytes  size of the largest file to read, whole megabytes
/// @param bytes  empty after a fault
FileFault ReadWholeFile(const QString &path, QByteArray *bytes, qint64 maxBytes = MaxFileBytes);

/// Why a file must not get some contents: ReadWholeFile would not read it again.
FileFault SizeRefusal(const QString &path, const QByteArray &bytes, qint64 maxBytes);

/// Makes a text usable in a file name: every character that is invalid in file names on any supported system, path
/// separators included, becomes "_".
QString FileNamePart(const QString &text);

/// A name as part of a line: each character in it that would end the line or turn the direction of the text (control
/// characters, line and paragraph separators, bidirectional controls) becomes one blank.
QString NameInLine(const QString &name);
