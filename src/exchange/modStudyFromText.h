// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes a study file from any text: from a file in another encoding, the rows of a table, or what was typed. Nothing
// here has a window. Whoever has one asks the questions that are due and takes the bytes and the report. What takes
// time for a long text is done by Question, or before by GoOn, in slices:
//
//     StudyFromText made(text);
//     for (QString question = made.Question(); !question.isEmpty(); question = made.Question())
//         made.Answer(...);
//     const TextRefusal refusal = made.Encode(&bytes);
//
// Messages are complete texts for the user, lines separated by CR LF.
#pragma once

#include "base/modFile.h"
#include "exchange/modBreakLines.h"
#include "exchange/modConvertText.h"
#include "text/modCharCode.h"
#include "text/modReadText.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

class StudyFromText
{
  public:
    /// @param text  with any characters and line ends
    /// @param tableRows  for a text made from a table: the number of its row by line, from [0]. Messages name rows
    /// then, not places in the text
    explicit StudyFromText(const QString &text, std::vector<int> tableRows = {});

    /// The text of a whole file, whose encoding is detected. @param bytes  must own its data
    explicit StudyFromText(const QByteArray &bytes);

    /// The encoding that was detected, as CharCodeName gives it; for bytes only.
    QString CodeName() const
    {
        return CharCodeName(m_code);
    }

    /// Goes on to the next question until the deadline. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline);

    /// How much has been done on the way to the next question, from 0 to 1.
    double Done() const
    {
        return m_conversion ? m_conversion->Done() : 1;
    }

    /// The question that is due; empty if all are answered. No question is asked twice, and none if the answer could
    /// not make a study file of the text.
    QString Question();

    /// Answers the question that is due. After a no, what it offers to change stays.
    void Answer(bool isYes);

    /// Encodes the text when no question is left. @param bytes  of the study file; undefined after a refusal
    /// @return why the text cannot be a study file, with the 1-based line of the text to begin with
    TextRefusal Encode(QByteArray *bytes) const;

    /// What was made of the text, after Encode: lines and blanks, what was replaced, and the first line that is too
    /// long.
    /// @param heading  what was done, without a line end
    /// @param path  of the study file
    /// @param keptPath  of the file that it replaced; empty if there was none
    QString Report(const QString &heading, const QString &path, const QString &keptPath) const;

  private:
    /// In the order in which they are asked.
    enum class Due
    {
        Encoding,
        Accents,
        Brackets,
        LongLines,
        None,
    };

    bool IsDue(Due question);
    void Seek(Due next);
    QString NameOfLine(int line) const;
    QString NameOfPlace(const CharacterAt &at) const;

    QString m_text; // as given
    std::vector<int> m_tableRows;
    QByteArray m_bytes;
    CharCode m_code = CharCode::None;
    Due m_due = Due::None;
    bool m_isSought = false;                    // whether m_due is still to be judged
    std::optional<TextConversion> m_conversion; // under way
    ConvertedText m_converted;
    BrokenLines m_lines;
    int m_longLine = 0; // first line of the result that is too long
};

/// Whether files in an encoding can be converted. @param codeName  as CharCodeName gives it
bool CanConvertFrom(const QString &codeName);

/// The message for a file that cannot be converted, or need not be.
QString NotConvertibleMessage(const QString &fileTitle, const QString &codeName);

/// Encodes a text whose characters and line ends are those of a study file.
/// @return a refusal if the file would be refused as a whole, for its size or because it would be detected as another
/// encoding
TextRefusal EncodeStudyText(const QString &text, QByteArray *bytes);

/// Replaces a file by what was made of it and keeps the old file under a free name. The backup is on the disk before
/// the file is replaced.
/// @param before  contents of the file when it was read; if it has changed since, nothing is written
/// @param backupPath  receives the path of the backup
/// @return a fault after which the folder is unchanged
FileFault ReplaceConverted(const QString &path, const QByteArray &before, const QByteArray &converted,
                           QString *backupPath);
