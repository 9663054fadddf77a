// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modShell.h"

#include <QDir>
#include <QProcess>

using namespace Qt::Literals::StringLiterals;

bool ShellOpen(const QString &path, const QString &workingFolder)
{
    const QString folder = QDir(workingFolder).exists() ? workingFolder : QDir::rootPath();
    return QProcess::startDetached(u"xdg-open"_s, {path}, folder);
}
