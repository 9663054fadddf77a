// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "page/PageAccessible.h"

#include "page/picText.h"
#include "study/modPageText.h"

PageAccessible::PageAccessible(PicText *page) : QAccessibleWidget(page, QAccessible::EditableText) {}

void PageAccessible::Install()
{
    static const auto make = [](const QString &, QObject *object) -> QAccessibleInterface * {
        auto *const page = qobject_cast<PicText *>(object);
        return page ? new PageAccessible(page) : nullptr;
    };
    QAccessible::installFactory(make);
}

void *PageAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State PageAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    return state;
}

QString PageAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? SpokenPage(Page()) : QAccessibleWidget::text(kind);
}

// Nothing can be selected, because the text is only read. The cursor is at the current keyboard target.
void PageAccessible::selection(int, int *startOffset, int *endOffset) const
{
    *startOffset = 0;
    *endOffset = 0;
}

int PageAccessible::selectionCount() const
{
    return 0;
}

void PageAccessible::addSelection(int, int) {}
void PageAccessible::removeSelection(int) {}
void PageAccessible::setSelection(int, int, int) {}

int PageAccessible::cursorPosition() const
{
    return SpokenCursor(Page());
}

void PageAccessible::setCursorPosition(int) {}

QString PageAccessible::text(int startOffset, int endOffset) const
{
    return SpokenPage(Page()).mid(startOffset, endOffset - startOffset);
}

int PageAccessible::characterCount() const
{
    return int(SpokenPage(Page()).size());
}

QRect PageAccessible::characterRect(int offset) const
{
    const QRect rect = AreaSpokenAt(Page(), offset);
    return rect.isEmpty() ? QRect() : QRect(widget()->mapToGlobal(rect.topLeft()), rect.size());
}

int PageAccessible::offsetAtPoint(const QPoint &point) const
{
    const QPoint at = widget()->mapFromGlobal(point);
    return OffsetSpokenAt(Page(), at.x(), at.y());
}

void PageAccessible::scrollToSubstring(int, int) {}

QString PageAccessible::attributes(int, int *startOffset, int *endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return QString();
}

const StudyPage &PageAccessible::Page() const
{
    return static_cast<PicText *>(widget())->Page();
}
