// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The text of the writing window: an editor in the font and colours of the page, with line numbers, tinted blanks, the
// line at the longest length of a line, and a pen that makes blanks of what is drawn over. What is wrong with a line is
// kept with its block, so that it moves with it.
#pragma once

#include "exchange/modLineCheck.h"
#include "widgets/PageColours.h"
#include "widgets/WheelSteps.h"

#include <QPlainTextEdit>
#include <QTextBlockUserData>

#include <vector>

class BlankHighlighter;

/// What is known about a line since it was last changed.
class LineNotes : public QTextBlockUserData
{
  public:
    std::vector<LineProblem> problems;
    int blanks = 0;
};

class WritePage : public QPlainTextEdit
{
    Q_OBJECT

  public:
    explicit WritePage(QWidget *parent);

    /// Sets font and rows, as on the page that is studied.
    /// @param points  size of the text; @param lineSpacePx  space between two lines
    /// @param zoomPercent  magnification of both
    void SetAppearance(float points, int lineSpacePx, bool hasLineNumbers, int zoomPercent);

    /// Sets the colours; the palette of the window has those of the text and its selection.
    void SetColours(const PageColours &colours);

    /// While the pen is down, what the mouse is drawn over becomes a blank at once.
    void SetPenDown(bool isDown);

    /// Draws the pen over the selection, or over the word at the cursor. One step to undo.
    void StrokeSelection();

    /// Inserts a text at the cursor, in place of the selection. One step to undo.
    void Insert(const QString &text);

    /// Makes the text another one by changing only what differs. One step to undo, and none if nothing does.
    void ChangeTo(const QString &text);

    /// Moves the cursor. @param line, column  1-based
    void GoTo(int line, int column = 1, int selectedLength = 0);

    /// 1-based line of the cursor.
    int CursorLine() const;

    /// Repaints the marks of what is wrong with the lines in view.
    void ShowProblems();

    QSize sizeHint() const override;

  Q_SIGNALS:
    void ZoomTurned(int steps);
    void TextPasted(const QString &text);
    void FilesDropped(const QStringList &paths);

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;

  private:
    void Type(const QString &text);
    bool IsInFreshPair() const;
    void RemovePair();
    void Stroke(QTextCursor *cursor, int from, int to);
    void ShowSelectionColours();
    void PaintCursorLine() const;
    void PaintLimit(QPainter *painter, const QRect &area) const;
    void PaintProblems(QPainter *painter, const QTextBlock &block, const QPointF &offset) const;
    void PaintNumbers(QPaintEvent *event);
    double CellPx() const;
    int StripPx() const;
    void PlaceStrip();
    int LineWidthPx() const;

    friend class NumberStrip;

    PageColours m_colours = LightPage;
    BlankHighlighter *m_highlighter;
    QWidget *m_strip; // of line numbers
    bool m_hasLineNumbers = true;
    bool m_isPenDown = false;
    int m_zoomPercent = 100;
    WheelSteps m_zoomSteps;
    int m_pairRevision = -1; // of the document, when brackets were typed as a pair
    int m_pairPosition = 0;  // between them
};
