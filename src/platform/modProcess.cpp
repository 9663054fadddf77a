// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modProcess.h"

#include <QFileInfo>
#include <QStandardPaths>

QString FirstInstalled(std::initializer_list<QString> names)
{
    for (const QString &name : names)
        if (QString program = QStandardPaths::findExecutable(name); !program.isEmpty())
            return program;
    return QString();
}

bool ProgramExists(const QString &name)
{
    return QFileInfo(name).isFile() || !QStandardPaths::findExecutable(name).isEmpty();
}
