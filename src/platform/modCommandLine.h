// The grammar of a Windows command line, for systems that start a program with a list of arguments.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

struct CommandLine
{
    QString program; ///< empty when the line names none
    QStringList arguments;
};

/// Takes a command line apart.
///
///     line    = blanks program { blanks argument }
///     program = '"' text '"'  |  text without blanks, or with as many of the blanks as it takes to name a program
///
/// An unquoted program may hold blanks: the line is cut at its first blank, its second and so on until the part before
/// the cut is a program, which is how Windows starts "C:\My Tools\ed.exe file". When none is, the first word is taken.
/// In arguments a backslash stands for itself except before a double quote: 2n of them and a quote give n backslashes
/// and begin or end a quoted stretch, 2n+1 and a quote give n backslashes and a quote (the rule of Microsoft's C
/// runtime).
CommandLine ParseCommandLine(const QString &line, const std::function<bool(const QString &)> &isProgram);
