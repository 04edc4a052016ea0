// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Program.h"

namespace tessel {

namespace {

constexpr int kSizes[] = {16, 24, 32, 48, 64, 128, 256, 512};

QColor colourAt(const QImage& picture, double x, double y) {
    return picture.pixelColor(static_cast<int>(x * picture.width()), static_cast<int>(y * picture.height()));
}

QImage premultiplied(const QImage& picture) {
    return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

TEST(ProgramIcon, RunsFromBlueToOrangeAroundAPaleTileOnAClearGroundInEverySize) {
    const QIcon icon = programIcon();
    EXPECT_EQ(icon.availableSizes().size(), 8);
    for (const int size : kSizes) {
        SCOPED_TRACE(size);
        const QImage picture(u":/icon/%1.png"_s.arg(size));
        ASSERT_EQ(picture.size(), QSize(size, size));
        EXPECT_EQ(premultiplied(icon.pixmap(QSize(size, size), 1.0).toImage()), premultiplied(picture));
        EXPECT_LT(colourAt(picture, 0, 0).alpha(), 128);
        const QColor first = colourAt(picture, 0.12, 0.12), last = colourAt(picture, 0.88, 0.88);
        EXPECT_GT(first.blue(), first.red() + 50);
        EXPECT_GT(last.red(), last.blue() + 50);
        EXPECT_GT(colourAt(picture, 0.5, 0.5).lightness(), 200);
    }
}

}  // namespace

}  // namespace tessel
