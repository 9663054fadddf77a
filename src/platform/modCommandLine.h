// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Parses Windows command lines, for systems that start a program with a list of arguments.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// No system starts a program with a longer path, in characters.
constexpr qsizetype LongestProgramPath = 4096;

struct CommandLine
{
    QString program; ///< empty if the line names none
    QStringList arguments;
};

/// Splits a command line into program and arguments.
///
///     line    = blanks program { blanks argument }
///     program = '"' text '"'  |  text up to one of its blanks (see below)
///
/// An unquoted program may contain blanks: the line is cut at its first blank, its second and so on until the part
/// before the cut is a program, which is how Windows starts "C:\My Tools\ed.exe file". If no cut yields one, the first
/// word is the program.
/// In arguments a backslash is literal except before a double quote, as in Microsoft's C runtime: 2n backslashes and a
/// quote give n backslashes and begin or end a quoted section; 2n+1 and a quote give n backslashes and a literal quote.
/// @param isProgram  whether a text names an existing program
CommandLine ParseCommandLine(const QString &line, const std::function<bool(const QString &)> &isProgram);
