// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_finder.h"

namespace tessel {

namespace {

// At random, so that no neighbour in the plane is one in the list.
struct Sites {
    explicit Sites(std::size_t count, double side = 1000) {
        std::mt19937 random(11);
        std::uniform_real_distribution<> place(0, side);
        for (std::size_t i = 0; i < count; ++i) {
            x.push_back(place(random));
            y.push_back(place(random));
        }
        finder.index(x, y);
    }
    std::vector<double> x, y;
    SiteFinder finder;
};

// 1000 by 1000 units on so many pixels.
PixelMap pixelsOf(double side) {
    return pixelMap(Rectangle::at(0, 0, side, side), {0, 1000}, {0, 1000});
}

SiteIndex plainNearest(const Sites& sites, const PixelMap& map, double px, double py, double within,
                       const std::vector<std::uint8_t>& skip) {
    SiteIndex nearest = -1;
    double best = within;
    for (std::size_t i = 0; i < sites.x.size(); ++i) {
        const double distance = std::hypot(map.pixelX(sites.x[i]) - px, map.pixelY(sites.y[i]) - py);
        if (distance >= best || skip[i] != 0) continue;
        best = distance;
        nearest = static_cast<SiteIndex>(i);
    }
    return nearest;
}

}  // namespace

TEST(SiteFinder, LooksAtFewPlacesHoweverManyThereAre) {
    const PixelMap map = pixelsOf(1000);
    for (const std::size_t count : {20000U, 200000U}) {
        const Sites sites(count);
        std::int64_t most = 0;
        for (double px = 5; px < 1000; px += 47)
            most = std::max(most, sites.finder.nearest(map, px, 1000 - px, 3).lookedAt);
        EXPECT_GT(most, 0);
        EXPECT_LT(most, 4000) << count;
    }
}

TEST(SiteFinder, LooksAtFewPlacesWhereAllLieUnderThePointer) {
    Sites sites(100000, 1);  // within one pixel
    sites.x.push_back(1000);
    sites.y.push_back(1000);
    sites.finder.index(sites.x, sites.y);
    const SiteFinder::Found found = sites.finder.nearest(pixelsOf(1000), 0.5, 999.5, 3);
    EXPECT_GE(found.site, 0);
    EXPECT_LT(found.lookedAt, 5000);
}

TEST(SiteFinder, LeavesOutWhatHasNoPlace) {
    SiteFinder finder;
    EXPECT_TRUE(finder.isEmpty());
    const double inf = std::numeric_limits<double>::infinity();
    finder.index(std::vector<double>{inf, 500, 1e308}, std::vector<double>{500, 500, 500});
    EXPECT_FALSE(finder.isEmpty());
    EXPECT_EQ(finder.nearest(pixelsOf(1000), 500, 500, 3).site, 1);
    EXPECT_EQ(finder.nearest(pixelsOf(1000), 400, 500, 3).site, -1);
    finder.index({}, {});
    EXPECT_EQ(finder.nearest(pixelsOf(1000), 500, 500, 3).site, -1);
    finder.clear();
    EXPECT_TRUE(finder.isEmpty());
}

TEST(SiteFinder, FindsWhatAPlainSearchFindsAndIsNotNeededForASingleLook) {
    const Sites sites(3000);
    const PixelMap map = pixelsOf(400);
    const std::vector<std::uint8_t> none(sites.x.size(), 0);
    std::vector<std::uint8_t> skip(sites.x.size());
    for (std::size_t i = 0; i < skip.size(); ++i)
        skip[i] = i % 3 == 0;
    std::mt19937 random(5);
    std::uniform_real_distribution<> place(0, 400);
    int found = 0;
    for (int i = 0; i < 300; ++i) {
        const double px = place(random), py = place(random);
        SCOPED_TRACE(testing::Message() << px << "," << py);
        const SiteIndex site = sites.finder.nearest(map, px, py, 3, skip.data()).site;
        EXPECT_EQ(site, plainNearest(sites, map, px, py, 3, skip));
        EXPECT_EQ(nearestSite(sites.x, sites.y, map, px, py, 3), plainNearest(sites, map, px, py, 3, none));
        found += site >= 0;
    }
    EXPECT_GT(found, 50);
    EXPECT_LT(found, 250);
}

}  // namespace tessel
