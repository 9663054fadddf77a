// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/frmPicture.h"

#include "text/modPictureName.h"
#include "widgets/ScreenFit.h"

#include <QImageReader>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

frmPicture::frmPicture(const QString &folder, const QString &name, QWidget *owner)
    : QDialog(owner), lblPicture(new QLabel(this))
{
    setObjectName(u"frmPicture"_s);
    setWindowTitle(name);
    lblPicture->setObjectName(u"lblPicture"_s);
    lblPicture->setTextFormat(Qt::PlainText);
    lblPicture->setAccessibleName(name);
    lblPicture->setAlignment(Qt::AlignCenter);
    lblPicture->setWordWrap(true);
    lblPicture->setMinimumSize(30 * fontMetrics().averageCharWidth(), 4 * fontMetrics().height());
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(lblPicture);
    Load(PictureFolder(folder).Find(name), name);
}

void frmPicture::mousePressEvent(QMouseEvent *)
{
    close();
}

void frmPicture::Load(const QString &path, const QString &name)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size(); // from the file's header, without reading pixels
    if (path.isEmpty() || !reader.canRead() || size.isEmpty()) {
        lblPicture->setText(name + u"が見つかりません。"_s);
        return;
    }
    if (qint64(size.width()) * size.height() > MaxPicturePixels) {
        lblPicture->setText(name + u"は大きすぎるため表示できません。"_s);
        return;
    }
    const QSize available = AvailableSize(this) * 0.9; // leaves room for a margin
    if (size.width() > available.width() || size.height() > available.height())
        reader.setScaledSize(size.scaled(available, Qt::KeepAspectRatio));
    QPixmap picture = QPixmap::fromImage(reader.read());
    if (picture.isNull()) {
        lblPicture->setText(name + u"が見つかりません。"_s);
        return;
    }
    // Drawings without a background assume white paper; their lines would vanish on a dark desktop.
    if (picture.hasAlphaChannel()) {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
        painter.fillRect(picture.rect(), Qt::white);
    }
    lblPicture->setPixmap(picture);
}
