// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Shared by the benchmarks: their inputs, and the study text that they work on.
#pragma once

#include "base/modFile.h"
#include "text/modCheckText.h"
#include "text/modDisplayText.h"
#include "text/modReadText.h"

#include <QFile>

#include <ctime>

inline QString InputPath(const QString &name)
{
    return JoinPath(qEnvironmentVariable("STUDY_BENCH_INPUTS"), name);
}

inline QString StudyFilePath(qint64 lines)
{
    return InputPath(QStringLiteral("study_%1.txt").arg(lines));
}

/// A study file for steps in the study window. The one of a million lines has those of the short one again and again,
/// so that a step in it shows the same text.
inline QString StepFilePath(qint64 lines)
{
    return lines == 1'000'000 ? InputPath(QStringLiteral("repeated_1000000.txt")) : StudyFilePath(lines);
}

inline QByteArray BytesOf(const QString &path)
{
    QByteArray bytes;
    if (const FileFault fault = ReadWholeFile(path, &bytes))
        qFatal("%s: %s", qPrintable(path), qPrintable(fault.reason));
    return bytes;
}

inline DisplayText LoadText(const QString &path)
{
    StudyLines lines;
    QString message;
    int errorLine = 0;
    if (!ReadTextFile(path, MaxLineBytes, &lines, &message, &errorLine))
        qFatal("%s", qPrintable(message));
    return DisplayText(std::move(lines));
}

/// CPU time of a step, in milliseconds.
template <typename Step>
double TimeOf(const Step &step)
{
    const std::clock_t start = std::clock();
    step();
    return double(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
}
