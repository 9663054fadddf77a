// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modCharCode.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr qsizetype RuledOut = -1; // as a position; as a length, of an invalid sequence
constexpr quint8 Escape = 27;

/// One of the encodings that are possible at first.
struct Candidate
{
    qsizetype position = 0; ///< of the next character, or RuledOut
    qsizetype count = 0;    ///< in its favour: bytes in multi-byte characters
};

bool Between(quint8 byte, quint8 first, quint8 last)
{
    return byte >= first && byte <= last;
}

bool IsBase64(quint8 byte)
{
    return Between(byte, 'A', 'Z') || Between(byte, 'a', 'z') || Between(byte, '0', '9') || byte == '+' || byte == '/';
}

/// The end of a run of 7-bit bytes that contains neither of two given bytes. Blocks without such a stop are skipped
/// whole; the inner loop has no branches, so that the compiler can vectorize it. The row on the detection of ASCII in
/// bench/compare.py measures what that gains.
const quint8 *EndOfPlain(const quint8 *at, const quint8 *end, quint8 firstStop, quint8 secondStop)
{
    constexpr qsizetype blockSize = 64;
    for (; end - at >= blockSize; at += blockSize) {
        quint8 stops = 0;
        for (qsizetype i = 0; i < blockSize; ++i)
            stops |= quint8(at[i] & 0x80) | quint8(at[i] == firstStop) | quint8(at[i] == secondStop);
        if (stops != 0)
            break;
    }
    return std::find_if(at, end, [=](quint8 byte) { return byte >= 128 || byte == firstStop || byte == secondStop; });
}

/// A single pass over the bytes. Looking ahead deliberately stops before the last byte: callers append a spare one,
/// which is not part of the text (see DetectCharCode).
class Scan
{
  public:
    explicit Scan(QByteArrayView bytes) : m_bytes(bytes), m_last(bytes.size() - 1) {}

    CharCode Run()
    {
        for (qsizetype i = SkipPlain(0); i <= m_last; i = SkipPlain(i + 1)) {
            if (const std::optional<CharCode> found = StepSevenBit(i))
                return *found;
            Step<&Scan::Utf8Length>(i, &m_utf8);
            Step<&Scan::SjisLength>(i, &m_sjis);
            Step<&Scan::EucLength>(i, &m_euc);
            if (!m_sevenBit && m_alive < 2)
                return EarlyDecision();
        }
        return DecisionAtEnd();
    }

  private:
    quint8 At(qsizetype i) const
    {
        return quint8(m_bytes[i]);
    }

    /// Skips bytes that decide nothing and advance every active position by one: 7-bit bytes except ESC and, while
    /// UTF-7 is possible, "+".
    /// @return the next index to examine
    qsizetype SkipPlain(qsizetype i)
    {
        if (i <= m_last && At(i) >= 128) // first, because it is so often the case in Japanese text
            return i;
        qsizetype *const positions[] = {&m_utf8.position, &m_sjis.position, &m_euc.position, &m_utf7.position};
        const auto isInStep = [i](const qsizetype *position) { return *position == i || *position == RuledOut; };
        if (!std::all_of(std::begin(positions), std::end(positions), isInStep))
            return i;
        const quint8 none = 128; // no further stop: 128 is one anyway
        const auto *const begin = reinterpret_cast<const quint8 *>(m_bytes.data());
        const quint8 *const end = EndOfPlain(begin + qMin(i, m_bytes.size()), begin + m_bytes.size(),
                                             m_sevenBit ? Escape : none, m_utf7.position == i ? quint8('+') : none);
        for (qsizetype *const position : positions)
            if (*position == i)
                *position = end - begin;
        return end - begin;
    }

    bool TrailAt(qsizetype i, quint8 first, quint8 last) const
    {
        return i < m_last && Between(At(i), first, last);
    }

    bool IsJisEscape(qsizetype i) const
    {
        if (At(i) != Escape || i + 2 >= m_last)
            return false;
        const quint8 first = At(i + 1);
        const quint8 second = At(i + 2);
        return (first == '$' && (second == '@' || second == 'B' || second == '(')) ||
               (first == '(' && (second == 'B' || second == 'J' || second == 'I'));
    }

    std::optional<CharCode> StepSevenBit(qsizetype i)
    {
        if (!m_sevenBit)
            return std::nullopt;
        if (At(i) >= 128) {
            m_sevenBit = false;
            m_utf7.position = RuledOut;
            return std::nullopt;
        }
        if (IsJisEscape(i))
            return CharCode::Jis;
        if (At(i) == Escape || m_utf7.position < 0 || m_utf7.position > i)
            return std::nullopt;
        if (At(m_utf7.position) != '+') {
            ++m_utf7.position;
            return std::nullopt;
        }
        return StepUtf7Run(i);
    }

    // A run is "+", base-64 characters and "-"; the bits of the characters must fill 16-bit units with fewer than six
    // bits to spare. The second such run decides. The count of characters carries over from run to run.
    std::optional<CharCode> StepUtf7Run(qsizetype i)
    {
        qsizetype j = m_utf7.position + 1;
        for (; j < m_last && IsBase64(At(j)); ++j)
            ++m_base64Count;
        if (j >= m_last) {
            m_utf7.position = j;
        } else if (At(j) == '-' && m_base64Count * 6 % 16 < 6) {
            if (m_utf7.count > 0)
                return CharCode::Utf7;
            m_utf7.position = j + 1;
            m_utf7.count = j + 1 - i;
        } else {
            m_utf7.position = RuledOut;
        }
        return std::nullopt;
    }

    /// Moves a candidate on if it is at the current byte.
    /// @tparam LengthAt  gives the number of bytes of the character at a position, RuledOut if that is invalid
    template <qsizetype (Scan::*LengthAt)(qsizetype at) const>
    void Step(qsizetype i, Candidate *candidate)
    {
        if (candidate->position < 0 || candidate->position > i)
            return;
        const qsizetype length = (this->*LengthAt)(candidate->position);
        if (length == RuledOut) {
            candidate->position = RuledOut;
            --m_alive;
            return;
        }
        candidate->position += length;
        if (length > 1)
            candidate->count += length;
    }

    qsizetype Utf8Length(qsizetype at) const
    {
        const quint8 lead = At(at);
        if (lead < 128)
            return 1;
        if (Between(lead, 194, 223))
            return TrailAt(at + 1, 128, 191) ? 2 : RuledOut;
        if (Between(lead, 224, 239))
            return TrailAt(at + 1, lead == 224 ? 160 : 128, 191) && TrailAt(at + 2, 128, 191) ? 3 : RuledOut;
        if (Between(lead, 240, 244))
            return TrailAt(at + 1, lead == 240 ? 144 : 128, lead == 244 ? 143 : 191) && TrailAt(at + 2, 128, 191) &&
                           TrailAt(at + 3, 128, 191)
                       ? 4
                       : RuledOut;
        return RuledOut;
    }

    qsizetype SjisLength(qsizetype at) const
    {
        const quint8 lead = At(at);
        if (lead < 128 || Between(lead, 160, 223))
            return 1;
        if (Between(lead, 129, 159) || Between(lead, 224, 252))
            return TrailAt(at + 1, 64, 126) || TrailAt(at + 1, 128, 252) ? 2 : RuledOut;
        // At 128 and 253 to 255 the position deliberately stays: some variants of Shift_JIS assign these bytes, so they
        // do not rule it out, but nothing after them counts in its favour.
        return 0;
    }

    qsizetype EucLength(qsizetype at) const
    {
        const quint8 lead = At(at);
        if (lead < 128)
            return 1;
        if (lead == 142)
            return TrailAt(at + 1, 161, 223) ? 2 : RuledOut;
        if (lead == 143)
            return TrailAt(at + 1, 161, 254) && TrailAt(at + 2, 161, 254) ? 3 : RuledOut;
        return lead >= 161 && TrailAt(at + 1, 161, 254) ? 2 : RuledOut;
    }

    CharCode EarlyDecision() const
    {
        if (m_utf8.position >= 0)
            return CharCode::Utf8;
        if (m_sjis.position >= 0)
            return CharCode::Sjis;
        if (m_euc.position >= 0)
            return CharCode::Euc;
        return HeaviestCount();
    }

    CharCode HeaviestCount() const
    {
        CharCode code = m_utf7.count > 0 ? CharCode::Utf7 : CharCode::None;
        if (m_utf8.count > m_utf7.count)
            code = CharCode::Utf8;
        if (m_sjis.count > m_utf8.count && m_sjis.count > m_utf7.count)
            code = CharCode::Sjis;
        if (m_euc.count > m_sjis.count && m_euc.count > m_utf8.count && m_euc.count > m_utf7.count)
            code = CharCode::Euc;
        return code;
    }

    // If a text is valid as both Shift_JIS and EUC, the one with more bytes in multi-byte characters wins; Shift_JIS
    // on a tie.
    CharCode DecisionAtEnd() const
    {
        if (m_sevenBit && m_utf7.position >= 0 && m_utf7.count >= 1)
            return CharCode::Utf7;
        if (m_utf8.position >= 0 && m_utf8.count >= 1)
            return CharCode::Utf8;
        const bool euc = m_euc.position >= 0 && m_euc.count > m_sjis.count && m_euc.count > m_utf8.count;
        if (euc)
            return CharCode::Euc;
        if (m_sjis.position >= 0 && m_sjis.count > m_utf8.count)
            return CharCode::Sjis;
        return m_sevenBit ? CharCode::Ascii : CharCode::None;
    }

    QByteArrayView m_bytes;
    qsizetype m_last;
    bool m_sevenBit = true; // no byte of 128 or more so far
    int m_alive = 3;        // how many of UTF-8, Shift_JIS and EUC are still possible
    Candidate m_utf7;
    Candidate m_utf8;
    Candidate m_sjis;
    Candidate m_euc;
    qsizetype m_base64Count = 0;
};

std::optional<CharCode> DetectByteOrderMark(QByteArrayView bytes)
{
    if (bytes.size() < 3)
        return std::nullopt;
    const auto first = quint8(bytes[0]);
    const auto second = quint8(bytes[1]);
    // Any pair of 254 and 255 other than 254 255 is reported as little-endian. This is deliberate: no text begins with
    // 254 254 or 255 255, so these need no result of their own.
    if (first >= 254 && second >= 254)
        return first == 254 && second == 255 ? CharCode::Utf16Be : CharCode::Utf16Le;
    if (first == 239 && second == 187 && quint8(bytes[2]) == 191)
        return CharCode::Utf8Bom;
    return std::nullopt;
}

} // namespace

CharCode DetectCharCode(QByteArrayView bytes)
{
    if (const std::optional<CharCode> marked = DetectByteOrderMark(bytes))
        return *marked;
    if (bytes.isEmpty())
        return CharCode::Ascii;
    return Scan(bytes).Run();
}

QString CharCodeName(CharCode code)
{
    static constexpr std::array<const char16_t *, 10> names = {u"NONE",     u"ASCII",    u"SJIS", u"EUC",      u"JIS",
                                                               u"UTF16_LE", u"UTF16_BE", u"UTF8", u"UTF8_BOM", u"UTF7"};
    return QString::fromUtf16(names[size_t(code)]);
}

QString GetCharCodeName(QByteArrayView bytes)
{
    return CharCodeName(DetectCharCode(bytes));
}
