#include "platform/modSound.h"

#include <windows.h>
// windows.h stands first: mmsystem.h needs its types.
#include <mmsystem.h>

struct SoundPlayer::Running
{
};

SoundPlayer::SoundPlayer() = default;
SoundPlayer::~SoundPlayer() = default;

void SoundPlayer::Play(const QString &path)
{
    PlaySoundW(reinterpret_cast<LPCWSTR>(path.utf16()), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
}
