// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modCommandLine.h"

namespace {

bool IsBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

qsizetype SkipBlanks(const QString &line, qsizetype at)
{
    while (at < line.size() && IsBlank(line[at]))
        ++at;
    return at;
}

qsizetype NextBlank(const QString &line, qsizetype at)
{
    while (at < line.size() && !IsBlank(line[at]))
        ++at;
    return at;
}

/// Extracts the program. @return where its arguments begin
qsizetype TakeProgram(const QString &line, const std::function<bool(const QString &)> &isProgram, QString *program)
{
    const qsizetype start = SkipBlanks(line, 0);
    if (start < line.size() && line[start] == u'"') {
        const qsizetype quote = line.indexOf(u'"', start + 1);
        const qsizetype end = quote < 0 ? line.size() : quote;
        *program = line.mid(start + 1, end - start - 1);
        return quote < 0 ? end : end + 1;
    }
    const qsizetype firstCut = NextBlank(line, start);
    for (qsizetype cut = firstCut; cut - start <= LongestProgramPath; cut = NextBlank(line, cut + 1)) {
        *program = line.mid(start, cut - start);
        if (isProgram(*program))
            return cut;
        if (cut >= line.size())
            break;
    }
    *program = line.mid(start, firstCut - start);
    return firstCut;
}

/// Extracts one argument. @return the place after it
qsizetype TakeArgument(const QString &line, qsizetype at, QString *argument)
{
    bool quoted = false;
    while (at < line.size() && (quoted || !IsBlank(line[at]))) {
        qsizetype slashes = 0;
        while (at < line.size() && line[at] == u'\\') {
            ++slashes;
            ++at;
        }
        const bool beforeQuote = at < line.size() && line[at] == u'"';
        *argument += QString(beforeQuote ? slashes / 2 : slashes, u'\\');
        if (beforeQuote) {
            if (slashes % 2 != 0)
                *argument += u'"';
            else
                quoted = !quoted;
            ++at;
        } else if (slashes == 0) {
            *argument += line[at++];
        }
    }
    return at;
}

} // namespace

CommandLine ParseCommandLine(const QString &line, const std::function<bool(const QString &)> &isProgram)
{
    CommandLine command;
    qsizetype at = SkipBlanks(line, TakeProgram(line, isProgram, &command.program));
    while (at < line.size()) {
        QString argument;
        at = SkipBlanks(line, TakeArgument(line, at, &argument));
        command.arguments += argument;
    }
    return command;
}
