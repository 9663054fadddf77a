// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Command lines: any text can be parsed, and properly quoted arguments round-trip.
#include "input.h"
#include "platform/modCommandLine.h"
#include "require.h"

namespace {

/// An argument quoted for Windows: in quotes, with inner quotes escaped and the backslashes before a quote doubled.
QString Quoted(const QString &argument)
{
    QString quoted(u'"');
    qsizetype slashes = 0;
    for (const QChar character : argument) {
        if (character == u'"')
            quoted += QString(slashes + 1, u'\\');
        slashes = character == u'\\' ? slashes + 1 : 0;
        quoted += character;
    }
    return quoted + QString(slashes, u'\\') + u'"';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto isProgram = [](const QString &name) { return name.endsWith(u'x'); };
    const QString whole = QString::fromLatin1(FuzzInput(data, size).TakeRest());
    const CommandLine taken = ParseCommandLine(whole, isProgram);
    Require(whole.contains(taken.program));

    QString line = QStringLiteral("ed.x");
    QStringList arguments;
    while (!input.IsAtEnd()) {
        arguments += QString::fromLatin1(input.TakeText());
        line += u' ' + Quoted(arguments.back());
    }
    const CommandLine command = ParseCommandLine(line, [](const QString &name) { return name == u"ed.x"; });
    Require(command.program == u"ed.x");
    Require(command.arguments == arguments);
    return 0;
}
