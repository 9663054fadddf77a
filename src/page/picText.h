// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The text area of the study window: paints the page and forwards keys, clicks and wheel events. It holds no state of
// the study itself.
#pragma once

#include "page/modWheelSteps.h"
#include "study/modStudyRound.h"
#include "widgets/HeldKeyFilter.h"
#include "widgets/PageColours.h"

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

    /// Sets what to paint and clears what was found or current. Both must outlive the widget or the next call. If they
    /// are null, the page explains how to choose a file.
    void SetStudy(const DisplayText *text, const StudyRound *round);

    /// Sets font and rows; RowsChanged is not emitted. @param points  size of the text; @param lineSpacePx  space
    /// between two lines
    /// @param zoomPercent  magnification of both
    void SetAppearance(float points, int lineSpacePx, bool hasLineNumbers, int zoomPercent);

    /// Chooses the colours. If they follow the desktop, they do so while the program runs.
    void SetPageColour(PageColourChoice choice);

    /// Whether the dark colours are in use.
    bool IsDark() const
    {
        return m_colours == &DarkPage;
    }

    /// Shows the given line, 1-based, in the first row and repaints the whole page.
    void SetTopLine(int topLine);

    /// Shows the given cell, 0-based, as the first of each line and repaints the whole page.
    void SetLeftCell(int leftCell);

    const PageLayout &Layout() const
    {
        return m_layout;
    }

    /// Marks the current hit of a search; line 0 marks nothing. Within a hidden answer the whole box is marked, so that
    /// the mark reveals nothing of the answer.
    void SetFound(const TextSpan &found);

    /// Frames the current keyboard target; line 0 frames nothing.
    void SetCurrent(const TextSpan &current);

    const TextSpan &Current() const
    {
        return m_current;
    }

    /// Shows the first character of a hidden answer; 0 shows none.
    void SetHint(int blank);

    /// Repaints a blank whose mark has changed.
    void DrawHard(int blank);

    /// Repaints the whole page, after any number of answers were shown or hidden.
    void DrawPage();

    /// Repaints one blank including its background, so that nothing remains of a hidden answer.
    void DrawBlank(int blank);

    /// Repaints the strip of line numbers.
    void DrawLineNumbers();

    /// The 0-based offset of the current keyboard target in SpokenText; 0 if there is none.
    int SpokenCursor() const;

    /// The page as text for screen readers: the lines in view, with hidden answers as "空欄".
    QString SpokenText() const;

    /// Where what is at an offset in SpokenText is painted, in pixels of this widget; empty if nowhere.
    QRect SpokenRect(int offset) const;

    /// The offset in SpokenText of what is painted at a point of this widget; -1 if there is nothing.
    int SpokenOffsetAt(const QPoint &at) const;

    QSize sizeHint() const override;

  Q_SIGNALS:
    void KeyDown(int key);
    void MouseDown(Qt::MouseButton button, int xPx, int yPx);
    void MouseMove();
    void OLEDragDrop();
    void RowsChanged(); ///< the page has another size
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
    std::unique_ptr<PageFontAtScale> m_deviceFont; // created when first needed for painting
    int m_topLine = 1;
    TextSpan m_found;
    TextSpan m_current;
    int m_hintedBlank = 0;
    HeldKeyFilter m_heldKeys;
    WheelSteps m_lineSteps;
    WheelSteps m_cellSteps;
    WheelSteps m_zoomSteps;
};
