// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Shows one picture that a study file refers to, scaled to fit the screen. Escape or a click closes it.
#pragma once

#include <QDialog>

class QLabel;

/// Largest picture to load, a little below Qt's own limit (128 MB), because even a small file can claim any size.
constexpr qint64 MaxPicturePixels = 30'000'000;

class frmPicture : public QDialog
{
    Q_OBJECT

  public:
    /// @param folder  of the pictures; @param name  the picture's name without extension
    frmPicture(const QString &folder, const QString &name, QWidget *owner);

  protected:
    void mousePressEvent(QMouseEvent *event) override;

  private:
    void Load(const QString &path, const QString &name);

    QLabel *lblPicture;
};
