// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads a word aloud.
#pragma once

#include "platform/modSystemServices.h"

/// Writes "speak.js" to the application folder, a two-line script that would speak the word, and starts speaking the
/// word itself. The word is inserted into the script unescaped, and the script is never run. No failure is reported:
/// the word is spoken even if the script cannot be written, and without a voice nothing is heard.
void SpeakWord(SystemServices &services, const QString &applicationFolder, const QString &word);
