// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/point_raster.h"

namespace tessel {

namespace {

constexpr int kWidth = 60;
constexpr int kHeight = 40;

struct Points {
    std::vector<double> x, y;
    std::vector<std::uint8_t> skip;
};

// All over the raster and around it, many of them exactly on its edges and half pixels.
Points makePoints() {
    std::mt19937 random(7);
    Points points;
    for (int i = 0; i < 20000; ++i) {
        const bool halves = i % 2 == 0;
        const double x = std::uniform_real_distribution<>(-5, kWidth + 5)(random);
        const double y = std::uniform_real_distribution<>(-5, kHeight + 5)(random);
        points.x.push_back(halves ? static_cast<int>(x * 2) / 2.0 : x);
        points.y.push_back(halves ? static_cast<int>(y * 2) / 2.0 : y);
        points.skip.push_back(i % 5 == 0);
    }
    for (const double hole : {1e308, -1e308, std::numeric_limits<double>::quiet_NaN()}) {
        points.x.push_back(hole);
        points.y.push_back(3);
        points.skip.push_back(0);
    }
    return points;
}

std::vector<std::uint32_t> drawn(const Points& points, const PixelMap& map, int pen, bool skipping,
                                 StampMarks* marks) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(kWidth * kHeight), 0xFFFFFFFFU);
    const Raster raster{pixels.data(), kWidth, kHeight, kWidth};
    const std::uint8_t* const skip = skipping ? points.skip.data() : nullptr;
    // A few at a time, so that places stay free.
    stampPoints(raster, map, penStamp(pen, 0x123456), points.x.data(), points.y.data(), skip, 600, marks);
    const std::size_t last = points.x.size() - 3;
    stampPoints(raster, map, penStamp(pen, 0x654321), points.x.data() + last, points.y.data() + last,
                skipping ? skip + last : nullptr, 3, marks);
    return pixels;
}

}  // namespace

TEST(BlockStamps, AreWrittenWhereTheCarefulWayWritesThem) {
    const Points points = makePoints();
    const PixelMap whole{{{-5, kWidth + 5}, {-5, kHeight + 5}}, 1, 0, 1, 0};
    const PixelMap part{{{10, 45.5}, {8, 30}}, 1, 0.25, 1, -0.25};
    for (const PixelMap& map : {whole, part})
        for (const int pen : {1, 2, 3, 4})
            for (const bool skipping : {false, true}) {
                StampMarks marks;  // points with marks go the careful way
                marks.reset(kWidth, kHeight);
                EXPECT_EQ(drawn(points, map, pen, skipping, nullptr),
                          drawn(points, map, pen, skipping, &marks));
            }
}

TEST(BlockStamps, NeverReachBeyondTheRaster) {
    const Points points = makePoints();
    const PixelMap whole{{{-5, kWidth + 5}, {-5, kHeight + 5}}, 1, 0, 1, 0};
    for (const int pen : {1, 2}) {
        // A frame of untouched pixels around the raster shows any write beside it.
        constexpr int kFrame = 8;
        constexpr int kStride = kWidth + 2 * kFrame;
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(kStride * (kHeight + 2 * kFrame)), 0);
        const Raster raster{pixels.data() + kFrame * kStride + kFrame, kWidth, kHeight, kStride};
        stampPoints(raster, whole, penStamp(pen, 0xABCDEF), points.x.data(), points.y.data(), nullptr,
                    points.x.size(), nullptr);
        int within = 0;
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const int row = static_cast<int>(i) / kStride - kFrame;
            const int column = static_cast<int>(i) % kStride - kFrame;
            const bool inside = row >= 0 && row < kHeight && column >= 0 && column < kWidth;
            if (!inside) {
                EXPECT_EQ(pixels[i], 0U);
            }
            within += inside && pixels[i] != 0;
        }
        EXPECT_GT(within, kWidth * kHeight * 9 / 10);
    }
}

}  // namespace tessel
