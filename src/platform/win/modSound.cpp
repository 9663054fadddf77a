#include "platform/modSound.h"

#include <windows.h>
// windows.h stands first: mmsystem.h needs its types.
#include <mmsystem.h>

struct SoundPlayer::Running
{
};

SoundPlayer::SoundPlayer() = default;
SoundPlayer::~SoundPlayer() = default;

// The wide form: a learner's folder may have a name that the machine's code page lacks.
void SoundPlayer::Play(const QString &path)
{
    sndPlaySoundW(reinterpret_cast<LPCWSTR>(path.utf16()), SND_ASYNC | SND_NODEFAULT);
}
