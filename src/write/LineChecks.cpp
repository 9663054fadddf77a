// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/LineChecks.h"

#include "base/modLog.h"
#include "write/WritePage.h"

#include <QDeadlineTimer>
#include <QTextBlock>
#include <QTextDocument>
#include <QTimer>

#include <set>
#include <utility>

using namespace Qt::Literals::StringLiterals;

/// What all checked lines have together.
struct LineChecks::Sums
{
    using BlocksInOrder = std::set<QTextBlock>;

    BlocksInOrder faulty; // with a problem; the order of blocks that stay never changes
    int count = 0;
    int refusing = 0;
    int remedies = 0;
    int blanks = 0;
};

/// Adds its line to the sums as long as it exists. The document deletes it together with its block.
class LineChecks::CheckedLine : public LineNotes
{
  public:
    CheckedLine(std::shared_ptr<Sums> sums, const QTextBlock &block, std::vector<LineProblem> found, int blankCount)
        : m_sums(std::move(sums)), m_place(found.empty() ? m_sums->faulty.end() : m_sums->faulty.insert(block).first)
    {
        problems = std::move(found);
        blanks = blankCount;
        Add(1);
    }

    ~CheckedLine() override
    {
        Add(-1);
        if (!problems.empty())
            m_sums->faulty.erase(m_place);
    }

    Q_DISABLE_COPY_MOVE(CheckedLine)

  private:
    void Add(int sign)
    {
        m_sums->blanks += sign * blanks;
        for (const LineProblem &problem : problems) {
            m_sums->count += sign;
            m_sums->refusing += sign * int(RefusesFile(problem.fault));
            m_sums->remedies += sign * int(!problem.offer.isEmpty());
        }
    }

    std::shared_ptr<Sums> m_sums; // the document may outlive the checks
    Sums::BlocksInOrder::iterator m_place;
};

LineChecks::LineChecks(QTextDocument *document, HasPicture hasPicture, QObject *parent)
    : QObject(parent), m_document(document), m_hasPicture(std::move(hasPicture)), m_working(new QTimer(this)),
      m_unchecked(document), m_sums(std::make_shared<Sums>())
{
    m_working->setObjectName(u"tmrCheck"_s);
    connect(m_document, &QTextDocument::contentsChange, this, &LineChecks::Document_Change);
    connect(m_working, &QTimer::timeout, this, &LineChecks::Work);
}

/// A change of a few lines is judged at once, so that its marks do not flicker.
void LineChecks::Document_Change(int at, int, int added)
{
    WriteTrace(u"■frmWrite.Document_Change");
    constexpr int fewLines = 16;
    QTextBlock block = m_document->findBlock(at);
    const QTextBlock last = m_document->findBlock(at + added);
    const bool areFew = last.isValid() && last.blockNumber() - block.blockNumber() < fewLines &&
                        (block == last || last.position() - block.position() < MaxCheckedLength);
    for (; block.isValid(); block = block.next()) {
        block.setUserData(nullptr);
        if (areFew)
            Check(block);
        if (block == last)
            break;
    }
    if (!areFew)
        AddUnchecked(at, at + added);
    m_working->start(0);
}

void LineChecks::Check(QTextBlock block)
{
    if (block.userData())
        return;
    const QString line = block.text();
    std::vector<LineProblem> problems = ProblemsOfLine(line, m_hasPicture);
    m_hasNews |= !problems.empty();
    const int blanks = int(qMin(line.count(u'['), line.count(u']')));
    block.setUserData(new CheckedLine(m_sums, block, std::move(problems), blanks)); // the block's from now on
}

/// Adds a part of the text to what is to be checked.
void LineChecks::AddUnchecked(int from, int to)
{
    if (std::exchange(m_hasUnchecked, true)) {
        from = qMin(from, m_unchecked.selectionStart());
        to = qMax(to, m_unchecked.selectionEnd());
    }
    SetUnchecked(from, to);
}

void LineChecks::SetUnchecked(int from, int to)
{
    const int end = m_document->characterCount() - 1;
    m_unchecked.setPosition(qMin(from, end));
    m_unchecked.setPosition(qMin(to, end), QTextCursor::KeepAnchor);
}

void LineChecks::StartAgain()
{
    for (QTextBlock block = m_document->firstBlock(); block.isValid(); block = block.next())
        block.setUserData(nullptr);
    AddUnchecked(0, m_document->characterCount());
    m_working->start(0);
}

/// @return whether there are more lines to look at
bool LineChecks::GoOn(const QDeadlineTimer &deadline)
{
    if (!m_hasUnchecked)
        return false;
    const int end = m_unchecked.selectionEnd();
    for (QTextBlock block = m_document->findBlock(m_unchecked.selectionStart());
         block.isValid() && block.position() <= end; block = block.next()) {
        if (deadline.hasExpired()) {
            SetUnchecked(block.position(), end);
            return true;
        }
        Check(block);
    }
    m_hasUnchecked = false;
    return false;
}

void LineChecks::Work()
{
    constexpr int sliceMs = 4;
    const bool isMore = GoOn(QDeadlineTimer(sliceMs, Qt::PreciseTimer));
    if (std::exchange(m_hasNews, false))
        Q_EMIT LinesChecked();
    if (isMore)
        return;
    m_working->stop();
    FoundProblems found = Sum();
    if (found == m_found)
        return;
    m_found = std::move(found);
    Q_EMIT Changed();
}

FoundProblems LineChecks::Sum() const
{
    FoundProblems found{.listed = {},
                        .count = m_sums->count,
                        .refusing = m_sums->refusing,
                        .remedies = m_sums->remedies,
                        .blanks = m_sums->blanks};
    for (const QTextBlock &block : m_sums->faulty) {
        for (const LineProblem &problem : static_cast<const LineNotes *>(block.userData())->problems)
            if (found.listed.size() < FoundProblems::MaxListed)
                found.listed.push_back({block.blockNumber() + 1, problem});
        if (found.listed.size() == FoundProblems::MaxListed)
            break;
    }
    return found;
}

const FoundProblems &LineChecks::Finish()
{
    GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    if (m_working->isActive())
        Work();
    return m_found;
}
