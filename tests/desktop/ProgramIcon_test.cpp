// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Program.h"

#include <QColor>
#include <QImage>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kSizes[] = {16, 24, 32, 48, 64, 128, 256, 512};

QColor colourAt(const QImage& picture, double x, double y) {
    return picture.pixelColor(static_cast<int>(x * picture.width()), static_cast<int>(y * picture.height()));
}

TEST(ProgramIcon, IsDrawnForEverySize) {
    for (const int size : kSizes) {
        const QImage picture(u":/icon/%1.png"_s.arg(size));
        EXPECT_EQ(picture.size(), QSize(size, size));
    }
}

TEST(ProgramIcon, GivesThePictureOfTheSizeThatIsAskedFor) {
    const QIcon icon = programIcon();
    EXPECT_EQ(icon.availableSizes().size(), 8);
    for (const int size : kSizes) {
        const QImage given = icon.pixmap(QSize(size, size), 1.0).toImage();
        const QImage drawn(u":/icon/%1.png"_s.arg(size));
        ASSERT_FALSE(drawn.isNull()) << size;
        EXPECT_EQ(given.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                  drawn.convertToFormat(QImage::Format_ARGB32_Premultiplied))
            << size;
    }
}

TEST(ProgramIcon, RunsFromBlueToOrangeAroundAPaleTileOnAClearGround) {
    for (const int size : kSizes) {
        const QImage picture(u":/icon/%1.png"_s.arg(size));
        ASSERT_FALSE(picture.isNull()) << size;
        EXPECT_LT(colourAt(picture, 0, 0).alpha(), 128) << size;
        const QColor first = colourAt(picture, 0.12, 0.12);
        const QColor last = colourAt(picture, 0.88, 0.88);
        EXPECT_GT(first.blue(), first.red() + 50) << size;
        EXPECT_GT(last.red(), last.blue() + 50) << size;
        EXPECT_GT(colourAt(picture, 0.5, 0.5).lightness(), 200) << size;
    }
}

}  // namespace

}  // namespace tessel
