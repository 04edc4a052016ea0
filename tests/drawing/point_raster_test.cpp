// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/point_raster.h"

namespace tessel {

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFFFFU;
constexpr std::uint32_t kBlue = 0xFF0000FFU;

struct Canvas {
    Canvas(int w, int h)
        : pixels(static_cast<std::size_t>((w + 3) * h), kWhite), raster{nullptr, w, h, w + 3} {
        raster.pixels = pixels.data();
    }
    std::uint32_t at(int x, int y) const { return pixels[static_cast<std::size_t>(y * raster.stride + x)]; }
    int count(std::uint32_t colour) const {
        return static_cast<int>(std::count(pixels.begin(), pixels.end(), colour));
    }
    void expectUntouchedPadding() const {
        for (int y = 0; y < raster.height; ++y)
            for (int x = raster.width; x < raster.stride; ++x)
                EXPECT_EQ(at(x, y), kWhite) << "padding " << x << "," << y;
    }
    PixelMap map() const { return {{{-9, raster.width + 9.0}, {-9, raster.height + 9.0}}, 1, 0, 1, 0}; }
    void stamp(const Stamp& stamp, const std::vector<double>& x, const std::vector<double>& y,
               const std::uint8_t* skip = nullptr, StampMarks* marks = nullptr) {
        stampPoints(raster, map(), stamp, x.data(), y.data(), skip, x.size(), marks);
    }
    std::vector<std::uint32_t> pixels;
    Raster raster;
};

}  // namespace

TEST(PointRaster, APenColoursThePixelThatHoldsThePointOrABlockOrADiscAroundIt) {
    using Pixels = std::vector<std::pair<int, int>>;
    const std::tuple<int, double, double, Pixels, int> cases[] = {
        {1, 3.0, 2.0, {{3, 2}}, 1},
        {1, 4.99, 7.5, {{4, 7}}, 1},
        {2, 5, 4, {{4, 3}, {4, 4}, {5, 3}, {5, 4}}, 4},
        {5, 10.5, 10.5, {{10, 8}}, 21}};
    for (const auto& [width, x, y, blue, count] : cases) {
        Canvas canvas(20, 20);
        canvas.stamp(penStamp(width, 0x0000FF), {x}, {y});
        for (const auto& [column, row] : blue)
            EXPECT_EQ(canvas.at(column, row), kBlue) << width << ": " << column << "," << row;
        EXPECT_EQ(canvas.count(kBlue), count) << width;
        EXPECT_EQ(canvas.at(8, 8), kWhite) << "a disc has no corners";
    }
}

TEST(PointRaster, AStampOfAnySizeColoursItsPixelsAndNoOthers) {
    for (int size = 1; size <= 19; ++size) {
        Canvas canvas(40, 40);
        StampMarks marks;
        marks.reset(40, 40);
        const Stamp disc = penStamp(size, 0x0000FF);
        canvas.stamp(disc, {8 + size / 2.0}, {9 + size / 2.0}, nullptr, &marks);
        EXPECT_EQ(canvas.count(kBlue), static_cast<int>(disc.opaque.size())) << size;
        for (const Stamp::Pixel& pixel : disc.opaque)
            EXPECT_EQ(canvas.at(8 + pixel.dx, 9 + pixel.dy), kBlue) << size;
    }
}

TEST(PointRaster, StampsAreCutOffAtEveryEdgeAndNeverWriteBesideTheRaster) {
    Canvas canvas(10, 8);
    const double far = 1e300;
    canvas.stamp(penStamp(5, 0x0000FF), {0, 10, 5, 5, -40, 5, far, -far}, {4, 4, 0, 8, 4, 99, 4, 4});
    EXPECT_EQ(canvas.at(0, 4), kBlue);
    EXPECT_EQ(canvas.at(9, 4), kBlue);
    EXPECT_EQ(canvas.at(5, 0), kBlue);
    EXPECT_EQ(canvas.at(5, 7), kBlue);
    canvas.expectUntouchedPadding();
}

TEST(PointRaster, WhatIsNoFiniteNumberIsLeftOut) {
    Canvas canvas(10, 8);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    canvas.stamp(penStamp(2, 0x0000FF), {nan, 4, 1e308, inf, -inf, 4}, {4, nan, 4, 4, 4, 1e308});
    EXPECT_EQ(canvas.count(kWhite), static_cast<int>(canvas.pixels.size()));
}

TEST(PointRaster, MaskedPointsAreLeftOut) {
    const std::vector<std::uint8_t> mask = {0, 1, 0};
    Canvas canvas(10, 10);
    canvas.stamp(penStamp(1, 0x0000FF), {1, 4, 7}, {1, 4, 7}, mask.data());
    EXPECT_EQ(canvas.count(kBlue), 2);
    EXPECT_EQ(canvas.at(4, 4), kWhite);
}

TEST(PointRaster, TheMapTurnsCoordinatesIntoPixels) {
    Canvas canvas(100, 100);
    const PixelMap map{{{0, 100}, {0, 100}}, 0.1, -43600, -0.1, 100};
    const double x = 436123.0;
    const double y = 250;
    stampPoints(canvas.raster, map, penStamp(1, 0x0000FF), &x, &y, nullptr, 1, nullptr);
    EXPECT_EQ(canvas.at(12, 75), kBlue);
}

TEST(PointRaster, ATranslucentPixelIsBlendedOncePerSeriesHoweverManyPointsFallThere) {
    const std::uint32_t halfBlack = 0x80000000U;
    const Stamp stamp = pictureStamp(1, &halfBlack);
    Canvas once(4, 4);
    once.stamp(stamp, {1.2}, {1.2});
    EXPECT_EQ(once.at(1, 1), 0xFF7F7F7FU);
    StampMarks marks;
    Canvas often(4, 4);
    marks.reset(4, 4);
    often.stamp(stamp, {1.2, 1.4, 1.9}, {1.2, 1.1, 1.3}, nullptr, &marks);
    EXPECT_EQ(often.at(1, 1), once.at(1, 1));
    marks.nextSeries();
    often.stamp(stamp, {1.2}, {1.2}, nullptr, &marks);
    EXPECT_NE(often.at(1, 1), once.at(1, 1));
}

TEST(PointRaster, MarksTellMoreSeriesApartThanTheirNumbersHold) {
    StampMarks marks;
    marks.reset(2, 1);
    for (int series = 0; series < 200000; ++series) {
        if (series % 65535 == 0) {
            EXPECT_TRUE(marks.take(1)) << "taken last under the same number";
        }
        EXPECT_TRUE(marks.take(0)) << series;
        ASSERT_FALSE(marks.take(0)) << series;
        marks.nextSeries();
    }
}

TEST(PointRaster, AHardEdgedStampHasNoTranslucentPixels) {
    const std::uint32_t corner = 0x1F000000U;  // black, barely there
    const std::uint32_t edge = 0xBB00005DU;    // half a blue, mostly there
    const std::uint32_t limit = 0x80404040U;   // grey, half there
    const std::uint32_t inside = 0xFF00007FU;
    const std::vector<std::uint32_t> picture = {corner, edge, limit, inside};
    const Stamp hard = hardEdged(pictureStamp(2, picture.data()));
    EXPECT_EQ(hard.size, 2);
    EXPECT_TRUE(hard.translucent.empty());
    std::vector<std::tuple<int, int, std::uint32_t>> opaque;
    for (const Stamp::Pixel& pixel : hard.opaque)
        opaque.emplace_back(pixel.dx, pixel.dy, pixel.colour);
    EXPECT_EQ(opaque, (decltype(opaque){{1, 0, 0xFF00007FU}, {0, 1, 0xFF808080U}, {1, 1, inside}}));
}

TEST(PointRaster, EveryPointHasTheColourOfItsShade) {
    const std::vector<double> x = {3.5, 9.5, 14.5};
    const std::vector<double> y = {5.5, 5.5, 5.5};
    const std::vector<Shade> shades = {0, 100, 255};
    for (const int pen : {1, 2, 3}) {
        Canvas canvas(20, 12);
        stampPoints(canvas.raster, canvas.map(), penStamp(pen, 0), shades.data(), x.data(), y.data(), nullptr,
                    x.size(), nullptr);
        for (std::size_t i = 0; i < x.size(); ++i) {
            const std::uint32_t colour = 0xFF000000U | colourMap()[shades[i]];
            EXPECT_EQ(canvas.at(static_cast<int>(x[i]), 5), colour) << pen;
            EXPECT_EQ(canvas.count(colour), static_cast<int>(penStamp(pen, 0).opaque.size())) << pen;
        }
    }
}

TEST(PointRaster, AShadedPointIsLeftOutAndCutOffAsOthersAre) {
    const std::vector<double> x = {0, 5.5, 10};
    const std::vector<double> y = {4, 4.5, 4};
    const std::vector<Shade> shades = {10, 20, 30};
    const std::vector<std::uint8_t> skip = {0, 1, 0};
    for (const int pen : {2, 5}) {
        Canvas canvas(10, 8);
        stampPoints(canvas.raster, canvas.map(), penStamp(pen, 0), shades.data(), x.data(), y.data(),
                    skip.data(), x.size(), nullptr);
        EXPECT_EQ(canvas.at(0, 4), 0xFF000000U | colourMap()[10]);
        EXPECT_EQ(canvas.at(5, 4), kWhite);
        EXPECT_EQ(canvas.at(9, 4), 0xFF000000U | colourMap()[30]);
        canvas.expectUntouchedPadding();
    }
}

TEST(PointRaster, TheSoftEdgeOfAShadedPointIsBlendedInItsColour) {
    const std::uint32_t halfBlack = 0x80000000U;
    const std::array<std::uint32_t, 1> pixels = {halfBlack};
    Canvas canvas(4, 4);
    const double place = 2.5;
    const Shade shade = 200;
    stampPoints(canvas.raster, canvas.map(), pictureStamp(1, pixels.data()), &shade, &place, &place, nullptr,
                1, nullptr);
    for (const int shift : {0, 8, 16}) {
        const auto own = static_cast<int>(colourMap()[shade] >> shift & 255);
        EXPECT_NEAR(static_cast<int>(canvas.at(2, 2) >> shift & 255), (own + 255) / 2, 2);
    }
}

}  // namespace tessel
