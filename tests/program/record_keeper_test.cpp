// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/record_keeper.h"

#include "base/sha256.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

// Four rows of two sites; site IDs 1001 to 1008 on lines 1, 3, 5, ...
Survey fourRows() {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 8; ++i)
        sites.push_back({double(i), 0, 30, 40, double(1 + i / 2)});
    return madeSurvey(sites);
}

class RecordOfASurvey : public testing::Test {
  protected:
    explicit RecordOfASurvey(std::size_t mostBytes = std::size_t{1} << 30) : journal(mostBytes) {
        writeFile(file(), "abc");
    }

    std::string file() const { return folder / "field.dat"; }

    ImportSummary summary() const {
        ImportSummary summary;
        summary.path = file();
        summary.file = stateOfInputFile(file());
        summary.cutoff = -2.5;
        summary.fixedColumns = true;
        summary.fields = {{"X", 1, 8}, {"Y", 10, 18}};
        summary.linesRead = 20;
        summary.rejected = {{"  -> non-numeric X-coord data", 5, 2}};
        return summary;
    }
    void import() {
        importSurvey(journal, fourRows());
        keeper.noteImport(journal, summary());
    }
    void exportSurvey(const std::string& name) {
        writeFile(folder / name, "exported");
        RecordedExport written = beginExport(journal.survey(), folder / name, {});
        noteState(written.file);
        keeper.noteExport(journal, written);
    }
    std::vector<std::string> acts() {
        std::vector<std::string> words;
        for (const RecordedAct& act : keeper.record(journal).acts)
            words.push_back(act.words);
        return words;
    }

    const TemporaryFolder folder;
    Journal journal;
    RecordKeeper keeper;
};

}  // namespace

TEST_F(RecordOfASurvey, TellsHowItWasImported) {
    import();
    const ProcessingRecord record = keeper.record(journal);
    ASSERT_TRUE(record.import);
    const RecordedImport& import = *record.import;
    EXPECT_EQ(import.file.path, file());
    EXPECT_EQ(import.file.sha256, sha256OfFile(file()));
    EXPECT_EQ(import.kind, "fixed columns");
    EXPECT_EQ(import.parameters, (RecordedValues{{"smallest accepted reading (mS/m)", "-2.5"},
                                                 {"readings negated", "false"},
                                                 {"readings divided by 10", "false"},
                                                 {"lines passed over up to a length of (bytes)", "1"},
                                                 {"distances", "true distance"},
                                                 {"distance above which a row begins (m)", "20"}}));
    ASSERT_EQ(import.fields.size(), 2U);
    EXPECT_EQ(import.fields[1].name, "Y");
    EXPECT_EQ(import.fields[1].first, 10);
    EXPECT_EQ(import.fields[1].last, 18);
    EXPECT_EQ(import.linesRead, 20);
    ASSERT_EQ(import.rejected.size(), 1U);
    EXPECT_EQ(import.rejected[0].reason, "non-numeric X-coord data");
    EXPECT_EQ(import.rejected[0].lines, 5);
    EXPECT_EQ(import.rejected[0].firstLine, 2);
    EXPECT_EQ(import.sites, 8);
    EXPECT_EQ(import.rows, 4);
    EXPECT_EQ(import.time, journal.act(0).time);
    EXPECT_TRUE(record.acts.empty());
    EXPECT_EQ(record.sites, 8);
    EXPECT_EQ(record.rows, 4);
}

TEST_F(RecordOfASurvey, TellsPositionsThatWereInMetresFromThoseThatBecameThem) {
    const auto told = [this](const std::string& column) {
        Survey survey = fourRows();
        survey.PositionsCRS = 32630;
        ImportSummary table = summary();
        table.isTable = true;
        table.fixedColumns = false;
        table.fields = {{column, 1, 0}};
        importSurvey(journal, survey);
        keeper.noteImport(journal, table);
        return keeper.record(journal).import->parameters.at(2);
    };
    EXPECT_EQ(told("longitude"), (RecordedValues::value_type{"degrees converted to", "EPSG:32630"}));
    EXPECT_EQ(told("X"), (RecordedValues::value_type{"positions in", "EPSG:32630"}));
}

TEST_F(RecordOfASurvey, TellsOfADelimitedFileWhatWasAskedForIt) {
    importSurvey(journal, fourRows());
    ImportSummary delimited = summary();
    delimited.fixedColumns = false;
    delimited.decimalCommasRead = true;
    keeper.noteImport(journal, delimited);
    const RecordedImport import = *keeper.record(journal).import;
    EXPECT_EQ(import.kind, "separated values");
    EXPECT_EQ(import.parameters, (RecordedValues{{"smallest accepted reading (mS/m)", "-2.5"},
                                                 {"semicolons and decimal commas", "true"}}));
}

TEST_F(RecordOfASurvey, ListsTheActsInForceWithTheSitesTheyTookOut) {
    import();
    deleteRow(journal, 3);
    deleteRow(journal, 1);
    const ProcessingRecord record = keeper.record(journal);
    ASSERT_EQ(record.acts.size(), 2U);
    const RecordedAct& first = record.acts[0];
    EXPECT_EQ(first.kind, "delete-row");
    EXPECT_EQ(first.words, journal.act(1).words);
    EXPECT_EQ(first.parameters, journal.act(1).parameters);
    EXPECT_EQ(first.sites, 6);
    EXPECT_EQ(first.rows, 3);
    ASSERT_TRUE(first.removed);
    EXPECT_EQ(first.removed->sites, 2);
    EXPECT_EQ(first.removed->lines, (std::vector<NumberRun>{{9, 9}, {11, 11}}));
    EXPECT_EQ(first.removed->siteNumbers, (std::vector<NumberRun>{{1005, 1006}}));
    EXPECT_EQ(record.acts[1].removed->siteNumbers, (std::vector<NumberRun>{{1001, 1002}}));
    EXPECT_EQ(record.sites, 4);
    EXPECT_EQ(record.rows, 2);
    EXPECT_EQ(record.forgottenActs, 0);
}

TEST_F(RecordOfASurvey, ForgetsWhatHasBeenTakenBackAndKnowsItAgain) {
    import();
    deleteRow(journal, 3);
    journal.goTo(1);
    EXPECT_TRUE(acts().empty());
    journal.goTo(2);
    EXPECT_EQ(acts().size(), 1U);
    EXPECT_EQ(keeper.record(journal).acts[0].removed->siteNumbers, (std::vector<NumberRun>{{1005, 1006}}));
}

TEST_F(RecordOfASurvey, BeginsWithTheLastImportThatIsInForce) {
    import();
    deleteRow(journal, 3);
    exportSurvey("first.txt");
    import();
    deleteRow(journal, 1);
    deleteRow(journal, 1);
    exportSurvey("second.txt");
    EXPECT_EQ(acts().size(), 2U);
    ASSERT_EQ(keeper.record(journal).exports.size(), 1U);
    EXPECT_EQ(keeper.record(journal).exports[0].file.path, folder / "second.txt");
    EXPECT_EQ(keeper.importOf(journal.survey())->path, file());
    journal.goTo(0);
    EXPECT_EQ(keeper.importOf(journal.survey()), nullptr);
    journal.goTo(2);
    EXPECT_EQ(acts(), std::vector<std::string>{journal.act(1).words});
    EXPECT_EQ(keeper.record(journal).import->time, journal.act(0).time);
    ASSERT_EQ(keeper.record(journal).exports.size(), 1U);
    EXPECT_EQ(keeper.record(journal).exports[0].file.path, folder / "first.txt");
}

TEST_F(RecordOfASurvey, HasNoImportBeforeTheFirst) {
    EXPECT_FALSE(keeper.record(journal).import);
    import();
    journal.goTo(0);
    EXPECT_FALSE(keeper.record(journal).import);
    EXPECT_EQ(keeper.record(journal).sites, 0);
}

TEST_F(RecordOfASurvey, TellsWhichExportHoldsTheSurveyAsItIs) {
    import();
    exportSurvey("all.txt");
    deleteRow(journal, 2);
    exportSurvey("some.txt");
    const auto holding = [this] {
        std::string marks;
        for (const RecordedExport& each : keeper.record(journal).exports)
            marks += each.isOfThisState ? 'x' : '.';
        return marks;
    };
    EXPECT_EQ(holding(), ".x");
    journal.goTo(1);
    EXPECT_EQ(holding(), "x.");
    deleteRow(journal, 1);
    EXPECT_EQ(holding(), "..");
    EXPECT_EQ(keeper.record(journal).exports[1].file.sha256, sha256OfFile(folder / "some.txt"));
}

TEST_F(RecordOfASurvey, KnowsAFileThatHasGoneSinceItWasIdentified) {
    import();
    exportSurvey("out.txt");
    const std::string digest = sha256OfFile(file());
    keeper.identifyFiles(2);
    std::filesystem::remove(folder / "out.txt");
    EXPECT_EQ(keeper.record(journal).exports[0].file.sha256, "");
    EXPECT_EQ(keeper.record(journal).exports[0].file.note,
              (folder / "out.txt") + " cannot be opened: No such file or directory");
    import();
    keeper.identifyFiles(3);
    std::filesystem::remove(file());
    EXPECT_EQ(keeper.record(journal).import->file.sha256, digest);
}

namespace {

// A journal that remembers little.
class RecordOfALongHistory : public RecordOfASurvey {
  protected:
    RecordOfALongHistory() : RecordOfASurvey(1) {}
};

}  // namespace

TEST_F(RecordOfALongHistory, TellsHowManyActsAreForgotten) {
    import();
    deleteRow(journal, 4);
    EXPECT_EQ(keeper.record(journal).forgottenActs, std::int64_t(journal.forgotten()) - 1);
    deleteRow(journal, 1);
    deleteRow(journal, 1);
    const ProcessingRecord record = keeper.record(journal);
    EXPECT_GE(journal.forgotten(), 3U);
    EXPECT_EQ(record.forgottenActs + std::int64_t(record.acts.size()), 3);
    EXPECT_EQ(record.import->sites, 8);
    EXPECT_EQ(record.sites, 2);
}

}  // namespace tessel
