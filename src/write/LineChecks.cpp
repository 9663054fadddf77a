// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/LineChecks.h"

#include "base/modLog.h"
#include "write/WritePage.h"

#include <QDeadlineTimer>
#include <QTextDocument>
#include <QTimer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

LineChecks::LineChecks(QTextDocument *document, HasPicture hasPicture, QObject *parent)
    : QObject(parent), m_document(document), m_hasPicture(std::move(hasPicture)), m_working(new QTimer(this))
{
    m_working->setObjectName(u"tmrCheck"_s);
    connect(m_document, &QTextDocument::contentsChange, this, &LineChecks::Document_Change);
    connect(m_working, &QTimer::timeout, this, &LineChecks::Work);
}

/// A change of a single line is judged at once, so that its marks do not flicker.
void LineChecks::Document_Change(int at, int, int added)
{
    WriteTrace(u"■frmWrite.Document_Change");
    QTextBlock block = m_document->findBlock(at);
    const QTextBlock last = m_document->findBlock(at + added);
    if (block == last && block.isValid()) {
        block.setUserData(nullptr);
        Check(&block);
    } else {
        for (; block.isValid(); block = block.next()) {
            block.setUserData(nullptr);
            if (block == last)
                break;
        }
    }
    Restart();
}

const LineNotes &LineChecks::Check(QTextBlock *block)
{
    if (!block->userData()) {
        const QString line = block->text();
        auto *const notes = new LineNotes; // the block's from now on
        notes->problems = ProblemsOfLine(line, m_hasPicture);
        notes->blanks = int(qMin(line.count(u'['), line.count(u']')));
        block->setUserData(notes);
        m_hasNews |= !notes->problems.empty();
    }
    return *static_cast<const LineNotes *>(block->userData());
}

void LineChecks::Restart()
{
    m_finding = {};
    m_next = m_document->firstBlock();
    m_working->start(0);
}

void LineChecks::StartAgain()
{
    for (QTextBlock block = m_document->firstBlock(); block.isValid(); block = block.next())
        block.setUserData(nullptr);
    Restart();
}

/// @return whether there are more lines to look at
bool LineChecks::GoOn(const QDeadlineTimer &deadline)
{
    constexpr int linesBetweenLooks = 16;
    for (int lines = 0; m_next.isValid(); m_next = m_next.next()) {
        if (++lines % linesBetweenLooks == 0 && deadline.hasExpired())
            return true;
        const LineNotes &notes = Check(&m_next);
        m_finding.blanks += notes.blanks;
        for (const LineProblem &problem : notes.problems) {
            ++m_finding.count;
            m_finding.refusing += RefusesFile(problem.fault);
            m_finding.remedies += !problem.offer.isEmpty();
            if (m_finding.listed.size() < FoundProblems::MaxListed)
                m_finding.listed.push_back({m_next.blockNumber() + 1, problem});
        }
    }
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
    if (m_finding == m_found)
        return;
    m_found = std::move(m_finding);
    Q_EMIT Changed();
}

const FoundProblems &LineChecks::Finish()
{
    GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    if (m_working->isActive())
        Work();
    return m_found;
}
