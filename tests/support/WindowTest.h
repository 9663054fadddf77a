// What the test of a window needs: a folder, silent services and a script of answers.
#pragma once

#include "settings/frmMsg.h"
#include "support/DialogScript.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"

class WindowTest : public testing::Test
{
  protected:
    TestFolder folder;
    RecordingServices services;
    frmMsg msg{services, QStringLiteral("wav")};
    DialogScript script;
};
