// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes a study file from any text: from a file in another encoding or with lines that cannot be studied, or from the
// rows of a table. Nothing here has a window. GoOn lists what is wrong with the text; whoever has a window shows that,
// lets the user choose, and takes the bytes and the report. What takes time for a long text is done by GoOn in slices:
//
//     StudyFromText made(bytes);
//     made.GoOn(deadline);                   // until there is no more to do
//     made.Make(ChoicesFor(made.Faults()));  // or what the user wants
//     made.GoOn(deadline);                   // again
//     const TextRefusal refusal = made.Encode(&bytes);
//
// Messages are complete texts for the user, lines separated by CR LF.
#pragma once

#include "base/modFile.h"
#include "exchange/modConvertText.h"
#include "text/modCharCode.h"
#include "text/modReadText.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

struct LineProblem;

/// What is wrong with a text or with several, and how much of it can be mended.
struct TextFaults
{
    QStringList entries;      ///< "3行目：…", at most MaxFaultEntries, by line
    bool areMore = false;     ///< whether there are more than that
    qsizetype accents = 0;    ///< letters whose accents can be removed
    qsizetype unwritable = 0; ///< other characters without an equivalent in code page 932
    qsizetype brackets = 0;   ///< pairs of full-width brackets, which hide nothing
    int longLines = 0;        ///< lines over MaxLineBytes

    /// If the bytes read as EUC and as Shift_JIS: their first lines in both readings.
    QString asEuc{};
    QString asShiftJis{};
    bool isLikelyKana = false; ///< whether it is more likely half-width kana in Shift_JIS

    bool operator==(const TextFaults &) const = default;
};

constexpr qsizetype MaxFaultEntries = 1000;

/// What is to become of a text.
struct TextChoices
{
    bool keepsKana = false; ///< take for Shift_JIS what also reads as EUC
    Accents accents = Accents::Remove;
    WithoutEquivalent rest = WithoutEquivalent::Remove; ///< Keep stands for leaving out their rows, of a table only
    bool halvesBrackets = true;
    bool breaksLines = true;

    bool operator==(const TextChoices &) const = default;
};

/// The choices to begin with.
inline TextChoices ChoicesFor(const TextFaults &faults)
{
    return {.keepsKana = faults.isLikelyKana};
}

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

    /// Whether there are NUL characters in it, so that it becomes no study file.
    bool IsNoText() const
    {
        return m_text.contains(QChar::Null);
    }

    bool IsOfTable() const
    {
        return !m_tableRows.empty();
    }

    /// Goes on listing the faults, or making the study file, until the deadline. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline);

    /// How much has been done, from 0 to 1.
    double Done() const;

    /// What is wrong with the text, once it is listed, but which encodings it can be in from the beginning. Nothing if
    /// it is no text at all, which Encode says. Characters with an equivalent are no fault.
    const TextFaults &Faults() const
    {
        return m_faults;
    }

    /// Begins to make the study file, also before the faults are listed. To be called once.
    void Make(const TextChoices &choices);

    /// Encodes the study file once it is made. @param bytes  undefined after a refusal
    /// @return why the text cannot be a study file, with the 1-based line of the text to begin with
    TextRefusal Encode(QByteArray *bytes) const;

    /// What was made of the text, after Encode: lines and blanks, what was replaced, and what still keeps it from
    /// being studied.
    /// @param heading  what was done, without a line end
    /// @param path  of the study file
    /// @param keptPath  of the file that it replaced; empty if there was none
    QString Report(const QString &heading, const QString &path, const QString &keptPath) const;

    /// The text of the study file, once it is made.
    const QString &Text() const
    {
        return m_converted.text;
    }

    /// Number of blanks in the study file.
    qsizetype BlankCount() const
    {
        return m_converted.text.count(u'[');
    }

    /// What still keeps the study file from being studied, one sentence; empty if nothing does.
    QString Remains() const;

  private:
    bool ListFaults(const QDeadlineTimer &deadline);
    void ListLine(QStringView source, QStringView converted);
    void AddEntry(const LineProblem &problem);
    void FinishMaking();
    void LeaveRowsOut();
    QString LossRemarks() const;

    QString m_text; // as given
    std::vector<int> m_tableRows;
    QByteArray m_bytes;
    CharCode m_code = CharCode::None;
    std::optional<TextConversion> m_conversion; // under way
    ConvertedText m_converted;
    bool m_isListing = true;
    bool m_canHalve = true;   // full-width brackets
    qsizetype m_listedTo = 0; // in m_text
    qsizetype m_convertedTo = 0;
    int m_line = 0;
    TextFaults m_faults;
    TextChoices m_choices;
    QStringList m_rowsLeftOut; // their numbers
    int m_longLine = 0;        // first line of the result that is too long
    int m_bracketLine = 0;     // first one with wrong brackets
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
