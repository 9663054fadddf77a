// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modProcess.h"

#include <QFileInfo>
#include <QStandardPaths>

bool ProgramExists(const QString &name)
{
    return QFileInfo(name).isFile() || !QStandardPaths::findExecutable(name).isEmpty();
}
