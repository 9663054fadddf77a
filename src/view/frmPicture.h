// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Shows one picture that a study file refers to, scaled to fit the screen. Its button, Enter, Escape or a click closes
// it.
#pragma once

#include <QDialog>

class QLabel;

class frmPicture : public QDialog
{
    Q_OBJECT

  public:
    /// @param folder  of the pictures; @param name  the picture's name without extension
    frmPicture(const QString &folder, const QString &name, QWidget *owner);

  protected:
    void mousePressEvent(QMouseEvent *event) override;

  private:
    void Form_Load();
    void cmdClose_Click();
    void ShowPicture(const QString &path);

    QString m_name;
    QLabel *lblPicture;
};
