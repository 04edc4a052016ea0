// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/processing_record.h"

#include "support/reads.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using namespace std::chrono_literals;

// What a YAML reader that is not ours gets, as JSON with its keys in order.
std::string readBack(const std::string& text) {
    const TemporaryFolder folder;
    writeFile(folder / "record.yaml", text);
    const std::string command =
        "python3 " TESSEL_SOURCE_DIR "/tests/export/read_yaml.py " + (folder / "record.yaml") + " 2>&1";
    const std::unique_ptr<FILE, int (*)(FILE*)> reader(::popen(command.c_str(), "r"), ::pclose);
    std::string json;
    for (int c = 0; (c = std::fgetc(reader.get())) != EOF;)
        json += static_cast<char>(c);
    return json;
}

// Five and three quarter hours ahead of universal time.
class ProcessingRecords : public testing::Test {
  protected:
    ProcessingRecords() { setZone("XXX-5:45"); }
    ~ProcessingRecords() override { setZone(nullptr); }

    static void setZone(const char* zone) {
        if (zone != nullptr)
            ::setenv("TZ", zone, 1);
        else
            ::unsetenv("TZ");
        ::tzset();
    }

    static RecordTime at(std::int64_t seconds) {
        return RecordTime(std::chrono::seconds(1'700'000'000 + seconds) + 999ms);
    }

    static RecordedImport anImport() {
        RecordedImport import;
        import.file = {"/data/field.dat", {1234, at(-60)}, std::string(64, 'a'), ""};
        import.time = at(0);
        import.kind = "fixed columns";
        import.parameters = {{"cut-off (mS/m)", "-10"}, {"measure", "true distance"}, { "negated", "false" }};
        import.fields = {{"X", 10, 21}, {"Y", 23, 34}, { "EM1", 36, 43 }};
        import.linesRead = 100;
        import.rejected = {{ "non-numeric X-coord data", 3, 17 }};
        import.sites = 97;
        import.rows = 4;
        return import;
    }

    static RecordedAct aDeletion() {
        RecordedAct act;
        act.time = at(1);
        act.kind = "delete-row";
        act.words = "Deleted row 4 with its 3 sites";
        act.parameters = {{"row", "4"}};
        act.removed = RecordedRemoval{3, {{5, 6}, {9, 9}}, {{1005, 1006}, {12.5, 12.5}}};
        act.sites = 94;
        act.rows = 3;
        return act;
    }

    static ProcessingRecord aRecord() {
        ProcessingRecord record;
        record.time = at(3);
        record.import = anImport();
        RecordedAct adjustment;
        adjustment.time = at(2);
        adjustment.kind = "adjust";
        adjustment.words = "Added 2.5 mS/m to EM1";
        adjustment.sites = 94;
        adjustment.rows = 3;
        record.acts = {aDeletion(), adjustment};
        record.sites = 94;
        record.rows = 3;
        record.exports = {{{"/data/out.txt", {999, at(3)}, std::string(64, 'b'), ""},
                           at(3),
                           "X_coord  Y_coord  EM1",
                           94,
                           5,
                           true}};
        return record;
    }
};

using Lines = std::vector<std::uint32_t>;
using Identifying = FolderTest;

}  // namespace

TEST_F(ProcessingRecords, CanBeReadByAPerson) {
    EXPECT_EQ(recordText(aRecord()), readFile(TESSEL_SOURCE_DIR "/tests/export/whole_record.yaml"));
}

TEST_F(ProcessingRecords, AreReadByAProgramAsTheyAreMeant) {
    EXPECT_EQ(readBack(recordText(aRecord())) + '\n',
              readFile(TESSEL_SOURCE_DIR "/tests/export/whole_record.json"));
}

TEST_F(ProcessingRecords, OfASurveyThatComesFromNoFileAndHasNoActsAreWholeToo) {
    ProcessingRecord record;
    record.time = at(0);
    const std::string expected =
        R"({"acts": [], "exports": [], "program": {"name": "VARN-Tessel", "version": "2.36"}, )"
        R"("record_format": 1, "survey": {"rows": 0, "sites": 0}, "written": "2023-11-15T03:58:20+05:45"})";
    EXPECT_EQ(readBack(recordText(record)), expected);
}

// Names of files and words as odd as they come.
TEST_F(ProcessingRecords, HoldAnyTextOnOneLine) {
    ProcessingRecord record = aRecord();
    record.import->file.path = "/surveys/f\xFCr 'a: \"b\" # c\n{x} \\ \xF0\x9F\x8C\xB1";
    record.import->parameters = {{"a: b", "- x"}, {"no", "null"}, {"size", "1e20"}, {"yes", "True"}};
    record.acts[0].words = "\x1b[31m...\t~ & * ! | > % @ `";
    const std::string json = readBack(recordText(record));
    const char* const expected[] = {
        R"("path": "/surveys/f\\xFCr 'a: \"b\" # c\n{x} \\x5C \ud83c\udf31")",
        R"("parameters": {"a: b": "- x", "no": "null", "size": 1e+20, "yes": "True"})",
        R"("what": "\u001b[31m...\t~ & * ! | > % @ `")"};
    for (const char* const text : expected)
        EXPECT_NE(json.find(text), std::string::npos) << text << "\n" << json;
}

TEST_F(ProcessingRecords, SayWhatIsNotKnown) {
    ProcessingRecord record = aRecord();
    record.forgottenActs = 7;
    record.import->file.sha256.clear();
    record.import->file.note = "it has gone";
    record.import->fields = {{"X", 1, 0}};
    record.acts[0].removed = RecordedRemoval{2, {{8, 9}}, {}};
    const std::string text = recordText(record);
    const std::string json = readBack(text);
    for (const char* const known :
         {R"("forgotten_acts": 7)", R"("note": "it has gone", "path": "/data/field.dat", "sha256": null)",
          R"("layout": [{"field": "X", "place": 1}])", R"("removed": {"lines": [[8, 9]], "sites": 2})"})
        EXPECT_NE(json.find(known), std::string::npos) << known << "\n" << json;
}

TEST_F(ProcessingRecords, OfManyRunsAreReadToTheLast) {
    ProcessingRecord record = aRecord();
    record.acts[0].removed->lines.assign(10'000, {123'456, 123'457});
    const std::string json = readBack(recordText(record));
    std::size_t pairs = 0;
    for (std::size_t at = 0; (at = json.find("[123456, 123457]", at)) != std::string::npos; ++at)
        ++pairs;
    EXPECT_EQ(pairs, 10'000U);
}

TEST(Runs, GoOnAsLongAsNumbersGoUpByOne) {
    EXPECT_TRUE(runsOf(Lines()).empty());
    EXPECT_EQ(runsOf(Lines{4, 5, 6, 8, 7, 7, 9, 10}),
              (std::vector<NumberRun>{{4, 6}, {8, 8}, {7, 7}, {7, 7}, {9, 10}}));
    EXPECT_EQ(runsOf(std::vector<double>{-1, 0, 1, 1.5, 2.5, 1e300, 1e300}),
              (std::vector<NumberRun>{{-1, 1}, {1.5, 1.5}, {2.5, 2.5}, {1e300, 1e300}, {1e300, 1e300}}));
}

TEST_F(Identifying, GivesTheDigestOfAFileThatIsAsItWas) {
    writeFile(path, "abc");
    RecordedFile file{path, stateOfInputFile(path), "", "an old note"};
    identify(file);
    EXPECT_EQ(file.sha256, "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(file.note, "");
}

TEST_F(Identifying, KeepsADigestThatIsKnownSinceTheFileWasWritten) {
    RecordedFile file{"/nowhere", {}, "abc", ""};
    identify(file);
    EXPECT_EQ(file.sha256, "abc");
    EXPECT_EQ(file.note, "");
}

TEST_F(Identifying, SaysWhyWhenAFileHasBeenChangedOrHasGone) {
    writeFile(path, "abc");
    const RecordedFile known{path, stateOfInputFile(path), "", ""};
    const auto noteOf = [&] {
        RecordedFile file = known;
        identify(file);
        EXPECT_EQ(file.sha256, "");
        return file.note;
    };
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + 1s);
    EXPECT_EQ(noteOf(), path + " has been changed since");
    writeFile(path, "abcd");
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
    EXPECT_EQ(noteOf(), path + " has been changed since");
    std::filesystem::remove(path);
    EXPECT_EQ(noteOf(), path + " cannot be opened: No such file or directory");
}

TEST_F(Identifying, NoticesAFileThatIsChangedWhileItIsRead) {
    writeFile(path, "abc");
    RecordedFile file{path, stateOfInputFile(path), "", ""};
    const BeforeReading first(1, [&](int) { std::filesystem::last_write_time(path, {}); });
    identify(file);
    EXPECT_TRUE(first.happened());
    EXPECT_EQ(file.note, path + " has been changed since");
}

}  // namespace tessel
