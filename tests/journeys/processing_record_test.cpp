// SPDX-License-Identifier: GPL-3.0-or-later
// The processing record through the real windows: from import to the file, alone and beside an export.
#include "base/sha256.h"
#include "desktop/FileDialogs.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

class ProcessingRecordJourney : public testing::Test, protected RunningProgram {
  protected:
    // Three rows of two sites on lines 2 to 9, two lines of which are no sites.
    void importThreeRows() {
        writeFile(field(),
                  "site,x,y,ec,row\n11,0,0,20,1\n12,0,1,21,1\n13,0,2,x,1\n21,5,2,22,2\n22,5,1,23,2\n"
                  "23,5,0,-4,2\n31,9,0,24,3\n32,9,1,25,3\n");
        expectGenericReport(6, 3);
        importGeneric(field(), 2);
    }
    std::string record() {
        question_ = {};
        setFileResponder([this](const FileQuestion& question) {
            question_ = question;
            return fromPath(folder / "work.yaml");
        });
        chooseItem(*main, u"mnuRecord"_s);
        return readFile(folder / "work.yaml");
    }
    static bool holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }
    std::string field() const { return folder / "field.csv"; }

    FileQuestion question_;
};

}  // namespace

TEST_F(ProcessingRecordJourney, IsSavedFromTheMenuAndSaysSoInTheMainWindow) {
    EXPECT_FALSE(main->mnuRecord->isEnabled());
    importThreeRows();
    deleteRow(2);
    const std::string text = record();
    EXPECT_EQ(question_.caption, u"Save the processing record"_s);
    EXPECT_TRUE(question_.toSave);
    EXPECT_EQ(question_.suffix, u"yaml"_s);
    EXPECT_EQ(question_.proposed, fromPath(folder / "field.record.yaml"));
    EXPECT_EQ(question_.filter, u"YAML Files (*.yaml)|*.yaml|All Files (*.*)|*"_s);
    EXPECT_TRUE(holds(text, "  path: \"" + field() + "\"\n")) << text;
    EXPECT_TRUE(holds(text, "  sha256: \"" + sha256OfFile(field()) + "\"\n")) << text;
    EXPECT_TRUE(holds(text, "  lines_read: 9\n")) << text;
    EXPECT_TRUE(holds(text,
                      "    - reason: \"1st EM reading below cut-off\"\n      lines: 1\n"
                      "      first_line: 7\n"))
        << text;
    EXPECT_TRUE(holds(text, "    kind: \"delete-row\"\n")) << text;
    EXPECT_TRUE(holds(text,
                      "    removed:\n      sites: 2\n      lines: [[5, 6]]\n"
                      "      site_numbers: [[21, 22]]\n    sites: 4\n    rows: 2\n"))
        << text;
    EXPECT_TRUE(holds(text, "exports: []\n")) << text;
    EXPECT_EQ(main->lblMessage->text(), u"Processing record saved to work.yaml"_s);
}

TEST_F(ProcessingRecordJourney, LiesBesideAnExportAndListsTheExportsBefore) {
    importThreeRows();
    exportTo(folder / "all.txt");
    EXPECT_FALSE(std::filesystem::exists(folder / "all.txt.record.yaml"));
    deleteRow(1);
    exportTo(folder / "some.txt", u"7"_s, [](QWidget& window) { clickOn(window, u"chkRecord"_s); });
    const std::string text = readFile(folder / "some.txt.record.yaml");
    for (const char* const name : {"all.txt", "some.txt"})
        EXPECT_TRUE(holds(text, "  - path: \"" + (folder / name) + "\"\n    size: " +
                                    std::to_string(std::filesystem::file_size(folder / name)) +
                                    "\n    sha256: \"" + sha256OfFile(folder / name) + "\"\n"))
            << text;
    EXPECT_TRUE(holds(text, "    sites: 6\n    first_row: 1\n    is_survey_as_recorded: false\n")) << text;
    EXPECT_TRUE(holds(text, "    sites: 4\n    first_row: 7\n    is_survey_as_recorded: true\n")) << text;
    EXPECT_TRUE(holds(text, "site_numbers: [[11, 12]]\n")) << text;
}

TEST_F(ProcessingRecordJourney, KnowsTheSensorFileThoughItHasGoneAfterTheImport) {
    importThreeRows();
    const std::string digest = sha256OfFile(field());
    QCoreApplication::processEvents();
    std::filesystem::remove(field());
    EXPECT_TRUE(holds(record(), "  sha256: \"" + digest + "\"\n"));
}

TEST_F(ProcessingRecordJourney, ThatCannotBeWrittenIsReportedAndCancellingWritesNothing) {
    importThreeRows();
    chooseFile("");
    chooseItem(*main, u"mnuRecord"_s);
    EXPECT_EQ(main->lblMessage->text(), QString());
    chooseFile(folder / "gone/work.yaml");
    boxes.tell(fromPath(folder / "gone/work.yaml") + u" cannot be written: No such file or directory"_s);
    chooseItem(*main, u"mnuRecord"_s);
    EXPECT_EQ(boxes.pending(), 0);
    EXPECT_EQ(main->lblMessage->text(), QString());
}

}  // namespace tessel
