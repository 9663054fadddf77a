// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modCharCode.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr qsizetype RuledOut = -1;
constexpr quint8 Escape = 27;

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
            StepUtf8(i);
            StepSjis(i);
            StepEuc(i);
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
        qsizetype *const positions[] = {&m_posUtf8, &m_posSjis, &m_posEuc, &m_posUtf7};
        const auto isInStep = [i](const qsizetype *position) { return *position == i || *position == RuledOut; };
        if (!std::all_of(std::begin(positions), std::end(positions), isInStep))
            return i;
        const quint8 none = 128; // no further stop: 128 is one anyway
        const auto *const begin = reinterpret_cast<const quint8 *>(m_bytes.data());
        const quint8 *const end = EndOfPlain(begin + qMin(i, m_bytes.size()), begin + m_bytes.size(),
                                             m_sevenBit ? Escape : none, m_posUtf7 == i ? quint8('+') : none);
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
            m_posUtf7 = RuledOut;
            return std::nullopt;
        }
        if (IsJisEscape(i))
            return CharCode::Jis;
        if (At(i) == Escape || m_posUtf7 < 0 || m_posUtf7 > i)
            return std::nullopt;
        if (At(m_posUtf7) != '+') {
            ++m_posUtf7;
            return std::nullopt;
        }
        return StepUtf7Run(i);
    }

    // A run is "+", base-64 characters and "-"; the bits of the characters must fill 16-bit units with fewer than six
    // bits to spare. The second such run decides. The count of characters carries over from run to run.
    std::optional<CharCode> StepUtf7Run(qsizetype i)
    {
        qsizetype j = m_posUtf7 + 1;
        for (; j < m_last && IsBase64(At(j)); ++j)
            ++m_base64Count;
        if (j >= m_last) {
            m_posUtf7 = j;
        } else if (At(j) == '-' && m_base64Count * 6 % 16 < 6) {
            if (m_countUtf7 > 0)
                return CharCode::Utf7;
            m_posUtf7 = j + 1;
            m_countUtf7 = j + 1 - i;
        } else {
            m_posUtf7 = RuledOut;
        }
        return std::nullopt;
    }

    /// Length of the UTF-8 sequence at the current position; 0 if it is invalid.
    qsizetype Utf8Length() const
    {
        const qsizetype at = m_posUtf8;
        const quint8 lead = At(at);
        if (lead < 128)
            return 1;
        if (Between(lead, 194, 223))
            return TrailAt(at + 1, 128, 191) ? 2 : 0;
        if (Between(lead, 224, 239))
            return TrailAt(at + 1, lead == 224 ? 160 : 128, 191) && TrailAt(at + 2, 128, 191) ? 3 : 0;
        if (Between(lead, 240, 244))
            return TrailAt(at + 1, lead == 240 ? 144 : 128, lead == 244 ? 143 : 191) && TrailAt(at + 2, 128, 191) &&
                           TrailAt(at + 3, 128, 191)
                       ? 4
                       : 0;
        return 0;
    }

    /// Length of the EUC sequence at the current position; 0 if it is invalid.
    qsizetype EucLength() const
    {
        const qsizetype at = m_posEuc;
        const quint8 lead = At(at);
        if (lead < 128)
            return 1;
        if (lead == 142)
            return TrailAt(at + 1, 161, 223) ? 2 : 0;
        if (lead == 143)
            return TrailAt(at + 1, 161, 254) && TrailAt(at + 2, 161, 254) ? 3 : 0;
        if (lead >= 161)
            return TrailAt(at + 1, 161, 254) ? 2 : 0;
        return 0;
    }

    void Advance(qsizetype length, qsizetype *position, qsizetype *count)
    {
        if (length == 0) {
            *position = RuledOut;
            --m_alive;
            return;
        }
        *position += length;
        if (length > 1)
            *count += length;
    }

    void StepUtf8(qsizetype i)
    {
        if (m_posUtf8 >= 0 && m_posUtf8 <= i)
            Advance(Utf8Length(), &m_posUtf8, &m_countUtf8);
    }

    void StepSjis(qsizetype i)
    {
        if (m_posSjis < 0 || m_posSjis > i)
            return;
        const quint8 lead = At(m_posSjis);
        if (lead < 128 || Between(lead, 160, 223))
            ++m_posSjis;
        else if (Between(lead, 129, 159) || Between(lead, 224, 252))
            Advance(TrailAt(m_posSjis + 1, 64, 126) || TrailAt(m_posSjis + 1, 128, 252) ? 2 : 0, &m_posSjis,
                    &m_countSjis);
        // At 128 and 253 to 255 the position deliberately stays: some variants of Shift_JIS assign these bytes, so they
        // do not rule it out, but nothing after them counts in its favour.
    }

    void StepEuc(qsizetype i)
    {
        if (m_posEuc >= 0 && m_posEuc <= i)
            Advance(EucLength(), &m_posEuc, &m_countEuc);
    }

    CharCode EarlyDecision() const
    {
        if (m_posUtf8 >= 0)
            return CharCode::Utf8;
        if (m_posSjis >= 0)
            return CharCode::Sjis;
        if (m_posEuc >= 0)
            return CharCode::Euc;
        return HeaviestCount();
    }

    CharCode HeaviestCount() const
    {
        CharCode code = m_countUtf7 > 0 ? CharCode::Utf7 : CharCode::None;
        if (m_countUtf8 > m_countUtf7)
            code = CharCode::Utf8;
        if (m_countSjis > m_countUtf8 && m_countSjis > m_countUtf7)
            code = CharCode::Sjis;
        if (m_countEuc > m_countSjis && m_countEuc > m_countUtf8 && m_countEuc > m_countUtf7)
            code = CharCode::Euc;
        return code;
    }

    // If a text is valid as both Shift_JIS and EUC, the one with more bytes in multi-byte characters wins; Shift_JIS
    // on a tie.
    CharCode DecisionAtEnd() const
    {
        if (m_sevenBit && m_posUtf7 >= 0 && m_countUtf7 >= 1)
            return CharCode::Utf7;
        if (m_posUtf8 >= 0 && m_countUtf8 >= 1)
            return CharCode::Utf8;
        const bool euc = m_posEuc >= 0 && m_countEuc > m_countSjis && m_countEuc > m_countUtf8;
        if (euc)
            return CharCode::Euc;
        if (m_posSjis >= 0 && m_countSjis > m_countUtf8)
            return CharCode::Sjis;
        return m_sevenBit ? CharCode::Ascii : CharCode::None;
    }

    QByteArrayView m_bytes;
    qsizetype m_last;
    bool m_sevenBit = true; // no byte of 128 or more so far
    int m_alive = 3;        // how many of UTF-8, Shift_JIS and EUC are still possible
    qsizetype m_posUtf7 = 0;
    qsizetype m_posUtf8 = 0;
    qsizetype m_posSjis = 0;
    qsizetype m_posEuc = 0;
    qsizetype m_countUtf7 = 0;
    qsizetype m_countUtf8 = 0;
    qsizetype m_countSjis = 0;
    qsizetype m_countEuc = 0;
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
