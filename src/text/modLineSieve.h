// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Tells most other lines from some wanted ones by their length and three of their characters. For each line of a long
// text this takes a tenth of the time of looking the line up.
#pragma once

#include <QStringView>

#include <bitset>

class LineSieve
{
  public:
    void Add(QStringView line)
    {
        m_marks.set(MarkOf(line));
    }

    /// Whether a line may be one that was added. It always lets those through.
    bool LetsThrough(QStringView line) const
    {
        return m_marks.test(MarkOf(line));
    }

  private:
    static constexpr quint32 MarkBits = 14;

    static size_t MarkOf(QStringView line)
    {
        constexpr quint32 factor = 0x9E3779B1; // spreads small differences over the upper bits
        const qsizetype size = line.size();
        quint32 mark = quint32(size);
        if (size > 0)
            mark = ((mark * factor + line[size / 4].unicode()) * factor + line[size / 2].unicode()) * factor +
                   line[size - 1].unicode();
        return mark * factor >> (32 - MarkBits);
    }

    std::bitset<size_t(1) << MarkBits> m_marks;
};
