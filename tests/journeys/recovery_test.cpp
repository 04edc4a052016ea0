// SPDX-License-Identifier: GPL-3.0-or-later
// The program is ended in the middle of the work, and started again.
#include "desktop/FileDialogs.h"
#include "journal/journal.h"
#include "plots/site_masking.h"
#include "rows/row_acts.h"
#include "support/RunningProgram.h"
#include "support/file_size_limit.h"
#include "support/survey_bits.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

class EndedProgram : public testing::Test, protected RunningProgram {
  protected:
    EndedProgram() {
        writeFile(folder / "rows.csv", "0,0,10\n0,5,11\n0,9,12\n10,9,13\n10,5,14\n10,0,15\n");
        start();
    }
    void start() {
        main.reset();
        startAfresh();
        theSession() = Session{};
        theSession().AppDir = theSession().DataDir = folder.path();
        main = createProgram(folder / "state");
        main->show();
    }
    // Nothing that comes with an end in order is done.
    void endAndStartAgain() { start(); }

    void importRows() {
        expectGenericReport(6, 0);
        importGeneric(folder / "rows.csv", 4);
        inRowDialog(u"Option3"_s, {u"Text1"_s}, {u"6"_s});
        waitUntilClosed(u"frmDataEdit"_s);
    }
    void deleteThreeOnTheMap() {
        SiteMaskArray mask = {1, 1, 1, 0, 0, 0};
        theJournal().perform(deletionOfMasked(3),
                             [&](Survey& survey) { return deleteMaskedSites(survey, mask); });
    }
    std::ptrdiff_t filesKept() const {
        if (!fs::exists(folder / "state")) return 0;
        return std::distance(fs::directory_iterator(folder / "state"), fs::directory_iterator());
    }
    bool isOffered() const { return main->recoveryOffer->isVisible(); }
    void save() {
        setFileResponder([this](const FileQuestion&) { return fromPath(folder / "field.gpkg"); });
        chooseItem(*main, u"mnuSaveSurvey"_s);
    }
};

}  // namespace

TEST_F(EndedProgram, OffersItsSurveyAndBringsItBackWithItsHistory) {
    EXPECT_FALSE(isOffered());
    importRows();
    chooseItem(*main, u"mnuUndo"_s);
    chooseItem(*main, u"mnuRedo"_s);
    const Survey whole = theSurvey();
    const QString undo = main->mnuUndo->text();
    endAndStartAgain();
    EXPECT_EQ(theSurvey().NumSites, 0);
    ASSERT_TRUE(isOffered());
    EXPECT_EQ(main->lblRecovery->text(), u"A survey was open when the program ended:"_s);
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(differences(theSurvey(), whole), "");
    EXPECT_EQ(main->mnuUndo->text(), undo);
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved"_s);
    EXPECT_TRUE(main->mnuGrid->isEnabled());
    EXPECT_EQ(theSession().InputFileName, folder / "rows.csv");
    EXPECT_EQ(filesKept(), 1) << "it goes on being kept";
    chooseItem(*main, u"mnuUndo"_s);
    endAndStartAgain();
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_TRUE(main->mnuRedo->isEnabled());
}

TEST_F(EndedProgram, KnowsTheTablesThatWereSaved) {
    importRows();
    setFileResponder([this](const FileQuestion&) { return fromPath(folder / "table.csv"); });
    chooseItem(*main, u"mnuSaveTable"_s);
    clickOn(shownWindow(u"frmSaveTable"_s), u"cmdSave"_s);
    waitUntilClosed(u"frmSaveTable"_s);
    endAndStartAgain();
    clickOn(*main, u"cmdReopen"_s);
    setFileResponder([this](const FileQuestion&) { return fromPath(folder / "work.yaml"); });
    chooseItem(*main, u"mnuRecord"_s);
    EXPECT_NE(readFile(folder / "work.yaml").find("path: \"" + (folder / "table.csv") + "\""),
              std::string::npos);
}

TEST_F(EndedProgram, ForgetsWhatTheUserDiscards) {
    importRows();
    endAndStartAgain();
    clickOn(*main, u"cmdDiscard"_s);
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(filesKept(), 0);
    EXPECT_EQ(theSurvey().NumSites, 0);
}

TEST_F(EndedProgram, OffersItAgainAsLongAsTheUserDecidesNothing) {
    importRows();
    endAndStartAgain();
    endAndStartAgain();
    EXPECT_TRUE(isOffered());
    importRows();
    EXPECT_TRUE(isOffered()) << "beside what has been begun";
    boxes.ask(false,
              u"The survey has changes that have not been saved.\n"
              u"Are you sure that you wish to open another one?"_s);
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_TRUE(isOffered());
}

TEST_F(EndedProgram, OffersOneAfterTheOther) {
    importRows();
    endAndStartAgain();
    importRows();
    endAndStartAgain();
    clickOn(*main, u"cmdDiscard"_s);
    EXPECT_TRUE(isOffered());
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(theSurvey().NumSites, 6);
}

TEST_F(EndedProgram, OffersNothingWhenItWasLeftInOrder) {
    importRows();
    EXPECT_EQ(filesKept(), 1);
    boxes.ask(true,
              u"Attention: you have not exported an output VARN data file yet!\n"
              u"Are you sure that you wish to exit the program?"_s);
    EXPECT_TRUE(main->close());
    EXPECT_EQ(filesKept(), 0);
    endAndStartAgain();
    EXPECT_FALSE(isOffered());
}

TEST_F(EndedProgram, OffersNothingThatWasSavedUnlessItWasChangedSince) {
    importRows();
    save();
    EXPECT_EQ(filesKept(), 0);
    endAndStartAgain();
    EXPECT_FALSE(isOffered());
    importRows();
    save();
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(filesKept(), 1);
    endAndStartAgain();
    EXPECT_TRUE(isOffered());
}

TEST_F(EndedProgram, InTheMiddleOfTheMapBringsBackASurveyThatCanBeUsed) {
    importRows();
    deleteThreeOnTheMap();
    theJournal().cannotRest();
    endAndStartAgain();
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_EQ(theSurvey().NumSites, 3);
    EXPECT_EQ(theSurvey().NumRows, 1);
    EXPECT_TRUE(theJournal().canRestAt(theJournal().position()));
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo: "_s + u"delete 3 sites on the map"_s);
}

TEST_F(EndedProgram, SaysInItsQuietLineWhenTheWorkCannotBeKept) {
    expectGenericReport(6, 0);
    {
        const FileSizeLimit limit(1000);
        importGeneric(folder / "rows.csv", 4);
    }
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved \u2013 not kept for a crash"_s);
    EXPECT_TRUE(main->lblSurveyFile->toolTip().contains(u"cannot be written: File too large"_s));
    inRowDialog(u"Option3"_s, {u"Text1"_s}, {u"6"_s});
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved"_s);
}

TEST_F(EndedProgram, NoLongerSaysThatWorkCannotBeKeptOnceItIsSaved) {
    expectGenericReport(6, 0);
    {
        const FileSizeLimit limit(1000);
        importGeneric(folder / "rows.csv", 4);
    }
    setFileResponder([this](const FileQuestion&) { return fromPath(folder / "field.gpkg"); });
    chooseItem(*main, u"mnuSaveSurvey"_s);
    EXPECT_EQ(main->lblSurveyFile->text(), u"field.gpkg"_s);
}

TEST_F(EndedProgram, SaysAtOnceWhenWhatFollowsCannotBeKept) {
    importRows();
    {
        const FileSizeLimit limit(100);
        theJournal().recount([](const Survey&, SurveyCounts&) {});
    }
    QApplication::processEvents();
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved \u2013 not kept for a crash"_s);
}

TEST_F(EndedProgram, OffersAgainWhatCouldNotBeKeptOnceReopenedUntilItIsSaved) {
    importRows();
    endAndStartAgain();
    {
        const FileSizeLimit limit(100);
        clickOn(*main, u"cmdReopen"_s);
    }
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(filesKept(), 1) << "the only copy";
    save();
    endAndStartAgain();
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(filesKept(), 0);
}

TEST_F(EndedProgram, LetsGoOfWhatWasReopenedOnceItIsKeptAnew) {
    importRows();
    endAndStartAgain();
    {
        const FileSizeLimit limit(100);
        clickOn(*main, u"cmdReopen"_s);
    }
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(filesKept(), 1) << "the new one";
    endAndStartAgain();
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_TRUE(main->mnuRedo->isEnabled());
    EXPECT_FALSE(isOffered());
}

TEST_F(EndedProgram, ShowsNoErrorLogOfAnotherImport) {
    importRows();
    EXPECT_TRUE(main->mnuEL->isEnabled());
    save();
    endAndStartAgain();
    setFileResponder([this](const FileQuestion&) { return fromPath(folder / "field.gpkg"); });
    chooseItem(*main, u"mnuOpenSurvey"_s);
    EXPECT_EQ(theSurvey().NumSites, 6);
    EXPECT_TRUE(main->mnuGrid->isEnabled());
    for (const QString& item : {u"mnuUndo"_s, u"mnuRedo"_s}) {
        EXPECT_FALSE(main->mnuEL->isEnabled());
        chooseItem(*main, item);
    }
    EXPECT_FALSE(main->mnuEL->isEnabled());
    importRows();
    EXPECT_TRUE(main->mnuEL->isEnabled());
}

TEST_F(EndedProgram, BeforeTheMapKnewOfItsGapsBringsBackASurveyThatCanBeUsed) {
    importRows();
    deleteThreeOnTheMap();
    endAndStartAgain();
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_EQ(theSurvey().NumRows, 1);
    EXPECT_FALSE(theJournal().canRestAt(theJournal().position() - 1));
}

TEST_F(EndedProgram, IsBroughtBackPastAFileThatCannotBeRead) {
    importRows();
    endAndStartAgain();
    const std::string damaged = folder / "state/recovery-999999-0";
    writeFile(damaged, "VARN-Tessel recovery 1\n" + std::string(500, 'x'));
    endAndStartAgain();
    for (int i = 0; i < 2 && theSurvey().NumSites == 0; ++i) {
        setMessageResponder([](const MessageBox&) { return true; });
        clickOn(*main, u"cmdReopen"_s);
    }
    EXPECT_EQ(theSurvey().NumSites, 6);
    EXPECT_TRUE(fs::exists(damaged));
    EXPECT_TRUE(isOffered());
}

TEST_F(EndedProgram, KeepsTheExportOfASurveyThatWasOpened) {
    importRows();
    save();
    endAndStartAgain();
    setFileResponder([this](const FileQuestion&) { return fromPath(folder / "field.gpkg"); });
    chooseItem(*main, u"mnuOpenSurvey"_s);
    EXPECT_EQ(filesKept(), 0);
    setFileResponder([this](const FileQuestion&) { return fromPath(folder / "table.csv"); });
    chooseItem(*main, u"mnuSaveTable"_s);
    clickOn(shownWindow(u"frmSaveTable"_s), u"cmdSave"_s);
    waitUntilClosed(u"frmSaveTable"_s);
    EXPECT_EQ(filesKept(), 1);
}

TEST_F(EndedProgram, DoesNotMixWhatIsReopenedWithWhatWasOpen) {
    importRows();
    deleteThreeOnTheMap();
    endAndStartAgain();
    importRows();
    save();
    {
        const FileSizeLimit limit(100);
        clickOn(*main, u"cmdReopen"_s);
    }
    endAndStartAgain();
    EXPECT_EQ(filesKept(), 1);
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_EQ(theSurvey().NumSites, 3);
    EXPECT_FALSE(isOffered());
}

TEST_F(EndedProgram, ThatNeverHadAChangeKeepsNothing) {
    EXPECT_EQ(filesKept(), 0);
    endAndStartAgain();
    EXPECT_FALSE(isOffered());
}

}  // namespace tessel
