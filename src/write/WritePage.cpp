// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/WritePage.h"

#include "base/modLog.h"
#include "text/modCheckText.h"
#include "text/modTextDifference.h"
#include "widgets/Contrast.h"
#include "widgets/PageFont.h"
#include "widgets/PaintedIcon.h"
#include "write/modPen.h"

#include <QMimeData>
#include <QPainter>
#include <QPlainTextDocumentLayout>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QUrl>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Adds the space between two lines, which this kind of layout does not know.
class SpacedLayout : public QPlainTextDocumentLayout
{
  public:
    using QPlainTextDocumentLayout::QPlainTextDocumentLayout;

    void SetSpacePx(int spacePx)
    {
        m_spacePx = spacePx;
    }

    QRectF blockBoundingRect(const QTextBlock &block) const override
    {
        const QRectF rect = QPlainTextDocumentLayout::blockBoundingRect(block);
        return rect.isNull() ? rect : rect.adjusted(0, 0, 0, m_spacePx);
    }

  private:
    int m_spacePx = 0;
};

bool HasBrackets(const QString &text)
{
    return std::ranges::any_of(text, [](QChar character) { return u"[]［］"_s.contains(character); });
}

} // namespace

/// Tints blanks.
class BlankHighlighter : public QSyntaxHighlighter
{
  public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

    void SetColours(const PageColours &colours)
    {
        QColor ground = colours.fill.isValid() ? colours.fill : colours.tint;
        m_word = m_bracket = QTextCharFormat();
        if (colours.drawing == HighContrastDrawing) { // which wants no tint
            m_word.setFontUnderline(true);
            ground = QColor();
        }
        if (ground.isValid()) {
            m_word.setBackground(ground);
            m_bracket.setBackground(ground);
        }
        m_word.setForeground(colours.answer);
        m_bracket.setForeground(ground.isValid() ? WithContrast(colours.dim, ground, colours.text, TextContrast)
                                                 : colours.text);
        rehighlight();
    }

  protected:
    void highlightBlock(const QString &text) override
    {
        qsizetype open = -1;
        for (qsizetype i = text.indexOf(u'['); i >= 0 && i < text.size(); ++i) {
            if (text[i] == u'[') {
                open = i;
            } else if (text[i] == u']' && open >= 0) {
                setFormat(int(open), 1, m_bracket);
                setFormat(int(open) + 1, int(i - open) - 1, m_word);
                setFormat(int(i), 1, m_bracket);
                open = -1;
            }
        }
    }

  private:
    QTextCharFormat m_word;
    QTextCharFormat m_bracket;
};

/// The line numbers left of the text.
class NumberStrip : public QWidget
{
  public:
    explicit NumberStrip(WritePage *page) : QWidget(page), m_page(page) {}

  protected:
    void paintEvent(QPaintEvent *event) override
    {
        m_page->PaintNumbers(event);
    }

  private:
    WritePage *m_page;
};

WritePage::WritePage(QWidget *parent)
    : QPlainTextEdit(parent), m_highlighter(new BlankHighlighter(this)), m_strip(new NumberStrip(this))
{
    document()->setDocumentLayout(new SpacedLayout(document()));
    m_highlighter->setDocument(document());
    setFrameShape(QFrame::NoFrame);
    setTabChangesFocus(true); // whoever has no mouse could not leave otherwise
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(this, &QPlainTextEdit::cursorPositionChanged, viewport(), qOverload<>(&QWidget::update));
    connect(this, &QPlainTextEdit::blockCountChanged, this, &WritePage::PlaceStrip);
    connect(this, &QPlainTextEdit::updateRequest, m_strip, [this](const QRect &area, int scrolledPx) {
        if (scrolledPx != 0)
            m_strip->scroll(0, scrolledPx);
        else
            m_strip->update(0, area.y(), m_strip->width(), area.height());
    });
}

void WritePage::SetAppearance(float points, int lineSpacePx, bool hasLineNumbers, int zoomPercent)
{
    QFont font = PageFont();
    font.setPixelSize(int(std::lround(double(points) * logicalDpiY() / 72 * zoomPercent / 100)));
    m_hasLineNumbers = hasLineNumbers;
    m_zoomPercent = zoomPercent;
    static_cast<SpacedLayout *>(document()->documentLayout())->SetSpacePx(lineSpacePx * zoomPercent / 100);
    setFont(font); // lays out the text
    m_strip->setVisible(hasLineNumbers);
    PlaceStrip();
}

void WritePage::SetColours(const PageColours &colours)
{
    m_colours = colours;
    m_highlighter->SetColours(colours);
    ShowSelectionColours();
    viewport()->update();
    m_strip->update();
}

void WritePage::SetPenDown(bool isDown)
{
    m_isPenDown = isDown;
    ShowSelectionColours();
    constexpr int side = 24; // of the pointer, in pixels
    if (!isDown) {
        viewport()->setCursor(Qt::IBeamCursor);
        return;
    }
    QPixmap pen(QSize(side, side) * devicePixelRatioF());
    pen.setDevicePixelRatio(devicePixelRatioF());
    pen.fill(Qt::transparent);
    QPainter painter(&pen);
    PaintIcon(&painter, Icon::Write, QRectF(0, 0, side, side), m_colours.text, QColor());
    painter.end();
    viewport()->setCursor(QCursor(pen, side / 5, side * 4 / 5));
}

/// A selection under the pen looks like what it is about to become.
void WritePage::ShowSelectionColours()
{
    QPalette colours;
    if (m_isPenDown && !(m_colours.drawing == HighContrastDrawing)) {
        colours.setColor(QPalette::Highlight, m_colours.nextFill.isValid() ? m_colours.nextFill : m_colours.note);
        colours.setColor(QPalette::HighlightedText, m_colours.nextFill.isValid() ? m_colours.text : m_colours.noteText);
    }
    setPalette(colours);
}

void WritePage::StrokeSelection()
{
    QTextCursor cursor = textCursor();
    const int from = cursor.selectionStart();
    const int to = cursor.selectionEnd();
    cursor.beginEditBlock();
    Stroke(&cursor, from, to);
    cursor.endEditBlock();
    setTextCursor(cursor);
}

/// Draws the pen from one position of the document to another, line by line.
void WritePage::Stroke(QTextCursor *cursor, int from, int to)
{
    QTextBlock block = document()->findBlock(from);
    int left = to - from; // still to be drawn over, counted in the old text
    int start = from - block.position();
    for (; block.isValid(); block = block.next(), start = 0) {
        const QString line = block.text();
        const LineRange range =
            from == to ? WordAtCursor(line, start) : LineRange{start, qMin(left, int(line.size()) - start)};
        const std::vector<LineEdit> edits = ::Stroke(line, range);
        for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
            cursor->setPosition(block.position() + int(edit->at));
            cursor->setPosition(block.position() + int(edit->at + edit->removed), QTextCursor::KeepAnchor);
            cursor->insertText(edit->inserted);
        }
        left -= int(line.size()) - start + 1; // with the end of the line
        const bool isLast = left < 0 || from == to;
        if (isLast) {
            qsizetype end = range.start + range.length;
            for (const LineEdit &edit : edits)
                if (edit.at <= range.start + range.length)
                    end += edit.inserted.size() - edit.removed;
            cursor->setPosition(block.position() + int(qBound(qsizetype(0), end, qsizetype(block.length()) - 1)));
            return;
        }
    }
}

void WritePage::Insert(const QString &text)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock(); // or undo would take what was typed just before with it
    cursor.insertText(text);
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void WritePage::ChangeTo(const QString &text)
{
    const TextDifference difference = DifferenceOf(toPlainText(), text);
    if (difference.before.isEmpty() && difference.after.isEmpty())
        return;
    QTextCursor change(document());
    change.setPosition(int(difference.offset));
    change.setPosition(int(difference.offset + difference.before.size()), QTextCursor::KeepAnchor);
    change.insertText(difference.after);
}

void WritePage::GoTo(int line, int column, int selectedLength)
{
    const QTextBlock block = document()->findBlockByNumber(qBound(1, line, blockCount()) - 1);
    const int start = block.position() + qBound(0, column - 1, block.length() - 1);
    QTextCursor cursor(document());
    cursor.setPosition(start);
    if (selectedLength > 0)
        cursor.setPosition(qMin(start + selectedLength, block.position() + block.length() - 1),
                           QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    ensureCursorVisible();
}

int WritePage::CursorLine() const
{
    return textCursor().blockNumber() + 1;
}

void WritePage::ShowProblems()
{
    viewport()->update();
}

/// Types a text with brackets.
void WritePage::Type(const QString &text)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const TypedBracket typed = TypeIntoLine(cursor.block().text(), cursor.positionInBlock(), text);
    cursor.insertText(typed.inserted);
    cursor.setPosition(cursor.block().position() + int(typed.cursor));
    cursor.endEditBlock();
    setTextCursor(cursor);
    m_pairRevision = typed.inserted == u"[]" ? document()->revision() : -1;
    m_pairPosition = cursor.position();
}

/// Whether the cursor is in a pair of brackets that the last change brought when one was typed.
bool WritePage::IsInFreshPair() const
{
    const QTextCursor cursor = textCursor();
    return document()->revision() == m_pairRevision && cursor.position() == m_pairPosition && !cursor.hasSelection();
}

void WritePage::RemovePair()
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.deletePreviousChar();
    cursor.deleteChar();
    cursor.endEditBlock();
}

void WritePage::keyPressEvent(QKeyEvent *event)
{
    const bool isCommand = event->modifiers().testFlag(Qt::AltModifier) !=
                           event->modifiers().testFlag(Qt::ControlModifier); // both together are AltGr
    if (event->matches(QKeySequence::InsertLineSeparator))
        Insert(u"\n"_s); // a line is a line here
    else if (event->key() == Qt::Key_Backspace && event->modifiers() == Qt::NoModifier && IsInFreshPair())
        RemovePair();
    else if (isCommand || !HasBrackets(event->text()))
        QPlainTextEdit::keyPressEvent(event);
    else
        Type(event->text());
}

/// Types what an input method commits. Some begin the next conversion in the same event.
void WritePage::inputMethodEvent(QInputMethodEvent *event)
{
    if (event->replacementLength() > 0 || !HasBrackets(event->commitString())) {
        QPlainTextEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent ended;
    QPlainTextEdit::inputMethodEvent(&ended);
    Type(event->commitString());
    QInputMethodEvent next(event->preeditString(), event->attributes());
    QPlainTextEdit::inputMethodEvent(&next);
    event->accept();
}

/// A stroke that begins in a selection does not move its text.
void WritePage::mousePressEvent(QMouseEvent *event)
{
    if (m_isPenDown && event->button() == Qt::LeftButton) {
        QTextCursor cursor = textCursor();
        cursor.clearSelection();
        setTextCursor(cursor);
    }
    QPlainTextEdit::mousePressEvent(event);
}

void WritePage::mouseReleaseEvent(QMouseEvent *event)
{
    QPlainTextEdit::mouseReleaseEvent(event);
    if (m_isPenDown && event->button() == Qt::LeftButton && textCursor().hasSelection())
        StrokeSelection();
}

void WritePage::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!m_isPenDown || event->button() != Qt::LeftButton) {
        QPlainTextEdit::mouseDoubleClickEvent(event);
        return;
    }
    setTextCursor(cursorForPosition(event->position().toPoint()));
    StrokeSelection();
}

void WritePage::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QPlainTextEdit::wheelEvent(event);
        return;
    }
    if (const int steps = m_zoomSteps.Take(event->angleDelta().y(), 1); steps != 0)
        Q_EMIT ZoomTurned(steps);
    event->accept();
}

bool WritePage::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasText() || source->hasUrls();
}

void WritePage::insertFromMimeData(const QMimeData *source)
{
    QStringList paths;
    for (const QUrl &url : source->urls())
        if (url.isLocalFile())
            paths += url.toLocalFile();
    if (!paths.isEmpty())
        Q_EMIT FilesDropped(paths);
    else if (source->hasText())
        Q_EMIT TextPasted(source->text());
}

/// Width of a half-width cell.
double WritePage::CellPx() const
{
    return QFontMetricsF(font()).horizontalAdvance(u'あ') / 2;
}

/// Width of the strip of line numbers.
int WritePage::StripPx() const
{
    constexpr double cells = 4.5;
    constexpr int gapPx = 5;
    const int digits = int(QString::number(blockCount()).size());
    return m_hasLineNumbers ? int(std::lround((qMax(4, digits) - 4 + cells) * CellPx())) + gapPx : gapPx;
}

/// Lets the strip take its place from the text.
void WritePage::PlaceStrip()
{
    if (viewportMargins().left() != StripPx())
        setViewportMargins(StripPx(), 0, 0, 0);
    m_strip->setGeometry(0, 0, StripPx(), height());
}

int WritePage::LineWidthPx() const
{
    return m_zoomPercent >= 300 ? 3 : m_zoomPercent >= 200 ? 2 : 1;
}

QSize WritePage::sizeHint() const
{
    constexpr int rows = 30;
    return QSize(StripPx() + int(CellPx() * (MaxLineBytes + 10)), rows * (fontMetrics().height() + 4));
}

void WritePage::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    PlaceStrip();
}

void WritePage::paintEvent(QPaintEvent *event)
{
    if (m_colours.drawing != HighContrastDrawing)
        PaintCursorLine();
    QPlainTextEdit::paintEvent(event);
    QPainter painter(viewport());
    PaintLimit(&painter, event->rect());
    QPointF offset = contentOffset();
    for (QTextBlock block = firstVisibleBlock(); block.isValid() && offset.y() <= event->rect().bottom();
         block = block.next()) {
        PaintProblems(&painter, block, offset);
        offset.ry() += blockBoundingRect(block).height();
    }
}

/// The ground of the cursor's line, below the tints of blanks in it.
void WritePage::PaintCursorLine() const
{
    const QRectF line = blockBoundingGeometry(textCursor().block()).translated(contentOffset());
    QPainter(viewport()).fillRect(QRectF(line.left(), line.top(), viewport()->width(), line.height()), m_colours.bar);
}

/// The line behind the last character that a line can have, with its number.
void WritePage::PaintLimit(QPainter *painter, const QRect &area) const
{
    const int x = int(std::lround(contentOffset().x() + document()->documentMargin() + MaxLineBytes * CellPx()));
    if (x > viewport()->width())
        return;
    const QColor colour = WithContrast(m_colours.frame, m_colours.background, m_colours.text, 1);
    painter->fillRect(QRect(x, area.top(), LineWidthPx(), area.height()), colour);
    QFont small = window()->font();
    painter->setFont(small);
    painter->setPen(m_colours.number);
    painter->drawText(QPoint(x + 4, viewport()->height() - 4 - painter->fontMetrics().descent()),
                      QString::number(MaxLineBytes));
}

/// Underlines what cannot be saved or is too much.
void WritePage::PaintProblems(QPainter *painter, const QTextBlock &block, const QPointF &offset) const
{
    const auto *const notes = static_cast<const LineNotes *>(block.userData());
    if (!notes)
        return;
    constexpr int underlinePx = 2;
    for (const LineProblem &problem : notes->problems) {
        const int from = problem.column - 1;
        const int to = qMin(from + qMax(1, problem.length), block.length() - 1);
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            const QTextLine line = block.layout()->lineAt(i);
            const int start = qMax(from, line.textStart());
            const int end = qMin(to, line.textStart() + line.textLength());
            if (start >= end)
                continue;
            const double left = line.cursorToX(start);
            const double right = line.cursorToX(end);
            painter->fillRect(QRectF(offset.x() + left, offset.y() + line.y() + line.height() - underlinePx,
                                     right - left, underlinePx * LineWidthPx()),
                              m_colours.hard);
        }
    }
}

void WritePage::PaintNumbers(QPaintEvent *event)
{
    QPainter painter(m_strip);
    painter.fillRect(event->rect(), m_colours.background);
    QFont font = this->font();
    font.setPixelSize(font.pixelSize() * m_colours.drawing.numberPercent / 100);
    painter.setFont(font);
    painter.setPen(m_colours.number);
    const int right = m_strip->width() - int(CellPx() / 2) - 2;
    double top = contentOffset().y();
    const double rowPx = fontMetrics().height();
    for (QTextBlock block = firstVisibleBlock(); block.isValid() && top <= event->rect().bottom();
         block = block.next()) {
        const double height = blockBoundingRect(block).height();
        if (top + height >= event->rect().top())
            painter.drawText(QRectF(0, top, right, rowPx), Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(block.blockNumber() + 1));
        top += height;
    }
}
