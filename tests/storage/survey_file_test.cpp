// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/survey_file.h"

#include "base/program_version.h"
#include "storage/database.h"
#include "support/file_calls.h"
#include "support/journal_bits.h"
#include "support/made_acts.h"
#include "support/made_layers.h"
#include "support/made_survey.h"
#include "support/random_acts.h"
#include "support/run_time_errors.h"
#include "support/survey_bits.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

Survey twoRows() {
    return madeSurvey({{500000, 4e6, 10, 1, 1}, {500001, 4e6, 11, 2, 1}, {500001, 4e6 + 9, 12, 3, 2}});
}

std::string outputOf(const std::string& command) {
    std::FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return "no pipe";
    std::string output;
    std::array<char, 4096> block{};
    while (const std::size_t got = std::fread(block.data(), 1, block.size(), pipe))
        output.append(block.data(), got);
    return ::pclose(pipe) == 0 ? output : "failed: " + output;
}

class SurveyFile : public testing::Test {
  protected:
    std::string save(const Journal& journal, const SavedRecords& records = {}) const {
        saveSurvey(path(), journal, records);
        return path();
    }
    std::string path() const { return folder / "field.gpkg"; }
    std::string whyNotOpened() const {
        return descriptionOf([this] { openSurvey(path()); });
    }
    std::string refusal(const std::string& why) const {
        return path() + " cannot be opened as a survey: " + why;
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(SurveyFile, BringsRandomSessionsBackToTheBit) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        Journal journal = randomSession(seed, 60);
        SavedWork work = openSurvey(save(journal));
        ASSERT_EQ(journalDifferences(work.journal, journal), "");
        const auto expected = statesOf(journal), opened = statesOf(work.journal);
        ASSERT_EQ(opened.size(), expected.size());
        for (std::size_t i = 0; i < opened.size(); ++i)
            ASSERT_EQ(differences(opened[i], expected[i]), "") << i;
    }
}

TEST_F(SurveyFile, BringsBackASurveyOfWhichTheLastSiteWasDeleted) {
    Journal journal = journalOf(twoRows());
    deleteMasked(journal, {1, 1, 1});
    SavedWork work = openSurvey(save(journal));
    EXPECT_EQ(journalDifferences(work.journal, journal), "");
    work.journal.goTo(1);
    journal.goTo(1);
    EXPECT_EQ(differences(work.journal.survey(), journal.survey()), "");
}

TEST_F(SurveyFile, GoesOnAsIfItHadNeverBeenClosed) {
    for (unsigned seed = 100; seed < 120; ++seed) {
        SCOPED_TRACE(seed);
        Journal journal = randomSession(seed, 30), reopened(std::size_t{1} << 30);
        reopened.become(openSurvey(save(journal)).journal);
        std::mt19937 random(seed), same(seed);
        for (int i = 0; i < 30; ++i) {
            doAtRandom(journal, random);
            doAtRandom(reopened, same);
            ASSERT_EQ(differences(reopened.survey(), journal.survey()), "") << i;
            ASSERT_EQ(reopened.content(), journal.content()) << i;
            ASSERT_EQ(reopened.bytes() > 0, journal.bytes() > 0);
        }
    }
}

TEST_F(SurveyFile, KeepsNumbersThatADatabaseWouldNot) {
    Survey survey = twoRows();
    survey.SiteData(kX, 0) = -0.0;
    survey.SiteData(kY, 1) = std::numeric_limits<double>::max();
    survey.SiteData(kEM1, 2) = std::nextafter(0.1, 1);
    survey.SiteData(kEM2, 0) = std::numeric_limits<double>::denorm_min();
    survey.SiteID[0] = -0.0;
    const Journal journal = journalOf(survey);
    EXPECT_EQ(differences(openSurvey(save(journal)).journal.survey(), journal.survey()), "");
}

TEST_F(SurveyFile, KeepsWhatIsKnownOfImportsAndExports) {
    SavedRecords records;
    SavedImport import;
    import.summary.path = import.what.file.path = "/fields/\xFC.dat";
    import.summary.kind.tabs = true;
    import.summary.fields = {{ "X", 1, 8 }};
    import.summary.rejected = {{ "short", 3, 7 }};
    import.summary.firstLogLines = {"a", "b"};
    import.what.file.state = {123, std::chrono::system_clock::now()};
    import.what.file.sha256 = std::string(64, 'a');
    import.what.parameters = {{ "cut-off", "-2.5" }};
    import.acts = 1;
    records.imports = {import};
    records.exports = {{{{"/out.txt", {}, "", "gone"}, {}, "X Y", 3, 1, true}, 1, 4}};
    records.menuItems = {"mnuSave"};
    const SavedRecords opened = openSurvey(save(journalOf(twoRows()), records)).records;
    ASSERT_EQ(opened.imports.size(), 1U);
    EXPECT_EQ(opened.imports[0].summary.path, "/fields/\xFC.dat");
    EXPECT_TRUE(opened.imports[0].summary.kind.tabs);
    EXPECT_EQ(opened.imports[0].summary.firstLogLines, import.summary.firstLogLines);
    EXPECT_EQ(opened.imports[0].what.file.state, import.what.file.state);
    EXPECT_EQ(opened.imports[0].what.parameters, import.what.parameters);
    EXPECT_EQ(opened.imports[0].acts, 1U);
    ASSERT_EQ(opened.exports.size(), 1U);
    EXPECT_EQ(opened.exports[0].what.file.note, "gone");
    EXPECT_EQ(opened.exports[0].content, 4U);
    EXPECT_EQ(opened.menuItems, records.menuItems);
}

// As a GIS sees it
// -------------------------------------------------------------------------------------------

class SurveyFileInAGis : public SurveyFile {
  protected:
    SurveyFileInAGis() {
        Journal journal = journalOf(twoRows());
        deleteRow(journal, 2);
        journal.goTo(1);
        deleteRow(journal, 1);
        SavedRecords records;
        records.imports.resize(1);
        records.imports[0].what.file.path = "/fields/\xFC.dat";
        records.imports[0].what.file.sha256 = "abc";
        save(journal, records);
    }

    // What the program says of the file holds each of these.
    void expectIn(const std::string& command, std::initializer_list<const char*> parts) const {
        const std::string output = outputOf(command);
        for (const char* const part : parts)
            EXPECT_NE(output.find(part), std::string::npos) << part << " in\n" << output;
        EXPECT_EQ(output.find("arning"), std::string::npos) << output;
    }
    std::string ask(const std::string& query) const {
        return outputOf("sqlite3 " + path() + " \"" + query + "\"");
    }
};

TEST_F(SurveyFileInAGis, HasItsSitesAsALayerOfPoints) {
    expectIn("ogrinfo -al " + path() + " sites",
             {"Geometry: Point", "Feature Count: 1", "Undefined Cartesian SRS", "FID Column = fid",
              "Geometry Column = geom", "site_number (Real) = 1003", "row (Integer64) = 1", "em1 (Real) = 12",
              "em2 (Real) = 3", "line (Integer64) = 5", "POINT (500001 4000009)",
              "Extent: (500001.000000, 4000009.000000) - (500001.000000, 4000009.000000)"});
}

TEST_F(SurveyFileInAGis, HasItsRemovedSitesWithTheActAndTheReason) {
    expectIn("ogrinfo -al " + path() + " removed_sites",
             {"Geometry: Point", "Feature Count: 2", "site_number (Real) = 1002", "em1 (Real) = 10",
              "POINT (500000 4000000)", "act (Integer64) = 2",
              "reason (String) = Deleted row 1 with its 2 sites"});
}

TEST_F(SurveyFileInAGis, HasNoSitesAmongTheRemovedThatHaveComeBack) {
    Journal journal = journalOf(twoRows());
    deleteRow(journal, 2);
    journal.goTo(1);
    save(journal);
    EXPECT_EQ(ask("SELECT count(*) FROM removed_sites"), "0\n");
    EXPECT_EQ(ask("SELECT act, kind, in_force FROM journal"), "1|import|1\n2|delete-row|0\n");
}

TEST_F(SurveyFileInAGis, HasItsActsAndItsSourceAsTables) {
    expectIn("ogrinfo -al " + path() + " journal",
             {"Feature Count: 2", "kind (String) = import", "what (String) = Imported a.dat",
              "parameters (String) = {\"file\": \"a.dat\"}", "kind (String) = delete-row",
              "in_force (Integer64) = 1", "sites (Integer64) = 1"});
    EXPECT_EQ(ask("SELECT value FROM survey WHERE name = 'source_file'"), "/fields/\\xFC.dat\n");
    EXPECT_EQ(ask("SELECT value FROM survey WHERE name = 'source_file_sha256'"), "abc\n");
    EXPECT_EQ(ask("SELECT value FROM survey WHERE name = 'program_version'"),
              std::string(kProgramVersion) + "\n");
    EXPECT_EQ(ask("SELECT value FROM survey WHERE name = 'epsg'"), "0\n");
}

// The standard's requirements on a GeoPackage with features and attributes, by their numbers.
TEST_F(SurveyFileInAGis, MeetsTheStandard) {
    EXPECT_EQ(readFile(path()).substr(0, 16), std::string("SQLite format 3\0", 16)) << 1;
    EXPECT_EQ(ask("PRAGMA application_id"), "1196444487\n") << 2;
    EXPECT_EQ(ask("PRAGMA user_version"), "10301\n") << 2;
    EXPECT_EQ(ask("PRAGMA integrity_check"), "ok\n") << 6;
    EXPECT_EQ(ask("PRAGMA foreign_key_check"), "") << 7;
    EXPECT_EQ(ask("SELECT srs_id, organization FROM gpkg_spatial_ref_sys ORDER BY srs_id"),
              "-1|NONE\n0|NONE\n4326|EPSG\n")
        << 11;
    EXPECT_EQ(ask("SELECT table_name, data_type FROM gpkg_contents ORDER BY table_name"),
              "journal|attributes\nremoved_sites|features\nsites|features\nsurvey|attributes\n"
              "survey_state|attributes\n")
        << 13;
    EXPECT_EQ(ask("SELECT count(*) FROM gpkg_contents WHERE last_change GLOB "
                  "'[0-9][0-9][0-9][0-9]-[0-1][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-5][0-9].[0-9][0-9]"
                  "[0-9]Z'"),
              "5\n")
        << 15;
    EXPECT_EQ(ask("SELECT hex(geom) FROM sites"),
              "47500001FFFFFFFF01010000000000000084841E410000008084844E41\n")
        << 19;
    EXPECT_EQ(ask("SELECT table_name, column_name, geometry_type_name, srs_id, z, m FROM "
                  "gpkg_geometry_columns ORDER BY table_name"),
              "removed_sites|geom|POINT|-1|0|0\nsites|geom|POINT|-1|0|0\n")
        << 22;
}

TEST_F(SurveyFileInAGis, TellsTheCoordinateSystemWhenItIsKnown) {
    Journal journal = journalOf(twoRows());
    convert(journal, {PositionKind::kCRS, false, 32630});
    deleteRow(journal, 2);
    save(journal);
    for (const char* const layer : {"sites", "removed_sites"})
        expectIn("ogrinfo -al -so " + path() + " " + layer,
                 {"PROJCRS[\"WGS 84 / UTM zone 30N\"", "ID[\"EPSG\",32630]]",
                  "Data axis to CRS axis mapping: 1,2"});
    EXPECT_EQ(
        ask("SELECT srs_id, organization, organization_coordsys_id, srs_name, substr(definition, 1, 30) "
            "FROM gpkg_spatial_ref_sys WHERE srs_id > 4326"),
        "32630|EPSG|32630|WGS 84 / UTM zone 30N|PROJCS[\"WGS 84 / UTM zone 30N\"\n");
    EXPECT_EQ(ask("SELECT DISTINCT srs_id FROM gpkg_contents WHERE data_type = 'features'"), "32630\n");
    EXPECT_EQ(ask("SELECT hex(substr(geom, 5, 4)) FROM sites LIMIT 1"), "767F0000\n");
    EXPECT_EQ(ask("SELECT count(*) FROM removed_sites WHERE geom IS NOT NULL"), "1\n");
    EXPECT_EQ(ask("SELECT value FROM survey WHERE name = 'epsg'"), "32630\n");
    EXPECT_EQ(ask("PRAGMA foreign_key_check"), "");
    EXPECT_EQ(openSurvey(path()).journal.survey().PositionsCRS, 32630);
}

// What was taken out before stands in the old system.
TEST_F(SurveyFileInAGis, HasNoPositionsOfRemovedSitesFromBeforeAConversion) {
    Journal journal = journalOf(madeSurvey(
        {{-2.5, 51, 10, 1, 1}, {-2.5001, 51, 11, 2, 1}, {-2.5, 51.01, 12, 3, 2}, {-2.6, 51, 9, 4, 3}}));
    deleteRow(journal, 3);
    convert(journal, {PositionKind::kDegrees, false, 32630});
    deleteRow(journal, 2);
    save(journal);
    EXPECT_EQ(ask("SELECT act, em1, geom IS NULL FROM removed_sites"), "2|9.0|1\n4|12.0|0\n");
    expectIn("ogrinfo -al " + path() + " removed_sites", {"Feature Count: 2", "POINT (535077.1648"});
    EXPECT_EQ(ask("SELECT round(max_x) FROM gpkg_contents WHERE table_name = 'removed_sites'"), "535077.0\n");
}

TEST_F(SurveyFileInAGis, HasNothingWhereTheSurveyHasNothing) {
    Survey survey = twoRows();
    survey.TwoEMColumns = survey.SiteIDPresent = false;
    survey.SiteID.clear();
    survey.SourceLine.clear();
    Journal journal = journalOf(survey);
    deleteRow(journal, 2);
    save(journal);
    for (const char* const layer : {"sites", "removed_sites"})
        EXPECT_EQ(
            ask(std::string("SELECT DISTINCT em1 IS NULL, em2 IS NULL, site_number IS NULL, line IS NULL "
                            "FROM ") +
                layer),
            "0|1|1|1\n");
}

TEST_F(SurveyFileInAGis, HasAnExtentThatAMapCanShow) {
    Survey survey = twoRows();
    survey.SiteData(kX, 1) = std::numeric_limits<double>::infinity();
    survey.SiteData(kY, 2) = std::nan("");
    save(journalOf(survey));
    EXPECT_EQ(ask("SELECT min_x, max_x, min_y, max_y FROM gpkg_contents WHERE table_name = 'sites'"),
              "500000.0|500000.0|4000000.0|4000000.0\n");
}

TEST_F(SurveyFileInAGis, SaysTheNumberOfASystemThatIsNotKnownHere) {
    Survey survey = twoRows();
    survey.PositionsCRS = 999999;
    save(journalOf(survey));
    EXPECT_EQ(ask("SELECT srs_name, definition FROM gpkg_spatial_ref_sys WHERE srs_id = 999999"),
              "EPSG:999999|undefined\n");
}

TEST_F(SurveyFile, OfASurveyWithoutSitesIsReadByAGis) {
    save(Journal(1));
    EXPECT_NE(outputOf("ogrinfo -al " + path() + " sites").find("Feature Count: 0"), std::string::npos);
    EXPECT_EQ(openSurvey(path()).journal.survey().NumSites, 0);
}

// What is not a survey file of ours
// ----------------------------------------------------------------------------

TEST_F(SurveyFile, ThatIsDamagedAnywhereIsToldOrBringsTheSurveyBack) {
    const Journal journal = randomSession(5, 12);
    const std::string whole = readFile(save(journal));
    std::mt19937 random(1);
    int told = 0;
    for (int turn = 0; turn < 600; ++turn) {
        std::string bytes = whole;
        bytes[random() % bytes.size()] ^= static_cast<char>(1 + random() % 255);
        writeFile(path(), bytes);
        try {
            EXPECT_EQ(journalDifferences(openSurvey(path()).journal, journal), "") << turn;
        } catch (const RunTimeError& error) {
            EXPECT_TRUE(error.description().starts_with(path() + " cannot be opened")) << error.what();
            ++told;
        }
    }
    EXPECT_GT(told, 100);
    EXPECT_LT(told, 600) << "what stands in the layers is the GIS's affair";
}

TEST_F(SurveyFile, ThatIsCutShortIsTold) {
    const std::string whole = readFile(save(randomSession(6, 12)));
    for (std::size_t length = 0; length < whole.size(); length += 1 + whole.size() / 97) {
        writeFile(path(), whole.substr(0, length));
        EXPECT_TRUE(whyNotOpened().starts_with(path() + " cannot be opened")) << length;
    }
    writeFile(path(), "");
    EXPECT_EQ(whyNotOpened(), refusal("it is no GeoPackage"));
    writeFile(path(), "X,Y,EM1\n1,2,3\n");
    EXPECT_EQ(whyNotOpened(), path() + " cannot be opened: it is no database");
}

TEST_F(SurveyFile, ThatSomebodyHasChangedIsTold) {
    const std::string another = " as a survey: it is a GeoPackage of another program";
    const std::pair<const char*, std::string> cases[] = {
        {"UPDATE survey_state SET checksum = checksum + 1", " as a survey: part 1 of it is damaged"},
        {"DELETE FROM survey_state", " as a survey: it ends too early"},
        {"UPDATE survey SET value = '2' WHERE name = 'format'; DROP TABLE survey_state;"
         "CREATE TABLE survey_state (other TEXT)",
         " as a survey: it is from a newer version of this program"},
        // a view without end in place of the state
        {"DROP TABLE survey_state; CREATE VIEW survey_state AS WITH RECURSIVE n(part) AS (SELECT 1 UNION ALL "
         "SELECT part + 1 FROM n) SELECT part, 0 AS checksum, zeroblob(1000) AS bytes FROM n",
         another},
        // values that are made and not held
        {"CREATE TABLE made (part INTEGER PRIMARY KEY NOT NULL, checksum INTEGER NOT NULL, "
         "bytes AS (printf('%.*c', 1000, 'x'))); INSERT INTO made(part, checksum) VALUES (1, 1), (2, 1); "
         "DROP TABLE survey_state; ALTER TABLE made RENAME TO survey_state",
         " as a survey: it is damaged"},
        {"UPDATE survey_state SET bytes = zeroblob(70000000)", ": string or blob too big"}};
    for (const auto& [statements, why] : cases) {
        save(randomSession(7, 12));
        changeDatabase(path(), statements);
        EXPECT_EQ(whyNotOpened(), path() + " cannot be opened" + why) << statements;
    }
}

TEST_F(SurveyFile, OfAnotherProgramIsTold) {
    writeFile(folder / "points.csv", "x,y,em\n1,2,3\n");
    ASSERT_EQ(outputOf("ogr2ogr -f GPKG " + path() + " " + (folder / "points.csv") +
                       " -oo X_POSSIBLE_NAMES=x -oo Y_POSSIBLE_NAMES=y"),
              "");
    EXPECT_EQ(whyNotOpened(), refusal("it is a GeoPackage of another program"));
    EXPECT_TRUE(isForeignGeoPackage(path()));
    EXPECT_FALSE(isForeignGeoPackage(folder / "points.csv"));
    EXPECT_FALSE(isForeignGeoPackage(folder / "none.gpkg"));
    save(journalOf(twoRows()));
    EXPECT_FALSE(isForeignGeoPackage(path()));
}

TEST_F(SurveyFile, ThatAnotherProgramHasNotFinishedIsToldAndOneLeftInItsModeIsRead) {
    const Journal journal = journalOf(twoRows());
    save(journal);
    EXPECT_EQ(outputOf("sqlite3 " + path() + " 'PRAGMA journal_mode = WAL; PRAGMA wal_checkpoint'"),
              "wal\n0|0|0\n");
    EXPECT_EQ(readFile(path())[18], 2);
    EXPECT_EQ(journalDifferences(openSurvey(path()).journal, journal), "");
    writeFile(path() + "-wal", "half");
    EXPECT_EQ(whyNotOpened(), refusal("another program has it open, or has not finished it (" + path() +
                                      "-wal); close it there first"));
}

TEST_F(SurveyFile, IsNotPutBesideWhatAnotherProgramHasNotFinished) {
    Journal journal = journalOf(twoRows());
    const std::string before = readFile(save(journal)), link = folder / "link.gpkg";
    ASSERT_EQ(::symlink(path().c_str(), link.c_str()), 0);
    deleteRow(journal, 2);
    for (const std::string suffix : {"-wal", "-journal"}) {
        writeFile(path() + suffix, "half");
        for (const std::string& name : {path(), link})
            EXPECT_EQ(descriptionOf([&] { saveSurvey(name, journal, {}); }),
                      name + " cannot be written: another program has it open, or has not finished it (" +
                          path() + suffix + "); close it there first");
        EXPECT_EQ(readFile(path()), before);
        EXPECT_NE(descriptionOf([&] { openSurvey(link); }), "");
        writeFile(path() + suffix, "");
    }
    save(journal);
    EXPECT_NE(readFile(path()), before);
}

TEST_F(SurveyFile, TellsWhetherAnotherProgramHasWrittenToIt) {
    save(journalOf(twoRows()));
    std::optional<FileState> known;
    openSurvey(path(), &known);
    EXPECT_EQ(known, stateOfInputFile(path()));
    EXPECT_EQ(outputOf("sqlite3 " + path() + " 'CREATE TABLE layer_styles (x)'"), "");
    openSurvey(path(), &known);
    EXPECT_EQ(known, std::nullopt);
}

TEST_F(SurveyFile, OfSitesThatAreNoNumbersIsTold) {
    const double none = std::nan(""), endless = std::numeric_limits<double>::infinity();
    for (const int column : {kX, kY, kEM1, kEM2, kRow})
        for (const double value : {none, endless}) {
            Survey survey = twoRows();
            survey.SiteData(column, 2) = value;
            Journal journal = journalOf(survey);
            save(journal);
            EXPECT_EQ(whyNotOpened(), refusal("a site has a value that is no number")) << column;
            if (column == kRow) continue;
            deleteRow(journal, 2);
            save(journal);
            EXPECT_EQ(whyNotOpened(), refusal("a site has a value that is no number")) << "taken out";
        }
    Survey survey = twoRows();
    survey.SiteID[1] = none;
    save(journalOf(survey));
    EXPECT_EQ(whyNotOpened(), refusal("a site has a value that is no number"));
}

TEST_F(SurveyFile, OfAnImpossibleNumberOfImportsIsTold) {
    for (const int imports : {-1, 0, std::numeric_limits<int>::max()}) {
        Journal journal = journalOf(twoRows());
        Journal::forEachField(journal, [imports](auto&, auto&, auto&, auto&, auto&, auto&, auto&, auto&,
                                                 auto&, int& count, auto&) { count = imports; });
        save(journal);
        EXPECT_EQ(whyNotOpened(), refusal("the number of imports is none")) << imports;
    }
    SavedRecords records;
    records.imports.resize(2);
    save(journalOf(twoRows()), records);
    EXPECT_EQ(whyNotOpened(), refusal("the number of imports is none")) << "more are known than there were";
}

TEST_F(SurveyFileInAGis, HasTheParametersOfItsImport) {
    SavedRecords records;
    records.imports.resize(1);
    records.imports[0].what.parameters = {{"smallest accepted reading (mS/m)", "-5"}};
    Survey survey = twoRows();
    survey.EMCutoff = 7;
    save(journalOf(survey), records);
    EXPECT_EQ(ask("SELECT value FROM survey WHERE name = 'import: smallest accepted reading (mS/m)'"),
              "-5\n");
    EXPECT_EQ(ask("SELECT count(*) FROM survey WHERE value = '7'"), "0\n") << "which no import had";
}

TEST_F(SurveyFile, OfASensorFileFromAnyTimeIsRead) {
    const Journal journal = journalOf(twoRows());
    for (const std::int64_t second :
         {7'258'118'400, 900'000'000'000, -900'000'000'000}) {  // 2200, and beyond
        writeFile(folder / "field.dat", "");
        const std::array<timespec, 2> times{{{second, 999'999'999}, {second, 999'999'999}}};
        ::utimensat(AT_FDCWD, (folder / "field.dat").c_str(), times.data(), 0);
        SavedRecords records;
        records.imports.resize(1);
        records.imports[0].what.file.state = stateOfInputFile(folder / "field.dat");
        save(journal, records);
        EXPECT_EQ(whyNotOpened(), "no error") << second;
    }
}

TEST_F(SurveyFile, WithRowsWithoutEndIsTold) {
    save(journalOf(twoRows()));
    const int file = ::open(path().c_str(), O_RDONLY | O_CLOEXEC);
    Database database(file, path(), Database::Use::kRead);
    const std::string why = descriptionOf([&] {
        database.number(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT count(*) FROM n");
    });
    EXPECT_EQ(why, path() + " cannot be opened: it is damaged");
    ::close(file);
}

TEST_F(SurveyFile, ThatIsNotThereIsTold) {
    EXPECT_EQ(whyNotOpened(), path() + " cannot be opened: No such file or directory");
    EXPECT_EQ(descriptionOf([this] { saveSurvey(folder / "none/a.gpkg", Journal(1), {}); }),
              folder / "none/a.gpkg cannot be written: No such file or directory");
}

// All or nothing
// -----------------------------------------------------------------------------------------------

// A large survey is not held twice.
TEST_F(SurveyFile, IsWrittenPieceByPiece) {
    constexpr SiteIndex kSites = 200'000;
    const Journal journal = journalOf(surveyOfReadings(
        kSites, [](SiteIndex i) { return static_cast<double>(i); }, [](SiteIndex) { return 0.5; }));
    std::size_t largest = 0;
    {
        const WatchedFileCalls watched;
        save(journal);
        for (const FileCall& call : watched.calls())
            largest = std::max(largest, call.bytes.size());
    }
    EXPECT_LE(largest, std::size_t{1} << 16);
    EXPECT_EQ(journalDifferences(openSurvey(path()).journal, journal), "");
}

}  // namespace tessel
