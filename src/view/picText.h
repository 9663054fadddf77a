// The text area of the study window: shows the page and passes keys, clicks and the wheel on. It holds no state of the
// study; it paints what it is shown.
#pragma once

#include "view/PageColours.h"
#include "view/modStudyRound.h"
#include "view/modWheelSteps.h"
#include "widgets/HeldKeyFilter.h"

#include <QWidget>

#include <memory>

class PageFontAtScale;
class QAccessibleEvent;

class PicText : public QWidget
{
    Q_OBJECT

  public:
    explicit PicText(QWidget *parent);
    ~PicText() override;

    /// What to paint; nothing is found or current in it. Both must outlive this or the next call. Without them the page
    /// says how to choose a file.
    void SetStudy(const DisplayText *text, const StudyRound *round);

    /// Sets font and rows. @param points  size of the text; @param lineSpacePx  space between two lines
    /// @param zoomPercent  how much larger both are shown
    void SetAppearance(float points, int lineSpacePx, bool hasLineNumbers, int zoomPercent);

    /// Chooses among the colours; those of the desktop are followed while the program runs.
    void SetPageColour(PageColourChoice choice);

    /// Whether the colours are the dark ones now.
    bool IsDark() const
    {
        return m_colours == &DarkPage;
    }

    /// Shows the given line, 1-based, in the first row and paints the whole page anew.
    void SetTopLine(int topLine);

    /// Shows the given cell, 0-based, as the first of each line and paints the whole page anew.
    void SetLeftCell(int leftCell);

    const PageLayout &Layout() const
    {
        return m_layout;
    }

    /// Marks what was found, or nothing with line 0. Within a hidden answer the whole box is marked, so that nothing of
    /// the answer can be told from the mark.
    void SetFound(const TextSpan &found);

    /// Frames what keys have gone to, or nothing with line 0.
    void SetCurrent(const TextSpan &current);

    const TextSpan &Current() const
    {
        return m_current;
    }

    /// Shows the first character of a hidden answer, or of none with 0.
    void SetHint(int blank);

    /// Paints one blank anew whose mark was changed.
    void DrawHard(int blank);

    /// Paints the whole page anew: any answer may be shown or hidden now.
    void DrawPage();

    /// Paints one blank anew, from the background up: nothing of an answer that was hidden may remain.
    void DrawBlank(int blank);

    /// Paints the strip of line numbers anew.
    void DrawLineNumbers();

    /// Where in the text below stands what keys have gone to, 0 the first character; 0 when that is nothing.
    int SpokenCursor() const;

    /// The page as a screen reader is told of it: the lines in view with hidden answers as "空欄".
    QString SpokenText() const;

    /// Where what stands at an offset of the text above is painted, pixels of this; empty when it is nowhere.
    QRect SpokenRect(int offset) const;

    /// The offset of what is painted at a point of this; -1 when there is nothing.
    int SpokenOffsetAt(const QPoint &at) const;

    QSize sizeHint() const override;

  Q_SIGNALS:
    void KeyDown(int key);
    void MouseDown(Qt::MouseButton button, int xPx, int yPx);
    void MouseMove();
    void OLEDragDrop();
    void RowsChanged(); ///< the number of rows may be another one now
    void ColoursChanged();
    void WheelTurned(int lines);
    void WheelTurnedSideways(int cells);
    void ZoomTurned(int steps);

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

  private:
    PageFontAtScale &FontAt(double scale);
    void TellChange(QAccessibleEvent &&event);
    PageInView Page() const;
    void UpdateColours();
    void UpdatePointer(const QPoint &at);

    const DisplayText *m_text = nullptr;
    const StudyRound *m_round = nullptr;
    PageLayout m_layout;
    PageColourChoice m_pageColour{};
    const PageColours *m_colours = &LightPage;
    QFont m_font;
    std::unique_ptr<PageFontAtScale> m_deviceFont; // made when it is first painted with
    int m_topLine = 1;
    TextSpan m_found;
    TextSpan m_current;
    int m_hintedBlank = 0;
    HeldKeyFilter m_heldKeys;
    WheelSteps m_lineSteps;
    WheelSteps m_cellSteps;
    WheelSteps m_zoomSteps;
};
