// Reading a word aloud: a script of two lines for the script host, which has a voice.
#pragma once

#include "platform/modDesktop.h"

/// Writes "speak.js" in the program's folder and has the shell open it, without waiting. The word goes into the script
/// as it stands. Nothing is reported: where the script cannot be written, or there is no script host or voice, it stays
/// silent.
void SpeakWord(Desktop &desktop, const QString &applicationFolder, const QString &word);
