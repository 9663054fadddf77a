// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modSound.h"

#include <windows.h>
// After windows.h, whose types it needs.
#include <mmsystem.h>

// The wide form, because a folder name may contain characters outside the machine's code page.
void SoundPlayer::Play(const QString &path)
{
    sndPlaySoundW(reinterpret_cast<LPCWSTR>(path.utf16()), SND_ASYNC | SND_NODEFAULT);
}
