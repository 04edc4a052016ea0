// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/coordinate_systems.h"

#include "base/run_time_error.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using Positions = std::vector<GeographicPosition>;

// What the library's own command makes of positions: easting and northing in a system whose axes have that
// order.
std::vector<std::pair<double, double>> byCommand(const TemporaryFolder& folder, int system,
                                                 const Positions& positions) {
    std::string input;
    for (const GeographicPosition& at : positions) {
        char line[80];
        std::snprintf(line, sizeof line, "%.17g %.17g\n", at.latitude, at.longitude);
        input += line;
    }
    writeFile(folder / "in", input);
    const std::string command = "cs2cs -f %.6f EPSG:4326 EPSG:" + std::to_string(system) + " " +
                                (folder / "in") + " >" + (folder / "out");
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::vector<std::pair<double, double>> found;
    std::ifstream output(folder / "out");
    for (double x = 0, y = 0, z = 0; output >> x >> y >> z;)
        found.emplace_back(x, y);
    return found;
}

// Those in a zone, on its edges, and up to a degree beyond, between equator and pole.
Positions positionsIn(int zone, bool north, std::size_t count, std::mt19937& random) {
    const double west = -180 + (zone - 1) * 6;
    std::uniform_real_distribution<double> along(west - 1, west + 7), up(0, 84);
    Positions positions;
    while (positions.size() < count) {
        double longitude = along(random);
        if (positions.size() % 10 == 0) longitude = west;
        if (positions.size() % 10 == 1) longitude = west + 6;
        const double latitude = positions.size() % 50 == 7 ? 0 : up(random);
        positions.push_back({std::clamp(longitude, -180.0, 180.0), north ? latitude : -latitude});
    }
    return positions;
}

void expectAsByCommand(int system, const Positions& positions) {
    const TemporaryFolder folder;
    const auto expected = byCommand(folder, system, positions);
    ASSERT_EQ(expected.size(), positions.size()) << system;
    std::vector<double> x, y;
    for (const GeographicPosition& at : positions) {
        x.push_back(at.longitude);
        y.push_back(at.latitude);
    }
    Transformation(system).toMetres(x.data(), y.data(), x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        ASSERT_NEAR(x[i], expected[i].first, 0.001) << system << ' ' << positions[i].longitude;
        ASSERT_NEAR(y[i], expected[i].second, 0.001) << system << ' ' << positions[i].latitude;
    }
}

}  // namespace

TEST(CoordinateSystems, AreKnownByNumberNameAndArea) {
    EXPECT_GT(coordinateSystems().size(), 3000U);
    const CoordinateSystem* const found = coordinateSystem(32630);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(shownName(*found), "EPSG:32630  WGS 84 / UTM zone 30N");
    EXPECT_TRUE(found->isUsedAt({-2.3, 52.4}));
    EXPECT_FALSE(found->isUsedAt({2.3, 52.4}));
    EXPECT_FALSE(found->isUsedAt({-2.3, -52.4}));
    EXPECT_EQ(coordinateSystem(4326), nullptr) << "not projected";
    EXPECT_EQ(coordinateSystem(1), nullptr);
    EXPECT_EQ(shownName(1), "EPSG:1");
}

TEST(CoordinateSystems, AreUsedAcrossTheDateLineToo) {
    const CoordinateSystem pacific{1, "", "", 170, -50, -170, -30};
    EXPECT_TRUE(pacific.isUsedAt({175, -40}));
    EXPECT_TRUE(pacific.isUsedAt({-175, -40}));
    EXPECT_FALSE(pacific.isUsedAt({0, -40}));
}

TEST(CoordinateSystems, AreFoundByNumberOrByTheWordsOfTheirNames) {
    const auto numbersOf = [](const std::vector<const CoordinateSystem*>& found) {
        std::vector<int> numbers;
        for (const CoordinateSystem* const each : found)
            numbers.push_back(each->number);
        return numbers;
    };
    EXPECT_EQ(numbersOf(findCoordinateSystems("27700", {}, 9)), std::vector<int>{27700});
    const std::vector<int> byName = numbersOf(findCoordinateSystems(" NATIONAL  british ", {}, 9));
    EXPECT_NE(std::ranges::find(byName, 27700), byName.end());
    const std::vector<int> inZone = numbersOf(findCoordinateSystems("etrs89 utm 32N", {}, 99));
    EXPECT_NE(std::ranges::find(inZone, 25832), inZone.end());
    EXPECT_EQ(std::ranges::find(inZone, 25833), inZone.end());
    EXPECT_TRUE(findCoordinateSystems("no such words", {}, 9).empty());
    EXPECT_EQ(findCoordinateSystems("", {}, 7).size(), 7U);
    const auto inBrazil = findCoordinateSystems("UTM", GeographicPosition{-50, -15}, 3);
    ASSERT_EQ(inBrazil.size(), 3U);
    for (const CoordinateSystem* const each : inBrazil)
        EXPECT_TRUE(each->isUsedAt({-50, -15})) << each->name;
    for (const CoordinateSystem* const each : findCoordinateSystems("", GeographicPosition{-50, -15}, 9999))
        EXPECT_TRUE(each->isUsedAt({-50, -15})) << each->name;
}

TEST(CoordinateSystems, HaveToBeInMetres) {
    EXPECT_EQ(whyNotInMetres(32630), "");
    EXPECT_EQ(whyNotInMetres(2193), "");
    EXPECT_EQ(whyNotInMetres(2263), "The unit of this system is the US survey foot, not the metre.");
    EXPECT_EQ(whyNotInMetres(1), "This coordinate system is not known.");
    EXPECT_EQ(whyNotInMetres(4978), "This coordinate system is none of a map.") << "of the whole earth";
    EXPECT_EQ(whyNotInMetres(5703), "This coordinate system is none of a map.") << "heights";
}

TEST(Transformations, AgreeWithTheLibrarysCommandInEveryZone) {
    std::mt19937 random(3);
    for (int zone = 1; zone <= 60; ++zone)
        for (const bool north : {true, false})
            expectAsByCommand((north ? 32600 : 32700) + zone, positionsIn(zone, north, 1000, random));
}

TEST(Transformations, AgreeWithTheLibrarysCommandAcrossDatums) {
    Positions positions;
    for (double longitude = -4; longitude < 1; longitude += 0.3)
        for (double latitude = 51; latitude < 55; latitude += 0.3)
            positions.push_back({longitude, latitude});
    expectAsByCommand(27700, positions);
    expectAsByCommand(25830, positions);
}

TEST(CoordinateSystems, AreToldToOtherPrograms) {
    const SystemDefinition known = definitionOf(32630);
    EXPECT_EQ(known.name, "WGS 84 / UTM zone 30N");
    EXPECT_TRUE(known.text.starts_with("PROJCS[\"WGS 84 / UTM zone 30N\",GEOGCS[")) << known.text;
    EXPECT_EQ(known.text.find('\n'), std::string::npos);
    const SystemDefinition unknown = definitionOf(1);
    EXPECT_EQ(unknown.name, "EPSG:1");
    EXPECT_EQ(unknown.text, "undefined");
}

// In its definition the northing comes first.
TEST(Transformations, GiveTheEastingAsXWhateverTheSystemsOrder) {
    double x = 174.8, y = -41.3;
    Transformation(2193).toMetres(&x, &y, 1);
    EXPECT_NEAR(x, 1.75e6, 2e4);
    EXPECT_NEAR(y, 5.427e6, 2e4);
}

TEST(Transformations, LeadBack) {
    const Transformation way(32733);
    std::vector<double> x = {15, 17.25}, y = {-30, -0.5};
    way.toMetres(x.data(), y.data(), 2);
    EXPECT_NEAR(x[0], 500000, 1e-6);
    way.toDegrees(x.data(), y.data(), 2);
    EXPECT_NEAR(x[1], 17.25, 1e-11);
    EXPECT_NEAR(y[1], -0.5, 1e-11);
}

TEST(Transformations, GoOnBehindAPositionThatCannotBeConverted) {
    const double nowhere = std::numeric_limits<double>::infinity();
    std::vector<double> x = {15, nowhere, 15}, y = {-30, nowhere, -30};
    Transformation(32733).toMetres(x.data(), y.data(), 3);
    EXPECT_FALSE(std::isfinite(x[1]) || std::isfinite(y[1]));
    EXPECT_EQ(x[0], x[2]);
    EXPECT_EQ(y[0], y[2]);
    EXPECT_THROW(Transformation(1), RunTimeError);
}

}  // namespace tessel
