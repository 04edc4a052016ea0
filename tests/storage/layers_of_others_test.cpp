// SPDX-License-Identifier: GPL-3.0-or-later
// Layers as no program should make them, and in every kind of coordinate system.
#include "geodesy/coordinate_systems.h"
#include "storage/geopackage.h"
#include "storage/layer_test.h"
#include "support/made_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

namespace {

using Lines = std::vector<std::string>;

class LayersOfOthers : public LayerTest {
  protected:
    LayersOfOthers() : LayerTest("a") {}

    void make(const std::string& statements, int system = 0) const {
        makeGeoPackage(path, statements, system);
    }
    // A layer "a" of points with one column "em", the readings 1, 2, ...
    void makePoints(const std::vector<std::pair<double, double>>& points, int system) const {
        std::string statements = layerOf("a", "em REAL", system);
        int reading = 0;
        for (const auto& [x, y] : points)
            statements += featureIn("a", pointAt(x, y), std::to_string(++reading));
        make(statements, system);
    }
    // The layer "a" in a system that has no number.
    void makeDefined(const std::string& definition) const {
        make(layerOf("a", "em REAL") + featureIn("a", pointAt(1, 2), "3") +
             "UPDATE gpkg_geometry_columns SET srs_id = 100000; INSERT INTO gpkg_spatial_ref_sys VALUES "
             "('own', 100000, 'NONE', 100000, '" +
             definition + "', '')");
    }
    std::pair<double, double> firstPosition() const {
        std::istringstream line(lines().at(0));
        std::pair<double, double> position;
        line.ignore(3) >> position.first >> position.second;
        return position;
    }
    std::string refusal() const {
        return descriptionOf([&] { lines(); });
    }
};

constexpr const char* kNotConvertible =
    " cannot be read: layer a: its coordinate system is not in metres and has no EPSG number: convert it "
    "into "
    "another one first";

}  // namespace

TEST_F(LayersOfOthers, InDegreesOfAnotherDatumBecomeThoseOfWgs84) {
    makePoints({{-2.25, 52.5}}, 4277);  // some 100 m aside
    EXPECT_EQ(layers().at(0).header, "longitude\tlatitude\tem");
    double x = -2.25, y = 52.5;
    Transformation(4277).toDegrees(&x, &y, 1);
    EXPECT_NEAR(x, -2.2515, 0.0005);
    EXPECT_EQ(firstPosition(), std::pair(x, y));
}

TEST_F(LayersOfOthers, InFeetBecomeMetres) {
    double x = 987654, y = 200000;
    makePoints({{x, y}, {x, y + 10}}, 2263);
    EXPECT_EQ(layers().at(0).header, "longitude\tlatitude\tem");
    EXPECT_EQ(layers().at(0).system, 0);
    const Survey survey = import({TableRole::kLongitude, TableRole::kLatitude, TableRole::kEM1}).survey;
    EXPECT_EQ(survey.PositionsCRS, 32618);
    Transformation(2263).toDegrees(&x, &y, 1);
    Transformation(32618).toMetres(&x, &y, 1);
    EXPECT_NEAR(survey.SiteData(kX, 0), x, 1e-6);
    EXPECT_NEAR(survey.SiteData(kY, 0), y, 1e-6);
    EXPECT_NEAR(survey.SiteData(kY, 1) - survey.SiteData(kY, 0), 3.048, 0.01) << "ten feet";
}

TEST_F(LayersOfOthers, ThatCannotBeConvertedStayAsTheyAre) {
    makePoints({{0, 100}}, 4277);
    EXPECT_EQ(lines(), Lines{"1: 0\t100\t1"});
}

TEST_F(LayersOfOthers, WithHeightsAreWhereTheyAreOnTheMap) {
    makePoints({{200000, 400000}}, 7415);
    EXPECT_EQ(layers().at(0).header, "X\tY\tem");
    EXPECT_EQ(layers().at(0).system, 28992);
    makePoints({{-2.25, 52.5}}, 9518);
    EXPECT_EQ(layers().at(0).header, "longitude\tlatitude\tem");
    EXPECT_EQ(lines(), Lines{"1: -2.25\t52.5\t1"});
}

TEST_F(LayersOfOthers, OfTheWholeEarthInMetresAreNoneOfAMap) {
    makePoints({{3980574, -156408}}, 4978);
    EXPECT_EQ(layers().at(0).system, 0);
    EXPECT_EQ(refusal(), path + " cannot be read: layer a: its coordinate system is none of a map");
}

TEST_F(LayersOfOthers, InSystemsWithoutANumberAreReadInMetresOnly) {
    makeDefined(definitionOf(4258).text);
    EXPECT_EQ(refusal(), path + kNotConvertible);
    makeDefined(definitionOf(2263).text);
    EXPECT_EQ(refusal(), path + kNotConvertible);
    for (const std::string& definition : {definitionOf(32630).text, std::string("undefined")}) {
        makeDefined(definition);
        EXPECT_EQ(lines(), Lines{"1: 1\t2\t3"});
        EXPECT_EQ(layers().at(0).header, "X\tY\tem");
        EXPECT_EQ(layers().at(0).system, 0);
    }
    make(layerOf("a", "em REAL") + featureIn("a", pointAt(1, 2), "3") +
         "UPDATE gpkg_geometry_columns SET srs_id = 0");
    EXPECT_EQ(layers().at(0).header, "longitude\tlatitude\tem") << "degrees, says the standard";
    EXPECT_EQ(lines(), Lines{"1: 1\t2\t3"});
}

TEST_F(LayersOfOthers, WithNothingInAPointAreRejectedPointByPoint) {
    make(layerOf("a", "em REAL") + featureIn("a", "NULL", "NULL") + featureIn("a", pointAt(1, 2), "3"));
    const ImportResult result = import({TableRole::kX, TableRole::kY, TableRole::kEM1});
    EXPECT_EQ(sitesIn(result.survey), (std::vector<MadeSite>{{1, 2, 3, 0, 1}}));
    EXPECT_EQ(result.rejected, 1);
    EXPECT_EQ(result.summary.linesRead, 2);
    EXPECT_TRUE(readFile(folder / "error_log.dat").starts_with("Line # 1 "));
}

TEST_F(LayersOfOthers, HaveTheirGeometryWhateverTheCaseOfItsName) {
    make(
        "CREATE TABLE a (id INTEGER PRIMARY KEY, Geom POINT, em REAL, other MULTIPOINT, picture BLOB);"
        "INSERT INTO gpkg_geometry_columns VALUES ('a', 'gEOM', 'POINT', -1, 0, 0);"
        "INSERT INTO a VALUES (1, " +
        pointAt(1, 2) + ", 3, NULL, x'35')");
    EXPECT_EQ(layers().at(0).header, "X\tY\tem");
    EXPECT_EQ(lines(), Lines{"1: 1\t2\t3"});
    make(
        "CREATE TABLE a (id INTEGER PRIMARY KEY, Geom TEXT, em REAL);"
        "INSERT INTO gpkg_geometry_columns VALUES ('a', 'gEOM', 'POINT', -1, 0, 0)");
    EXPECT_EQ(layers().at(0).header, "X\tY\tem") << "whatever its type";
}

TEST_F(LayersOfOthers, HaveNoNumbersInBytes) {
    make(layerOf("a", "em REAL, note TEXT") + featureIn("a", pointAt(1, 2), "x'35', '5'"));
    EXPECT_EQ(lines(), Lines{"1: 1\t2\t\t5"});
}

TEST_F(LayersOfOthers, AreReadInPartWhenTheyAreWiderThanAnyQuery) {
    std::string columns;
    for (int i = 1; i <= 1999; ++i)
        columns += ", c" + std::to_string(i) + " REAL";
    make("CREATE TABLE a (geom BLOB" + columns +
         "); INSERT INTO gpkg_geometry_columns VALUES ('a', 'geom', 'POINT', -1, 0, 0);"
         "INSERT INTO a (geom, c198, c199) VALUES (" +
         pointAt(1, 2) + ", 5, 6)");
    EXPECT_TRUE(layers().at(0).header.ends_with("\tc198"));
    EXPECT_TRUE(lines().at(0).ends_with("\t\t5"));
}

// Nothing that stands in a file is carried out.
TEST_F(LayersOfOthers, ThatAreCalculatedAreNone) {
    make(
        "CREATE VIRTUAL TABLE a USING rtree(fid, geom, em);"
        "INSERT INTO gpkg_geometry_columns VALUES ('a', 'geom', 'POINT', -1, 0, 0);");
    EXPECT_TRUE(layers().empty());
    make(layerOf("a", "em REAL, twice REAL GENERATED ALWAYS AS (em * 2) VIRTUAL"));
    EXPECT_EQ(layers().at(0).header, "X\tY\tem");
}

TEST_F(LayersOfOthers, AreReadFromADatabaseOfWideCharacters) {
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    {
        Database database(file, path, Database::Use::kWrite);
        database.run("PRAGMA encoding = 'UTF-16'");
        beginGeoPackage(database, {});
        database.run(layerOf("a", "\"\u00E4m\" TEXT") + featureIn("a", pointAt(1, 2), "'3.5 \u00E4'"));
    }
    ::close(file);
    ASSERT_EQ(layers().size(), 1U);
    EXPECT_EQ(layers()[0].header, "X\tY\t\u00E4m");
    EXPECT_EQ(lines(), Lines{"1: 1\t2\t3.5 \u00E4"});
}

TEST_F(LayersOfOthers, MadeByAGisAreRead) {
    const std::string made = std::string(TESSEL_SOURCE_DIR) + "/tests/storage/data/points_by_a_gis.gpkg";
    const auto found = geoPackageLayers().layersIn(made).value();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].system, 32630);
    EXPECT_TRUE(beginningOf(geoPackageLayers(), made, found[0])
                    .starts_with("X\tY\tCond.1[mS/m]\tCond.2[mS/m]\tNote\n"
                                 "544586.5\t5806585.75\t4.9\t7.52\tstart\n"));
}

}  // namespace tessel
