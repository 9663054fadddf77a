// The speech script, for systems that have no script host: the text that it speaks, and the program of the desktop's
// speech service that speaks it.
//
//     script = 'var tts = WScript.CreateObject("SAPI.SpVoice");' CR LF
//              'tts.Speak("' text '");' CR LF
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The text that a script speaks, whatever characters it holds; empty for anything but a script of the form above.
QString SpokenText(const QByteArray &script);

/// Arguments of spd-say or espeak-ng for a text: a Japanese voice where it has kana or kanji, else an English one. The
/// text is an argument of its own and is never read as an option or by a shell.
/// @param languageOption  the program's option that names the language
QStringList SpeechArguments(const QString &text, const QString &languageOption);
