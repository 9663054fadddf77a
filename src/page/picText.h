// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The text area of the study window: paints the page that is studied and forwards keys, clicks and wheel events. It
// holds no place in the text.
#pragma once

#include "study/modStudyPage.h"
#include "widgets/Contrast.h"
#include "widgets/PageColours.h"
#include "widgets/WheelSteps.h"

#include <QAccessible>
#include <QWidget>

#include <memory>

class DarkMode;
class PageFontAtScale;

class PicText : public QWidget, private QAccessible::ActivationObserver
{
    Q_OBJECT

  public:
    /// @param page  must outlive the widget. While no file is open, it explains how to choose one.
    PicText(const StudyPage &page, QWidget *parent);
    ~PicText() override;

    /// Repaints what a command has changed, and tells screen readers.
    void Show(const PageChange &change);

    /// Sets font and rows, as Measured then says; LayoutChanged is not emitted.
    /// @param points  size of the text; @param lineSpacePx  space between two rows
    /// @param isWrapping  whether a line wider than the page continues in the next row
    /// @param zoomPercent  magnification of size and space
    void SetAppearance(float points, int lineSpacePx, bool hasLineNumbers, bool isWrapping, int zoomPercent);

    /// Chooses the colours. If they follow the desktop, they do so while the program runs.
    void SetPageColour(PageColourChoice choice);

    /// Adopts the colours of the desktop after they changed, if these were chosen.
    void FollowDesktop();

    /// The colours in use.
    const PageColours &Colours() const
    {
        return m_colours;
    }

    /// Whether they are light ones on a dark page.
    bool IsDark() const
    {
        return IsDarker(m_colours.background, m_colours.text);
    }

    /// The geometry that follows from the font and the size of the widget, for StudyPage::SetLayout.
    PageLayout Measured() const;

    const StudyPage &Page() const
    {
        return m_page;
    }

    /// The geometry of the page that is painted.
    const PageLayout &Layout() const
    {
        return m_page.Layout();
    }

    QSize sizeHint() const override;

  Q_SIGNALS:
    void KeyDown(int key, bool isShifted);
    void MouseDown(Qt::MouseButton button, int xPx, int yPx);
    void MouseMove();
    void OLEDragDrop();
    void LayoutChanged(); ///< the widget has another size, so Measured returns another geometry
    void FocusLost();     ///< the next key goes elsewhere
    void ColoursChanged();
    void WheelTurned(int steps);
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

  private:
    PageFontAtScale &FontAt(double scale);
    void UpdateBlank(int blank);
    int MarkedNext() const;
    QRect AreaOfNext() const;
    void accessibilityActiveChanged(bool isActive) override;
    void TellText(bool isLookChanged);
    void UpdatePointer(const QPoint &at);

    const StudyPage &m_page;
    PageColourChoice m_pageColour{};
    std::unique_ptr<DarkMode> m_darkMode; // while the colours follow the desktop
    PageColours m_colours = LightPage;
    QFont m_font;
    std::unique_ptr<PageFontAtScale> m_deviceFont; // created when first needed for painting
    int m_lineSpacePx = 0;
    bool m_hasLineNumbers = false;
    bool m_isWrapping = false;
    int m_zoomPercent = 100;
    QRect m_paintedNext;       // where the blank that Enter opens next is told apart
    bool m_isTabbedTo = false; // whether the focus came with the Tab key
    QString m_toldText;        // to assistive technology, with the caret
    int m_toldCaret = 0;
    WheelSteps m_lineSteps;
    WheelSteps m_cellSteps;
    WheelSteps m_zoomSteps;
};
