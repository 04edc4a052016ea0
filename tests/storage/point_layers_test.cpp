// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/point_layers.h"

#include "storage/geopackage.h"
#include "storage/layer_test.h"
#include "storage/survey_file.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

namespace {

class PointLayers : public LayerTest {
  protected:
    PointLayers() : LayerTest("points") {}

    // As a GIS makes one of a table.
    void make(const std::string& csv, const std::string& system, const std::string& types = "YES") const {
        writeFile(folder / "points.csv", csv);
        std::filesystem::remove(path);
        const std::string command = "ogr2ogr -f GPKG " + path + " " + (folder / "points.csv") + " -a_srs " +
                                    system +
                                    " -oo X_POSSIBLE_NAMES=e -oo Y_POSSIBLE_NAMES=n -oo KEEP_GEOM_COLUMNS=NO "
                                    "-lco SPATIAL_INDEX=NO -oo AUTODETECT_TYPE=" +
                                    types;
        EXPECT_EQ(::system(command.c_str()), 0);
    }
    void change(const std::string& statements) const { changeDatabase(path, statements); }
    ImportResult import() const { return LayerTest::import({TableRole::kX, TableRole::kY, TableRole::kEM1}); }
};

template <typename T>
std::string bytesOf(T value, bool littleEnd) {
    std::string bytes(reinterpret_cast<const char*>(&value), sizeof value);
    if (littleEnd != (std::endian::native == std::endian::little)) std::ranges::reverse(bytes);
    return bytes;
}

std::string header(int box, std::size_t boxBytes) {
    return std::string("GP\0", 3) + static_cast<char>(box << 1 | 1) + std::string(4 + boxBytes, '\1');
}

std::string wkb(std::uint32_t type, bool littleEnd, const std::string& rest) {
    return static_cast<char>(littleEnd) + bytesOf(type, littleEnd) + rest;
}

std::string point(std::uint32_t type = 1, bool littleEnd = true, double x = 1.5, double y = -2) {
    return wkb(type, littleEnd, bytesOf(x, littleEnd) + bytesOf(y, littleEnd));
}

}  // namespace

TEST_F(PointLayers, AreReadWithTheirNumbersToTheBit) {
    make("e,n,em1,count,note\n500000.1,4000000.3,0.1,7,a\n500001,4000000,-1e-17,,b\n", "EPSG:32630");
    ASSERT_EQ(layers().size(), 1U);
    EXPECT_EQ(layers()[0].name, "points");
    EXPECT_EQ(layers()[0].header, "X\tY\tem1\tcount\tnote");
    EXPECT_EQ(layers()[0].system, 32630);
    EXPECT_EQ(lines(), (std::vector<std::string>{"1: 500000.1\t4000000.3\t0.1\t7\ta",
                                                 "2: 500001\t4e+06\t-1e-17\t\tb"}));
    EXPECT_EQ(beginningOf(geoPackageLayers(), path, layers()[0]),
              "X\tY\tem1\tcount\tnote\n500000.1\t4000000.3\t0.1\t7\ta\n500001\t4e+06\t-1e-17\t\tb\n");
}

TEST_F(PointLayers, InDegreesSayThatTheyAre) {
    make("e,n,em1\n-2.5,51,1\n", "EPSG:4326");
    EXPECT_EQ(layers().at(0).header, "longitude\tlatitude\tem1");
    EXPECT_EQ(layers().at(0).system, 0);
}

TEST_F(PointLayers, HaveColumnsOfTextsThatMayBeNumbers) {
    make("e,n,em1\n500000,4000000,20.5\n", "EPSG:32630", "NO");
    EXPECT_EQ(layers().at(0).header, "X\tY\tem1");
    EXPECT_EQ(sitesIn(import().survey), (std::vector<MadeSite>{{500000, 4e6, 20.5, 0, 1}}));
}

TEST_F(PointLayers, AreOnlyThoseOfPointsInTables) {
    make("e,n,em1\n1,2,3\n", "EPSG:32630");
    change(
        "CREATE VIEW v AS SELECT * FROM points; "
        "INSERT INTO gpkg_contents (table_name, data_type, srs_id) VALUES ('v', 'features', 32630);"
        "INSERT INTO gpkg_geometry_columns VALUES ('v', 'geom', 'POINT', 32630, 0, 0);"
        "UPDATE gpkg_geometry_columns SET geometry_type_name = 'LINESTRING' WHERE table_name = 'points'");
    EXPECT_TRUE(geoPackageLayers().layersIn(path).has_value());
    EXPECT_EQ(layers().size(), 0U);
    EXPECT_EQ(descriptionOf([&] { lines("v"); }), path + " cannot be read: it has no layer v");
}

TEST_F(PointLayers, AreInNoFileOfAnotherKind) {
    writeFile(path, "X,Y,EM1\n1,2,3\n");
    EXPECT_FALSE(geoPackageLayers().layersIn(path));
    writeFile(path, "");
    EXPECT_FALSE(geoPackageLayers().layersIn(path));
    std::filesystem::remove(path);
    EXPECT_EQ(descriptionOf([&] { layers(); }), path + " cannot be opened: No such file or directory");
}

TEST_F(PointLayers, MayHaveNamesOfAnyKind) {
    make("e,n,em1\n1,2,3\n", "EPSG:32630");
    change("ALTER TABLE points RENAME COLUMN em1 TO \"a\"\"b\tc\"");
    EXPECT_EQ(layers().at(0).header, "X\tY\ta'b c");
    EXPECT_EQ(lines(), std::vector<std::string>{"1: 1\t2\t3"});
}

TEST_F(PointLayers, BecomeASurveyInTheirSystem) {
    make("e,n,em1\n500000,4000000,20\n500001,4000000,21\n500001,4000009,22\n", "EPSG:32630");
    const ImportResult result = import();
    EXPECT_EQ(sitesIn(result.survey),
              (std::vector<MadeSite>{
                  {500000, 4e6, 20, 0, 1}, {500001, 4e6, 21, 0, 1}, {500001, 4000009, 22, 0, 2}}));
    EXPECT_EQ(linesIn(result.survey), (std::vector<std::uint32_t>{1, 2, 3}));
    EXPECT_EQ(result.survey.PositionsCRS, 32630);
    EXPECT_EQ(result.survey.NumRows, 2);
    EXPECT_EQ(result.summary.linesRead, 3);
    EXPECT_EQ(result.summary.path, path);
    EXPECT_TRUE(result.summary.isTable && result.summary.kind.isText);
}

TEST_F(PointLayers, HavePointsThatAreNoSitesInTheErrorLog) {
    make("e,n,em1\n1,2,3\n1,3,4\n1,4,5\n1,5,-11\n", "EPSG:32630");
    change(
        "UPDATE points SET geom = NULL WHERE fid = 1; UPDATE points SET em1 = 'high\tup' WHERE fid = 2; "
        "UPDATE points SET fid = 70 WHERE fid = 4");
    const ImportResult result = import();
    EXPECT_EQ(result.rejected, 3);
    EXPECT_EQ(sitesIn(result.survey), (std::vector<MadeSite>{{1, 4, 5, 0, 1}}));
    const std::string log = readFile(folder / "error_log.dat");
    for (const char* const part : {"\t\t3", "1\t3\thigh up", "1\t5\t-11", "70"})
        EXPECT_NE(log.find(part), std::string::npos) << part << " in\n" << log;
}

TEST_F(PointLayers, OfASurveyFileAreThereToo) {
    saveSurvey(path, journalOf(madeSurvey({{1, 2, 3, 4, 1}})), {});
    ASSERT_EQ(layers().size(), 2U);
    EXPECT_EQ(layers()[0].header, "X\tY\tsite_number\trow\tem1\tem2\tline");
    EXPECT_EQ(lines("sites"), std::vector<std::string>{"1: 1\t2\t1001\t1\t3\t4\t1"});
}

TEST_F(PointLayers, AreNotReadWhileAnotherProgramChangesThem) {
    make("e,n,em1\n1,2,3\n", "EPSG:32630");
    writeFile(path + "-wal", "half");
    EXPECT_TRUE(
        descriptionOf([&] { layers(); }).starts_with(path + " cannot be opened as a survey: another"));
}

TEST(GeoPackagePoints, AreReadWhateverTheyHaveBesideXAndY) {
    const std::pair at(1.5, -2.0);
    for (const auto& [box, bytes] : {std::pair(0, 0U), {1, 32U}, {2, 48U}, {3, 48U}, {4, 64U}})
        for (const std::uint32_t type : {1U, 1001U, 2001U, 3001U})
            for (const bool littleEnd : {false, true})
                EXPECT_EQ(pointIn(header(box, bytes) + point(type, littleEnd) + std::string(16, '\0')), at)
                    << box << ' ' << type;
    const auto several = [](std::uint32_t count) {
        return header(0, 0) + wkb(4, true, bytesOf(count, true) + point() + point());
    };
    EXPECT_EQ(pointIn(several(1)), at);
    EXPECT_EQ(pointIn(several(2)), std::nullopt);
}

TEST(GeoPackagePoints, AreNoneOfAnythingElse) {
    const std::string whole = header(1, 32) + point();
    ASSERT_TRUE(pointIn(whole));
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(pointIn(std::string_view(whole).substr(0, length)), std::nullopt) << length;
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(pointIn(header(0, 0) + point(1, true, none, none)), std::nullopt) << "empty";
    EXPECT_EQ(pointIn(header(0, 0) + point(2)), std::nullopt) << "a line";
    EXPECT_EQ(pointIn(header(0, 0) + point(4001)), std::nullopt);
    EXPECT_EQ(pointIn(header(5, 64) + point()), std::nullopt) << "no such box";
    EXPECT_EQ(pointIn("XP" + header(0, 0).substr(2) + point()), std::nullopt);
    std::string nested = wkb(4, true, bytesOf(1U, true) + wkb(4, true, bytesOf(1U, true) + point()));
    EXPECT_EQ(pointIn(header(0, 0) + nested), std::nullopt);
}

}  // namespace tessel
