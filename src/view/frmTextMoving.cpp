// How the study window moves through its page: the scroll bars, keys that go through the file, and the zoom.
#include "settings/modZoom.h"
#include "view/StudyStateBar.h"
#include "view/frmText.h"
#include "view/modClickTarget.h"
#include "view/picText.h"

#include <QCheckBox>
#include <QLayout>
#include <QRandomGenerator>
#include <QScrollBar>

using namespace Qt::Literals::StringLiterals;

PageInView frmText::Page() const
{
    return PageAt(VScroll->value(), m_session.Text().LineCount(), picText->Layout());
}

/// Shows the scroll bars that the open text needs, and has the page take what room they leave.
void frmText::ShowNeededScrollBars()
{
    const int barPx = VScroll->sizeHint().width();
    PageLayout whole = picText->Layout();
    whole.widthPx += VScroll->isHidden() ? 0 : barPx;
    whole.heightPx += HScroll->isHidden() ? 0 : barPx;
    const DisplayText &text = m_session.Text();
    const NeededScrollBars needed = ScrollBarsFor(text.LineCount(), text.LongestLineCells(), whole, barPx);
    if (needed.isVertical != VScroll->isHidden() && needed.isHorizontal != HScroll->isHidden())
        return;
    VScroll->setVisible(needed.isVertical);
    HScroll->setVisible(needed.isHorizontal);
    layout()->activate(); // now, for the rows of the page to come follow from it
}

void frmText::SetUpScrollBar()
{
    ShowNeededScrollBars();
    const PageInView page = Page();
    VScroll->setRange(1, page.maximum);
    VScroll->setPageStep(page.pageSize);
    VScroll->setEnabled(page.canScroll);
    const int cellsInView = picText->Layout().CellsInView();
    HScroll->setRange(0, qMax(0, m_session.Text().LongestLineCells() - cellsInView));
    HScroll->setPageStep(cellsInView);
    if (!page.Holds(picText->Current().line))
        picText->SetCurrent(TextSpan()); // what is not seen must not be clicked
    ShowProgress();
}

void frmText::VScroll_Change()
{
    WriteTrace(u"■frmText.VScroll_Change");
    picText->SetCurrent(TextSpan());
    picText->SetHint(0);
    picText->SetTopLine(VScroll->value());
    if (VScroll->value() > 1 && m_offeredLine > 0) { // the user goes another way, or there
        m_offeredLine = 0;
        m_stateBar->EndOffer();
    }
    ShowProgress();
}

/// Brings a line to the top and paints the page anew, also where that line stands there already.
void frmText::ShowLine(int line)
{
    if (VScroll->value() != line)
        VScroll->setValue(line);
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

/// Moves the page sideways, just far enough that a stretch of a line is in view.
void frmText::BringCellsIntoView(const TextSpan &span)
{
    if (span.line > 0)
        HScroll->setValue(LeftCellShowing(m_session.Text().Cells(span), picText->Layout()));
}

/// Goes some pages on, or back where they are negative. No answer changes.
void frmText::MovePages(int pages)
{
    VScroll->setValue(VScroll->value() + pages * Page().pageSize);
}

void frmText::AskForLine()
{
    if (m_session.IsFileOpen())
        m_stateBar->AskForLine(m_offeredLine > 0 ? m_offeredLine : VScroll->value(), m_session.Text().LineCount());
}

/// Goes to a page at random, of those with something left to answer.
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

/// Marks a place that was found and brings it into view, with a few lines above it where the view has to move.
void frmText::ShowFound(const TextSpan &found)
{
    constexpr int linesAbove = 3;
    picText->SetFound(found);
    if (found.line > 0 && !Page().Holds(found.line))
        VScroll->setValue(qMax(1, found.line - linesAbove));
    BringCellsIntoView(found);
}

/// Shows the page larger by some steps, or smaller. The line at its top stays there.
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

/// Tells assistive technology how the page is shown.
void frmText::DescribePage()
{
    QString description = u"大きさ %1 %"_s.arg(m_zoom);
    if (picText->IsDark())
        description += u"、暗い画面"_s;
    if (HScroll->value() > 0)
        description += u"、左の %1 桁は隠れています"_s.arg(HScroll->value());
    picText->setAccessibleDescription(description);
}
