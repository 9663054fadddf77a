// Text in code page 932 (Shift_JIS with the extensions of NEC and IBM, as Windows uses it), the code page of every text
// file that the program reads or writes. The table is the system's own: 0x5C is "\", 0x8160 is U+FF5E.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <array>

/// Bytes of code page 932 as text. Every byte that the code page cannot decode becomes one U+FFFD; both bytes of an
/// unassigned pair count as such.
QString FromCodePage932(QByteArrayView bytes);

/// Decodes bytes piece by piece as FromCodePage932 does, for a reader that has an eye on some of the characters.
class CodePage932Decoder
{
  public:
    /// @param stops  bytes at which the reader wants to be called: of a character of one byte, never the second of a
    /// pair
    CodePage932Decoder(QByteArrayView bytes, QByteArrayView stops);

    /// Decodes up to the next stop, which is taken from the bytes but not put out.
    /// @param out  has room for one character per byte; moved behind the last character written
    /// @param stop  the character of the stop
    /// @return false at the end of the bytes, where there is no stop
    bool DecodeUntilStop(char16_t **out, char16_t *stop);

    /// Bytes that were decoded or left out.
    qsizetype Position() const
    {
        return m_in - m_begin;
    }

    /// Leaves out the next byte if it is the given one.
    void Skip(quint8 byte)
    {
        if (m_in < m_end && *m_in == byte)
            ++m_in;
    }

  private:
    const quint8 *m_begin;
    const quint8 *m_in;
    const quint8 *m_end;
    std::array<bool, 256> m_isPlain; // ASCII and no stop: put out as it stands
    std::array<bool, 256> m_isStop;
};

/// Text as bytes of code page 932. A character that the code page lacks becomes "?".
QByteArray ToCodePage932(QStringView text);

/// Length of a text in bytes of code page 932: 1 for a half-width character and for one that the code page lacks, 2 for
/// a full-width one.
qsizetype GetByteLength(QStringView text);

/// Whether a character takes two bytes in code page 932 and with it two half-width cells on the page.
bool IsDoubleByte(QChar character);
