// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/CodeConversion.h"

#include "base/modCodePage.h"
#include "base/modFile.h"
#include "exchange/modConvertCode.h"
#include "settings/modEditor.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"
#include "text/modReadText.h"
#include "widgets/frmMsg.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Beginning of the first line with a non-ASCII character, which looks different in each encoding.
QString FirstNonAsciiLine(const QString &text)
{
    constexpr qsizetype maxCharacters = 30;
    const auto first = std::find_if(text.begin(), text.end(), [](QChar character) { return character >= u'\x80'; });
    const qsizetype start = text.lastIndexOf(u'\n', first - text.begin()) + 1;
    return text.mid(start, maxCharacters).section(u'\n', 0, 0).trimmed();
}

} // namespace

CodeConversion::CodeConversion(SystemServices &services, frmMsg &msg, QWidget *owner, const Editor &editor,
                               const QString &path)
    : m_services(services), m_msg(msg), m_owner(owner), m_editor(editor), m_path(path), m_title(GetFileTitle(path))
{
}

bool CodeConversion::Run()
{
    return Read() && SettleEuc() && ReplaceCharacters() && SettleBrackets() && SettleLongLines() && Write();
}

/// Reads the file and detects its encoding again, because it may have changed since it was listed.
bool CodeConversion::Read()
{
    if (const FileFault fault = ReadWholeFile(m_path, &m_before))
        return Refuse(UnreadableFileMessage(m_title, fault.reason));
    m_code = DetectCharCode(WholeFile(m_before));
    const QString codeName = CharCodeName(m_code);
    return CanConvertFrom(codeName) || Refuse(NotConvertibleMessage(m_title, codeName));
}

/// Half-width kana in Shift_JIS can look like EUC; only the user can tell.
bool CodeConversion::SettleEuc()
{
    if (m_code != CharCode::Euc || !ReadsAsShiftJis(m_before))
        return true;
    bool isEuc = false;
    if (!Ask(EucOrShiftJisQuestion(m_title, FirstNonAsciiLine(DecodeText(m_before, m_code)),
                                   FirstNonAsciiLine(FromCodePage932(m_before))),
             &isEuc))
        return false;
    if (!isEuc)
        OfferEditor(OpenAsShiftJisQuestion(), 1);
    return isEuc;
}

bool CodeConversion::ReplaceCharacters()
{
    const QString text = DecodeText(m_before, m_code);
    if (text.contains(QChar::Null))
        return Refuse(NoTextFileMessage(m_title));
    m_converted = ConvertText(text, Accents::Remove);
    if (m_converted.unwritableCount == 0 && m_converted.accentCount > 0) {
        bool removesAccents = false;
        if (!Ask(AccentsQuestion(m_converted), &removesAccents))
            return false;
        if (!removesAccents)
            m_converted = ConvertText(text, Accents::Keep);
    }
    if (m_converted.unwritableCount == 0)
        return true;
    OfferEditor(UnwritableQuestion(m_converted), m_converted.unwritable.front().line);
    return false;
}

bool CodeConversion::SettleBrackets()
{
    if (!HasOnlyFullWidthBrackets(m_converted.text))
        return true;
    bool makesHalfWidth = false;
    if (!Ask(BracketsQuestion(), &makesHalfWidth))
        return false;
    if (makesHalfWidth)
        m_converted.text = WithHalfWidthBrackets(m_converted.text);
    return true;
}

/// Breaks all long lines or none: with an unbreakable line the file would be refused anyway. The closing message names
/// that line.
bool CodeConversion::SettleLongLines()
{
    const BrokenLines lines = BreakLongLines(m_converted.text, MaxLineBytes);
    m_unbreakableLine = lines.firstUnbreakable;
    if (lines.longLines == 0 || lines.firstUnbreakable > 0)
        return true;
    bool breaksLines = false;
    if (!Ask(LongLinesQuestion(lines, MaxLineBytes), &breaksLines))
        return false;
    if (breaksLines)
        m_converted.text = lines.text;
    return true;
}

bool CodeConversion::Write()
{
    QByteArray bytes;
    if (const TextRefusal refusal = EncodeStudyText(m_converted.text, &bytes))
        return Refuse(NotEncodedMessage(refusal));
    QString backupPath;
    if (const FileFault fault = ReplaceConverted(m_path, m_before, bytes, &backupPath))
        return Refuse(FaultMessage(u"変換したファイルを書き込めません。ファイルは元のままです。"_s, fault));
    m_msg.DispFrmMsg(m_owner,
                     ConvertedMessage(m_path, backupPath, CharCodeName(m_code), m_converted, m_unbreakableLine),
                     MsgStyle::Ok, u"start.wav"_s);
    return true;
}

/// @return false when the question was closed without an answer
bool CodeConversion::Ask(const QString &question, bool *isYes)
{
    const MsgResult result = m_msg.Ask(m_owner, question);
    *isYes = result == MsgResult::Ok;
    return result != MsgResult::None;
}

/// @return always false, for callers to return
bool CodeConversion::Refuse(const QString &message)
{
    return m_msg.Refuse(m_owner, message);
}

void CodeConversion::OfferEditor(const QString &question, int line)
{
    bool isYes = false;
    Ask(question, &isYes);
    if (isYes)
        OpenInEditor(m_services, m_editor, m_path, line);
}
