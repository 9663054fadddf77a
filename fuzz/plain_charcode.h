// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reference implementation of the encoding detection: one step per index for every decoder, without shortcuts. The
// optimized scan of the program is compared with it.
#pragma once

#include "text/modCharCode.h"

class PlainCharCode
{
  public:
    explicit PlainCharCode(QByteArrayView text) : bytes(text), last(text.size() - 1) {}

    CharCode Detect()
    {
        if (last > 1 && At(0) >= 254 && At(1) >= 254)
            return At(0) == 254 && At(1) == 255 ? CharCode::Utf16Be : CharCode::Utf16Le;
        if (last > 1 && At(0) == 239 && At(1) == 187 && At(2) == 191)
            return CharCode::Utf8Bom;
        for (qsizetype i = 0; i <= last; ++i) {
            if (sevenBit && At(i) >= 128)
                sevenBit = false;
            if (sevenBit && IsJis(i))
                return CharCode::Jis;
            if (sevenBit && At(i) != 27 && posUtf7 >= 0 && posUtf7 <= i && Utf7(i))
                return CharCode::Utf7;
            if (posUtf8 >= 0 && posUtf8 <= i)
                Take(Utf8(At(posUtf8)), &posUtf8, &countUtf8);
            if (posSjis >= 0 && posSjis <= i && !(At(posSjis) == 128 || At(posSjis) >= 253))
                Take(Sjis(At(posSjis)), &posSjis, &countSjis);
            if (posEuc >= 0 && posEuc <= i)
                Take(Euc(At(posEuc)), &posEuc, &countEuc);
            if (sevenBit || alive >= 2)
                continue;
            if (alive == 1)
                return posUtf8 >= 0 ? CharCode::Utf8 : posSjis >= 0 ? CharCode::Sjis : CharCode::Euc;
            if (countEuc > countSjis && countEuc > countUtf8 && countEuc > countUtf7)
                return CharCode::Euc;
            if (countSjis > countUtf8 && countSjis > countUtf7)
                return CharCode::Sjis;
            return countUtf8 > countUtf7 ? CharCode::Utf8 : countUtf7 > 0 ? CharCode::Utf7 : CharCode::None;
        }
        if (sevenBit && posUtf7 >= 0 && countUtf7 >= 1)
            return CharCode::Utf7;
        if (posUtf8 >= 0 && countUtf8 >= 1)
            return CharCode::Utf8;
        if (posEuc >= 0 && countEuc > countSjis && countEuc > countUtf8)
            return CharCode::Euc;
        if (posSjis >= 0 && countSjis > countUtf8)
            return CharCode::Sjis;
        return sevenBit ? CharCode::Ascii : CharCode::None;
    }

  private:
    int At(qsizetype i) const
    {
        return quint8(bytes[i]);
    }

    bool Is(qsizetype i, int from, int to) const
    {
        return i < last && At(i) >= from && At(i) <= to;
    }

    bool IsJis(qsizetype i) const
    {
        if (At(i) != 27 || i + 2 >= last)
            return false;
        const QByteArrayView escape = bytes.sliced(i + 1, 2);
        return escape == "$@" || escape == "$B" || escape == "$(" || escape == "(B" || escape == "(J" || escape == "(I";
    }

    bool Utf7(qsizetype i)
    {
        if (At(posUtf7) != '+') {
            ++posUtf7;
            return false;
        }
        static const QByteArray base64("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
        qsizetype j = posUtf7 + 1;
        for (; j < last && base64.contains(bytes[j]); ++j)
            ++base64Count;
        if (j >= last) {
            posUtf7 = j;
            return false;
        }
        if (bytes[j] != '-' || base64Count * 6 % 16 >= 6) {
            posUtf7 = -1;
            return false;
        }
        if (countUtf7 > 0)
            return true;
        posUtf7 = j + 1;
        countUtf7 = j + 1 - i;
        return false;
    }

    // Length of the sequence at a decoder's position, given its first byte; 0 if it is invalid.
    int Utf8(int lead) const
    {
        const auto follow = [this](int count, int from, int to) {
            bool fits = Is(posUtf8 + 1, from, to);
            for (int i = 2; i < count; ++i)
                fits = fits && Is(posUtf8 + i, 128, 191);
            return fits ? count : 0;
        };
        if (lead <= 127)
            return 1;
        if (lead <= 193 || lead >= 245)
            return 0;
        if (lead <= 223)
            return follow(2, 128, 191);
        if (lead <= 239)
            return follow(3, lead == 224 ? 160 : 128, 191);
        return follow(4, lead == 240 ? 144 : 128, lead == 244 ? 143 : 191);
    }

    int Sjis(int lead) const
    {
        if (lead <= 127 || (lead >= 160 && lead <= 223))
            return 1;
        return Is(posSjis + 1, 64, 126) || Is(posSjis + 1, 128, 252) ? 2 : 0;
    }

    int Euc(int lead) const
    {
        if (lead <= 127)
            return 1;
        if (lead == 142)
            return Is(posEuc + 1, 161, 223) ? 2 : 0;
        if (lead == 143)
            return Is(posEuc + 1, 161, 254) && Is(posEuc + 2, 161, 254) ? 3 : 0;
        return lead >= 161 && Is(posEuc + 1, 161, 254) ? 2 : 0;
    }

    void Take(int length, qsizetype *position, qsizetype *count)
    {
        *position = length == 0 ? -1 : *position + length;
        *count += length > 1 ? length : 0;
        alive -= length == 0 ? 1 : 0;
    }

    QByteArrayView bytes;
    qsizetype last;
    bool sevenBit = true;
    int alive = 3;
    qsizetype posUtf7 = 0, posUtf8 = 0, posSjis = 0, posEuc = 0;
    qsizetype countUtf7 = 0, countUtf8 = 0, countSjis = 0, countEuc = 0, base64Count = 0;
};
