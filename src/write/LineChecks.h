// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Checks the lines of a text while it is typed: a few changed lines at once, many some milliseconds at a time between
// events. Each line is checked once after it was changed, and what was found stays with its block, as LineNotes, which
// keep the sums up to date. So what a change costs depends on the lines that it changes, not on the others.
#pragma once

#include "exchange/modLineCheck.h"

#include <QObject>
#include <QTextBlock>

class QDeadlineTimer;
class QTextDocument;
class QTimer;

/// What the checks of all lines have found.
struct FoundProblems
{
    struct InLine
    {
        int line; ///< 1-based
        LineProblem problem;

        bool operator==(const InLine &) const = default;
    };

    static constexpr size_t MaxListed = 500; ///< more than anybody goes through one by one

    std::vector<InLine> listed; ///< the first of them, in the order of the text
    int count = 0;
    int refusing = 0; ///< how many of them keep the file from being studied or saved
    int remedies = 0; ///< how many of them mending does something about
    int blanks = 0;   ///< in the text

    bool operator==(const FoundProblems &) const = default;
};

class LineChecks : public QObject
{
    Q_OBJECT

  public:
    LineChecks(QTextDocument *document, HasPicture hasPicture, QObject *parent);

    /// What was found when all lines had been checked the last time.
    const FoundProblems &Found() const
    {
        return m_found;
    }

    /// Checks at once what has not been checked yet. @return what was found
    const FoundProblems &Finish();

    /// Checks all lines again, because there are other pictures.
    void StartAgain();

  Q_SIGNALS:
    /// All lines have been checked, and something else was found than before.
    void Changed();

    /// A problem was found in a line, which may be in view.
    void LinesChecked();

  private:
    struct Sums;
    class CheckedLine;

    void Document_Change(int at, int removed, int added);
    void Check(QTextBlock block);
    void AddUnchecked(int from, int to);
    void SetUnchecked(int from, int to);
    bool GoOn(const QDeadlineTimer &deadline);
    void Work();
    FoundProblems Sum() const;

    QTextDocument *m_document;
    HasPicture m_hasPicture;
    QTimer *m_working;       // runs while there are lines to check
    QTextCursor m_unchecked; // from the first to the last of them
    bool m_hasUnchecked = false;
    std::shared_ptr<Sums> m_sums;
    FoundProblems m_found;
    bool m_hasNews = false; // whether a problem has been found since LinesChecked
};
