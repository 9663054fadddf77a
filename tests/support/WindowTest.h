// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Fixture for window tests: a temporary folder, recording services and a script that answers dialogs.
#pragma once

#include "support/DialogScript.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"
#include "support/WaitFor.h"
#include "widgets/InputGuard.h"
#include "widgets/frmMsg.h"

class WindowTest : public testing::Test
{
  protected:
    /// Lets messages be answered at once, which saves a third of a second for each.
    WindowTest()
    {
        msg.findChild<QTimer *>(QStringLiteral("Timer1"))->setInterval(0);
    }

    TestFolder folder;
    RecordingServices services;
    InputGuard inputGuard{true};
    frmMsg msg{services, QStringLiteral("wav")};
    DialogScript script;
};
