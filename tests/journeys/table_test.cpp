// SPDX-License-Identifier: GPL-3.0-or-later
// A table through the real windows: out by the menu, and in again.
#include "desktop/FileDialogs.h"
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

class TableJourney : public testing::Test, protected RunningProgram {
  protected:
    void importRows() {
        writeFile(folder / "field.csv", "0.1,0,20,1\n0.1,1.3,21,1\n5,2,22,2\n5,0.7,24,2\n");
        expectGenericReport(4, 0);
        importGeneric(folder / "field.csv", 0);
    }
    std::string table() const { return folder / "table.csv"; }
};

}  // namespace

TEST_F(TableJourney, TheTableIsSavedSaidAndReadAgain) {
    importRows();
    saveTable(table());
    EXPECT_EQ(main->lblMessage->text(), u"Table saved to table.csv"_s);
    const std::vector<MadeSite> saved = sitesIn(theSurvey());
    expectGenericReport(4, 1);
    importGeneric(table(), 0);
    EXPECT_EQ(sitesIn(theSurvey()), saved);
    EXPECT_EQ(theSurvey().NumRows, 2);
}

TEST_F(TableJourney, ANameBesideTheSensorFileIsProposed) {
    importRows();
    QString proposed;
    setFileResponder([&](const FileQuestion& question) { return proposed = question.proposed, QString(); });
    chooseItem(*main, u"mnuSaveTable"_s);
    clickOn(shownWindow(u"frmSaveTable"_s), u"cmdSave"_s);
    EXPECT_EQ(proposed, fromPath(folder / "field-2.csv"));
}

TEST_F(TableJourney, ATableIsNoExportOfATransectFileButStandsInTheRecord) {
    importRows();
    saveTable(table());
    EXPECT_FALSE(theSession().DataSaved);
    chooseFile(folder / "work.yaml");
    chooseItem(*main, u"mnuRecord"_s);
    const std::string record = readFile(folder / "work.yaml");
    EXPECT_NE(record.find("path: \"" + table() + "\""), std::string::npos) << record;
    EXPECT_NE(record.find("\"X (m), Y (m), EM1 (mS/m), Row\""), std::string::npos) << record;
}

TEST_F(TableJourney, RemovedSitesFollowWhatIsTakenBack) {
    importRows();
    deleteRow(1);
    saveTable(table(), {u"chkRemoved"_s});
    EXPECT_TRUE(readFile(table()).ends_with("0.1,1.3,21,1,\"Deleted row 1 with its 2 sites\"\r\n"));
    chooseItem(*main, u"mnuUndo"_s);
    chooseItem(*main, u"mnuSaveTable"_s);
    EXPECT_FALSE(controlAs<QCheckBox>(shownWindow(u"frmSaveTable"_s), u"chkRemoved"_s).isEnabled());
}

}  // namespace tessel
