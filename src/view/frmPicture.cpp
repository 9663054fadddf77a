// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/frmPicture.h"

#include "base/modLog.h"
#include "text/modPictureName.h"
#include "view/PictureReader.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

frmPicture::frmPicture(const QString &folder, const QString &name, QWidget *owner)
    : QDialog(owner), m_name(name), lblPicture(new QLabel(this))
{
    setObjectName(u"frmPicture"_s);
    Form_Load();
    ShowPicture(PictureFolder(folder).Find(name));
}

void frmPicture::Form_Load()
{
    WriteTrace(u"■frmPicture.Form_Load");
    setWindowTitle(m_name);
    lblPicture->setObjectName(u"lblPicture"_s);
    lblPicture->setTextFormat(Qt::PlainText);
    lblPicture->setAccessibleName(m_name);
    lblPicture->setAlignment(Qt::AlignCenter);
    lblPicture->setWordWrap(true);
    lblPicture->setMinimumSize(30 * fontMetrics().averageCharWidth(), 4 * fontMetrics().height());
    QPushButton *const cmdClose =
        AddButton(this, u"cmdClose"_s, u"閉じる"_s, u"学習に戻ります (Enter，Esc)"_s, &frmPicture::cmdClose_Click);
    cmdClose->setDefault(true);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(lblPicture, 1);
    layout->addWidget(cmdClose, 0, Qt::AlignHCenter);
}

void frmPicture::mousePressEvent(QMouseEvent *)
{
    close();
}

void frmPicture::cmdClose_Click()
{
    WriteTrace(u"■frmPicture.cmdClose_Click");
    accept();
}

void frmPicture::ShowPicture(const QString &path)
{
    const QString subject = u"図「"_s + m_name + u'」';
    if (path.isEmpty()) {
        lblPicture->setText(subject + u"が txt フォルダにありません。"_s);
        return;
    }
    QSize available = AvailableSize(this) * 0.9; // leaves room for a margin
    available.rheight() -= sizeHint().height() - lblPicture->minimumHeight();
    QImage image;
    switch (ReadPicture(path, available, &image)) {
    case PictureFault::None:
        break;
    case PictureFault::Unreadable:
        lblPicture->setText(subject + u"を読めません。PNG，JPEG，GIF，BMPの画像ではないか，壊れています。"_s);
        return;
    case PictureFault::TooLarge:
        lblPicture->setText(subject + u"は大きすぎるため表示できません。"_s);
        return;
    }
    QPixmap picture = QPixmap::fromImage(image);
    // Drawings without a background assume white paper; their lines would vanish on a dark desktop.
    if (picture.hasAlphaChannel()) {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
        painter.fillRect(picture.rect(), Qt::white);
    }
    lblPicture->setPixmap(picture);
}
