// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/series_pixels.h"

namespace tessel {

namespace {

constexpr int kWithin = 3;
constexpr std::int64_t kPixels = (2 * kWithin + 1) * (2 * kWithin + 1);

// Distances of a walk: steps of a metre or so, and a longer one at each row's end.
std::vector<double> steps(std::size_t count) {
    std::mt19937 random(7);
    std::normal_distribution<double> step(1, 0.2);
    std::vector<double> values(count);
    for (std::size_t i = 1; i < count; ++i)
        values[i] = i % 100 == 0 ? 5 : std::abs(step(random));
    return values;
}

// Of an area that does not begin at 0, distances up to 6.
PixelMap viewOf(double firstSite, double lastSite) {
    return pixelMap(Rectangle::at(60.5, 30.25, 800, 400), {firstSite, lastSite}, {0, 6});
}

std::int64_t plainNearest(const PixelMap& map, const std::vector<double>& values, int px, int py) {
    double best = kWithin + 0.5;
    std::int64_t nearest = -1;
    for (std::size_t i = 1; i < values.size(); ++i) {
        const double x = map.pixelX(static_cast<double>(i)), y = map.pixelY(values[i]);
        if (!map.area.contains(x, y)) continue;
        const double distance = std::hypot(std::floor(x) - px, std::floor(y) - py);
        if (distance >= best) continue;
        best = distance;
        nearest = static_cast<std::int64_t>(i);
    }
    return nearest;
}

}  // namespace

TEST(SeriesPixels, FindWhatAPlainSearchFinds) {
    const std::vector<double> values = steps(30000);
    std::mt19937 random(2);
    for (const PixelMap& map :
         {viewOf(0, 30000), viewOf(500, 700), viewOf(-90000, 90000), viewOf(700, 500)}) {
        SeriesPixels pixels;
        for (int i = 0; i < 300; ++i) {
            const int px = std::uniform_int_distribution<>(50, 870)(random);
            const int py = std::uniform_int_distribution<>(20, 440)(random);
            EXPECT_EQ(pixels.nearest(map, values, px, py, kWithin).point, plainNearest(map, values, px, py))
                << px << ", " << py;
        }
    }
}

TEST(SeriesPixels, CostTheSameHoweverManyPointsThereAre) {
    constexpr std::int64_t kColumns = 2 * kWithin + 1;
    for (const std::size_t count : {1000U, 1000000U}) {
        const std::vector<double> values = steps(count);
        const PixelMap map = viewOf(0, static_cast<double>(count));
        SeriesPixels pixels;
        EXPECT_LE(pixels.nearest(map, values, 300, 400, kWithin).lookedAt,
                  kColumns * (static_cast<std::int64_t>(count) / 800 + 4) + kPixels)
            << "the first looks at each point of the columns around it once";
        for (int py = 25; py < 435; ++py)
            EXPECT_EQ(pixels.nearest(map, values, 300, py, kWithin).lookedAt, kPixels) << count;
    }
}

TEST(SeriesPixels, LookAtNoMorePointsThanAViewShows) {
    const std::vector<double> values = steps(1000000);
    SeriesPixels pixels;
    EXPECT_LE(pixels.nearest(viewOf(4000, 5000), values, 400, 400, kWithin).lookedAt, 1004 + kPixels);
    EXPECT_LE(pixels.nearest(viewOf(6000, 5500), values, 400, 400, kWithin).lookedAt, 504 + kPixels);
    EXPECT_LE(pixels.nearest(viewOf(2e6, 3e6), values, 400, 400, kWithin).lookedAt, 1 + kPixels);
}

TEST(SeriesPixels, FollowOtherPointsAndOtherViews) {
    SeriesPixels pixels;
    const PixelMap map = viewOf(0, 80);
    const auto pixelOf = [](const PixelMap& view, double x, double y) {
        return std::pair{static_cast<int>(view.pixelX(x)), static_cast<int>(view.pixelY(y))};
    };
    const std::vector<double> values(81, 3);
    const auto [px, py] = pixelOf(map, 40, 3);
    EXPECT_EQ(pixels.nearest(map, values, px, py, kWithin).point, 40);
    const PixelMap closer = viewOf(30, 40);
    const auto [closerX, closerY] = pixelOf(closer, 33, 3);
    EXPECT_EQ(pixels.nearest(closer, values, closerX, closerY, kWithin).point, 33);
    pixels.clear();
    EXPECT_EQ(pixels.nearest(closer, std::vector<double>(81, 5), closerX, closerY, kWithin).point, -1);
}

TEST(SeriesPixels, LeaveOutWhatHasNoPlace) {
    SeriesPixels pixels;
    const PixelMap map = viewOf(0, 4);
    const double inf = std::numeric_limits<double>::infinity();
    const std::vector<double> values{3, 1e308, std::nan(""), inf, 3};
    const int py = static_cast<int>(map.pixelY(3));
    EXPECT_EQ(pixels.nearest(map, values, static_cast<int>(map.pixelX(0)), py, kWithin).point, -1);
    EXPECT_EQ(pixels.nearest(map, values, static_cast<int>(map.pixelX(4)), py, kWithin).point, 4);
    pixels.clear();
    EXPECT_EQ(pixels.nearest(map, {}, 400, 300, kWithin).point, -1);
}

}  // namespace tessel
