#include "files/CodeConversion.h"

#include "base/modCodePage.h"
#include "base/modFile.h"
#include "files/modConvertCode.h"
#include "settings/frmMsg.h"
#include "settings/modEditor.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"
#include "text/modReadText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The beginning of the first line that tells one reading of a file from another.
QString TellingLine(const QString &text)
{
    constexpr qsizetype mostCharacters = 30;
    const auto first = std::find_if(text.begin(), text.end(), [](QChar character) { return character >= u'\x80'; });
    const qsizetype start = text.lastIndexOf(u'\n', first - text.begin()) + 1;
    return text.mid(start, mostCharacters).section(u'\n', 0, 0).trimmed();
}

} // namespace

CodeConversion::CodeConversion(SystemServices &services, frmMsg &msg, QWidget *owner, const QString &textEditor,
                               const QString &path)
    : m_services(services), m_msg(msg), m_owner(owner), m_textEditor(textEditor), m_path(path),
      m_title(GetFileTitle(path))
{
}

bool CodeConversion::Run()
{
    return Read() && SettleEuc() && ReplaceCharacters() && SettleBrackets() && SettleLongLines() && Write();
}

/// Reads the file and finds out anew what it is: it may have changed since it was listed.
bool CodeConversion::Read()
{
    QString reason;
    if (!ReadWholeFile(m_path, &m_before, &reason))
        return Refuse(UnreadableFileMessage(m_title, reason));
    m_code = DetectCharCode(WholeFile(m_before));
    const QString codeName = CharCodeName(m_code);
    return CanConvertFrom(codeName) || Refuse(NotConvertibleMessage(m_title, codeName));
}

/// Half-width kana of Shift_JIS may be taken for EUC; only the user knows.
bool CodeConversion::SettleEuc()
{
    if (m_code != CharCode::Euc || !ReadsAsShiftJis(m_before))
        return true;
    bool isEuc = false;
    if (!Ask(EucOrShiftJisQuestion(m_title, TellingLine(DecodeText(m_before, m_code)),
                                   TellingLine(FromCodePage932(m_before))),
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

/// Where not all long lines can be broken none is, and the file is left to its reader, who names the line.
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
    QString message;
    if (!EncodeConverted(m_converted.text, &bytes, &message))
        return Refuse(message);
    QString backupPath;
    if (!ReplaceConverted(m_path, m_before, bytes, &backupPath, &message))
        return Refuse(message);
    m_msg.DispFrmMsg(m_owner,
                     ConvertedMessage(m_path, backupPath, CharCodeName(m_code), m_converted, m_unbreakableLine),
                     MsgStyle::Ok, u"start.wav"_s);
    return true;
}

/// @return false when the question was closed without an answer
bool CodeConversion::Ask(const QString &question, bool *isYes)
{
    const MsgResult result = m_msg.DispFrmMsg(m_owner, question, MsgStyle::YesNo, u"notify.wav"_s);
    *isYes = result == MsgResult::Ok;
    return result != MsgResult::None;
}

/// @return false, for the caller to return
bool CodeConversion::Refuse(const QString &message)
{
    m_msg.DispFrmMsg(m_owner, message, MsgStyle::Ok, u"notify.wav"_s);
    return false;
}

void CodeConversion::OfferEditor(const QString &question, int line)
{
    bool isYes = false;
    Ask(question, &isYes);
    if (isYes)
        OpenInEditor(m_services, m_textEditor, m_path, line);
}
