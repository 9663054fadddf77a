// Shows one picture that a study file refers to, scaled to fit the screen. Escape or a click closes it.
#pragma once

#include <QDialog>

class QLabel;

/// Most pixels of a picture that is loaded, a little below what Qt itself allows (128 MB). A small file can claim any
/// number of them.
constexpr qint64 MostPicturePixels = 30'000'000;

class frmPicture : public QDialog
{
    Q_OBJECT

  public:
    /// @param folder  where the pictures are; @param name  the picture's name without extension
    frmPicture(const QString &folder, const QString &name, QWidget *owner);

  protected:
    void mousePressEvent(QMouseEvent *event) override;

  private:
    void Load(const QString &path, const QString &name);

    QLabel *lblPicture;
};
