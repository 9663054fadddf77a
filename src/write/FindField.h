// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The field for a text to find in the writing window, with buttons for the next and the previous place. Enter goes to
// the next, Shift+Enter to the previous one; Escape closes it.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

class FindField : public QWidget
{
    Q_OBJECT

  public:
    explicit FindField(QWidget *parent);

    /// Opens the field and focuses it. @param text  initial value, selected; the last one if empty
    void Open(const QString &text);

    QString Wanted() const;

    /// Marks the text as not found until it is changed.
    void TellNotFound();

  Q_SIGNALS:
    /// The user wants the next place, or the previous one.
    void Asked(bool backwards);

    void Shown(bool isShown);

    /// The field has closed, which leaves the focus nowhere.
    void Closed();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

  private:
    void Close();

    QLineEdit *txtFind;
    QLabel *lblNotFound;
};
