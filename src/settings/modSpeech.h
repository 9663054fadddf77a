// Reading a word aloud.
#pragma once

#include "platform/modSystemServices.h"

/// Writes "speak.js" in the program's folder, a script of two lines that speaks the word, and has the voice speak the
/// word, without waiting. The word goes into the script as it stands, and the script is never run. Nothing is reported:
/// where the script cannot be written the word is spoken all the same, and where there is no voice it stays silent.
void SpeakWord(SystemServices &services, const QString &applicationFolder, const QString &word);
