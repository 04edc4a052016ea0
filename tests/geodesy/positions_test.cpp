// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/positions.h"

namespace tessel {

TEST(DegreesAndMinutes, AreReadAsLoggersWriteThem) {
    EXPECT_DOUBLE_EQ(degreesFromMinutes(5224.461145), 52 + 24.461145 / 60);
    EXPECT_DOUBLE_EQ(degreesFromMinutes(-220.67328), -(2 + 20.67328 / 60));
    EXPECT_DOUBLE_EQ(degreesFromMinutes(30), 0.5);
    EXPECT_DOUBLE_EQ(degreesFromMinutes(-17959.999), -(179 + 59.999 / 60));
    EXPECT_EQ(degreesFromMinutes(0), 0);
    EXPECT_EQ(degreesFromMinutes(9000), 90);
}

TEST(DegreesAndMinutes, OfSixtyMinutesAreNoNumber) {
    for (const double value : {60.0, 5260.0, -5299.5, std::numeric_limits<double>::infinity()})
        EXPECT_TRUE(std::isnan(degreesFromMinutes(value))) << value;
}

TEST(Positions, AreOnEarthUpToThePolesAndTheDateLine) {
    EXPECT_TRUE(isOnEarth({180, 90}));
    EXPECT_TRUE(isOnEarth({-180, -90}));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const GeographicPosition at :
         {GeographicPosition{180.1, 0}, {-180.1, 0}, {0, 90.1}, {0, -90.1}, {nan, 0}, {0, nan}})
        EXPECT_FALSE(isOnEarth(at)) << at.longitude << ' ' << at.latitude;
    EXPECT_TRUE(isMissingFix({0, -0.0}));
    EXPECT_FALSE(isMissingFix({0, 1e-9}));
    EXPECT_FALSE(isMissingFix({1e-9, 0}));
}

TEST(UtmZones, AreSixDegreesWide) {
    for (int zone = 1; zone <= 60; ++zone) {
        const double west = -180 + (zone - 1) * 6;
        for (const double longitude : {west, west + 3, west + 5.999}) {
            EXPECT_EQ(utmZoneAt({longitude, 10}), 32600 + zone);
            EXPECT_EQ(utmZoneAt({longitude, 0}), 32600 + zone);
            EXPECT_EQ(utmZoneAt({longitude, -10}), 32700 + zone);
        }
    }
    EXPECT_EQ(utmZoneAt({180, 10}), 32660);
}

TEST(UtmZones, AreWiderOffNorwayAndFewerAroundSvalbard) {
    EXPECT_EQ(utmZoneAt({5.3, 60.4}), 32632) << "Bergen";
    EXPECT_EQ(utmZoneAt({3, 56}), 32632);
    EXPECT_EQ(utmZoneAt({2.999, 60}), 32631);
    EXPECT_EQ(utmZoneAt({5.3, 55.9}), 32631);
    EXPECT_EQ(utmZoneAt({5.3, 64}), 32631);
    EXPECT_EQ(utmZoneAt({11.999, 63.9}), 32632);
    EXPECT_EQ(utmZoneAt({15.6, 78.2}), 32633) << "Longyearbyen";
    EXPECT_EQ(utmZoneAt({8.9, 78}), 32631);
    EXPECT_EQ(utmZoneAt({9, 72}), 32633);
    EXPECT_EQ(utmZoneAt({21, 78}), 32635);
    EXPECT_EQ(utmZoneAt({33, 84}), 32637);
    EXPECT_EQ(utmZoneAt({42, 78}), 32638);
    EXPECT_EQ(utmZoneAt({-0.1, 78}), 32630);
    EXPECT_EQ(utmZoneAt({9, 71.9}), 32632);
}

TEST(UtmZones, EndTowardsThePoles) {
    EXPECT_EQ(utmZoneAt({10, 84}), 32633);
    EXPECT_EQ(utmZoneAt({10, 84.1}), 32661);
    EXPECT_EQ(utmZoneAt({10, -80}), 32732);
    EXPECT_EQ(utmZoneAt({10, -80.1}), 32761);
}

}  // namespace tessel
