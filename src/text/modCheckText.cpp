// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modCheckText.h"

#include "base/modCodePage.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString BracketMessage(const QString &fault, int line, QStringView text, const QString &request)
{
    return fault + u"\r\n\r\n"_s + QString::number(line) + u"行目："_s + text + u"\r\n\r\n"_s + request + u"\r\n\r\n"_s;
}

/// Checks the brackets of each line. @param isValid  of one line; @param messageOf  about a line that is not
bool CheckBrackets(const StudyLines &lines, bool (*isValid)(QStringView), QString (*messageOf)(int, QStringView),
                   QString *message, int *errorLine)
{
    for (int line = 1; line <= lines.Count() && !lines.BracketsTakeTurns(); ++line) {
        if (!isValid(lines.at1(line))) {
            *message = messageOf(line, lines.at1(line));
            *errorLine = line;
            return false;
        }
    }
    return true;
}

} // namespace

bool CheckLineBytes(const StudyLines &lines, int maxLineBytes, QString *message, int *errorLine)
{
    if (lines.LongestLineBytes() <= maxLineBytes)
        return true; // already counted while reading
    for (int line = 1; line <= lines.Count(); ++line) {
        const qsizetype byteCount = GetByteLength(lines.at1(line));
        if (byteCount > maxLineBytes) {
            *message = LineTooLongMessage(maxLineBytes, line, byteCount, lines.at1(line));
            *errorLine = line;
            return false;
        }
    }
    return true;
}

bool CheckBracketCount(const StudyLines &lines, QString *message, int *errorLine)
{
    return CheckBrackets(lines, IsBracketCountEqual, BracketCountMessage, message, errorLine);
}

bool CheckBracketOrder(const StudyLines &lines, QString *message, int *errorLine)
{
    return CheckBrackets(lines, IsBracketOrderValid, BracketOrderMessage, message, errorLine);
}

qsizetype LineBytes(QStringView line)
{
    return GetByteLength(line) + CountString(line, u'\t');
}

qsizetype CountString(QStringView text, QChar character)
{
    return text.count(character);
}

bool IsBracketCountEqual(QStringView line)
{
    return CountString(line, u'[') == CountString(line, u']');
}

bool IsBracketOrderValid(QStringView line)
{
    bool isOpen = false;
    for (const QChar character : line) {
        if ((character == u'[' && isOpen) || (character == u']' && !isOpen))
            return false;
        if (character == u'[' || character == u']')
            isOpen = !isOpen;
    }
    return true;
}

QString LineTooLongMessage(int maxLineBytes, int line, qsizetype byteCount, QStringView text)
{
    const QString limit = QString::number(maxLineBytes);
    return u"1行のバイト数が"_s + limit + u"バイトを超えています。\r\n  "_s + QString::number(line) + u"行目："_s +
           QString::number(byteCount) + u"byte\r\n  "_s + text +
           u"\r\n\r\nこのテキストファイルを読み込みできません。\r\n\r\n改行を加えて，すべての行を"_s + limit +
           u"バイト以下にしてください。"_s;
}

QString BracketCountMessage(int line, QStringView text)
{
    return BracketMessage(u"次の行で[の数と]の数が不一致です。"_s, line, text,
                          u"[の数と]の数を一致させてから，瞬記帳に読み込ませてください。"_s);
}

QString BracketOrderMessage(int line, QStringView text)
{
    return BracketMessage(u"次の行で[,]の前後関係が不適切です。"_s, line, text,
                          u"[,]の前後関係を適切にしてから，瞬記帳に読み込ませてください。"_s);
}
