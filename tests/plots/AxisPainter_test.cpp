// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/AxisPainter.h"

namespace tessel {

TEST(SharpPlaces, LieOnWholeDotsOfAPageThatIsMovedAndScaledDifferentlyEitherWay) {
    QImage page(400, 400, QImage::Format_RGB32);
    QPainter painter(&page);
    painter.translate(10.4, 20.3);
    painter.scale(1.7, 2.9);
    for (const QPointF place : {QPointF(10.2, 7.7), QPointF(33.9, 0.4)}) {
        const QPointF moved = sharp(painter, place);
        const QPointF dot = painter.deviceTransform().map(moved);
        EXPECT_NEAR(dot.x(), std::round(dot.x()), 1e-9);
        EXPECT_NEAR(dot.y(), std::round(dot.y()), 1e-9);
        EXPECT_LE(std::fabs(moved.x() - place.x()) * 1.7, 0.5 + 1e-9);
        EXPECT_LE(std::fabs(moved.y() - place.y()) * 2.9, 0.5 + 1e-9);
    }
}

TEST(Ticks, StandCloserBesideAnAxisThanBelowOneWhereLabelsAllowIt) {
    const QFont font;
    EXPECT_EQ(uprightTicks({0, 100}, 440, font).step, 10);
    EXPECT_EQ(levelTicks({0, 100}, 900, font).step, 10);
}

}  // namespace tessel
