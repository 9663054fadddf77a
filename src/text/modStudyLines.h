// The lines of a study file: one contiguous text and a table of where its lines start. Lines are numbered from 1.
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

class StudyLines
{
  public:
    int Count() const
    {
        return int(m_starts.size()) - 1;
    }

    /// The line without its end. @param line  1..Count()
    QStringView at1(int line) const
    {
        const qsizetype start = m_starts[size_t(line) - 1];
        return QStringView(m_text).sliced(start, m_starts[size_t(line)] - start);
    }

    void Append(QStringView line)
    {
        m_text += line;
        m_starts.push_back(m_text.size());
    }

    void Clear()
    {
        *this = StudyLines();
    }

    /// Makes room for a text of the given length.
    void Reserve(qsizetype characters)
    {
        m_text.reserve(characters);
    }

    /// Replaces a character everywhere by another one.
    void Replace(QChar before, QChar after)
    {
        m_text.replace(before, after);
    }

  private:
    QString m_text;
    std::vector<qsizetype> m_starts{0}; // start of each line, and behind them the end of the last
};
