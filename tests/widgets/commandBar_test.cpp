// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/PaintedIcon.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

TEST(PaintedIcon, EveryIcon_PaintsItsOwnShapeInsideItsSquare)
{
    constexpr int margin = 10;
    constexpr int size = 40;
    QList<QImage> shapes;
    for (int i = 0; i < IconCount; ++i) {
        QImage image(size + 2 * margin, size + 2 * margin, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        PaintIcon(&painter, Icon(i), QRectF(margin, margin, size, size), Qt::black, Qt::red);
        painter.end();
        shapes += image.copy(margin, margin, size, size);
        EXPECT_FALSE(shapes.sliced(0, i).contains(shapes[i])) << i << " looks like another one";
        painter.begin(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(margin, margin, size, size, Qt::transparent);
        painter.end();
        QImage empty = image;
        empty.fill(Qt::transparent);
        EXPECT_EQ(image, empty) << i << " reaches out of its square";
        EXPECT_NE(shapes[i], empty.copy(margin, margin, size, size)) << i << " is empty";
    }
}

TEST(PaintedIcon, SmallOrScaled_HasSharpPixelsOfItsOwn)
{
    const QPixmap small = PaintedIcon(Icon::Hard, 16, 1, Qt::black, Qt::red);
    const QPixmap scaled = PaintedIcon(Icon::Hard, 16, 1.5, Qt::black, Qt::red);
    EXPECT_EQ(scaled.size(), QSize(24, 24));
    EXPECT_EQ(scaled.deviceIndependentSize(), QSizeF(16, 16));
    const auto has = [](const QPixmap &pixmap, const QColor &colour) {
        const QImage image = pixmap.toImage();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == colour)
                    return true;
        return false;
    };
    EXPECT_TRUE(has(small, Qt::red) && has(scaled, Qt::red));
    EXPECT_FALSE(has(PaintedIcon(Icon::Hard, 16, 1, Qt::black, QColor()), Qt::red)) << "cached by its colours";
}
