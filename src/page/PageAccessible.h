// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Exposes the text area to assistive technology as a read-only text of several lines, in which hidden answers read
// "空欄".
#pragma once

#include <QAccessibleWidget>

class PicText;
class StudyPage;

class PageAccessible : public QAccessibleWidget, public QAccessibleTextInterface
{
  public:
    explicit PageAccessible(PicText *page);

    /// Makes this class the accessible interface of every PicText from now on.
    static void Install();

    void *interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    void selection(int selectionIndex, int *startOffset, int *endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int selectionIndex) override;
    void setSelection(int selectionIndex, int startOffset, int endOffset) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    QString attributes(int offset, int *startOffset, int *endOffset) const override;

  private:
    const StudyPage &Page() const;
};
