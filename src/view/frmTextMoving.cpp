// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Navigation in the study window: the scroll bars, the keys that move through the file, and the zoom.
#include "page/picText.h"
#include "settings/modZoom.h"
#include "study/modClickTarget.h"
#include "view/StudyStateBar.h"
#include "view/frmText.h"

#include <QCheckBox>
#include <QRandomGenerator>
#include <QScrollBar>

using namespace Qt::Literals::StringLiterals;

PageInView frmText::Page() const
{
    return PageAt(VScroll->value(), m_session.Text().LineCount(), picText->Layout());
}

void frmText::SetUpScrollBar()
{
    const PageInView page = Page();
    VScroll->setRange(1, page.maximum);
    VScroll->setPageStep(page.pageSize);
    VScroll->setEnabled(page.canScroll);
    const int cellsInView = picText->Layout().CellsInView();
    HScroll->setRange(0, qMax(0, m_session.Text().LongestLineCells() - cellsInView));
    HScroll->setPageStep(cellsInView);
    if (!page.Holds(picText->Current().line))
        picText->SetCurrent(TextSpan()); // what is out of view must not be clicked
    ShowProgress();
}

void frmText::VScroll_Change()
{
    WriteTrace(u"■frmText.VScroll_Change");
    picText->SetCurrent(TextSpan());
    picText->SetHint(0);
    picText->SetTopLine(VScroll->value());
    if (VScroll->value() > 1 && m_offeredLine > 0)
        OfferLine(0); // the user has accepted the offer or moved elsewhere
    ShowProgress();
}

/// Brings a line to the top, or the last possible one before it, and repaints the page even if it is already there.
void frmText::ShowLine(int line)
{
    const int topLine = qMin(line, VScroll->maximum());
    if (VScroll->value() != topLine)
        VScroll->setValue(topLine);
    else
        VScroll_Change();
}

void frmText::ShowProgress()
{
    m_stateBar->ShowProgress(m_session.Round(), Page());
}

void frmText::HScroll_Change()
{
    WriteTrace(u"■frmText.HScroll_Change");
    picText->SetLeftCell(HScroll->value());
    DescribePage();
}

/// Scrolls the page sideways just far enough to bring a span into view.
void frmText::BringCellsIntoView(const TextSpan &span)
{
    if (span.line > 0)
        HScroll->setValue(LeftCellShowing(m_session.Text().Cells(span), picText->Layout()));
}

/// Moves by some pages, back if negative. No answer changes.
void frmText::MovePages(int pages)
{
    VScroll->setValue(VScroll->value() + pages * Page().pageSize);
}

void frmText::AskForLine()
{
    if (m_session.IsFileOpen())
        m_stateBar->AskForLine(m_offeredLine > 0 ? m_offeredLine : VScroll->value(), m_session.Text().LineCount());
}

/// Goes to a random page that still has a hidden answer.
void frmText::GoToRandomPage()
{
    const int topLine = RandomPage(m_session.Round(), m_session.Text(), Page(), QRandomGenerator::global());
    if (topLine > 0)
        VScroll->setValue(topLine);
}

void frmText::GoToTarget(bool backwards)
{
    picText->SetCurrent(
        NextSpan(TargetsInView(m_session.Text(), Page(), chkSpeak->isChecked()), picText->Current(), backwards));
    BringCellsIntoView(picText->Current());
}

/// Marks a hit and brings it into view, with a few lines above it if the view has to move.
void frmText::ShowFound(const TextSpan &found)
{
    constexpr int linesAbove = 3;
    picText->SetFound(found);
    if (found.line > 0 && !Page().Holds(found.line))
        VScroll->setValue(qMax(1, found.line - linesAbove));
    BringCellsIntoView(found);
}

/// Zooms by some steps, out if negative. The top line stays at the top.
void frmText::ChangeZoom(int steps)
{
    SetZoom(ZoomBy(m_zoom, steps));
}

void frmText::SetZoom(int percent)
{
    m_isZoomChosen = true;
    if (percent == m_zoom)
        return;
    m_zoom = percent;
    ApplySettings();
    WidenToText();
}

/// Describes the page's zoom and colours to assistive technology.
void frmText::DescribePage()
{
    QString description = u"大きさ %1 %"_s.arg(m_zoom);
    if (picText->IsDark())
        description += u"、暗い画面"_s;
    if (HScroll->value() > 0)
        description += u"、左の %1 桁は隠れています"_s.arg(HScroll->value());
    picText->setAccessibleDescription(description);
}
