// SPDX-License-Identifier: GPL-3.0-or-later
// The program is ended in the middle of the work, and started again.
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
    EndedProgram() { endAndStartAgain(); }
    // Nothing that comes with an end in order is done.
    void endAndStartAgain() {
        main.reset();
        startAfresh();
        theSession() = Session{};
        theSession().AppDir = theSession().DataDir = folder.path();
        main = createProgram(folder / "state");
        main->show();
    }

    void importWhatCannotBeKept() {
        writeFile(folder / "one row.csv", "0,0,10\n0,5,11\n10,5,12\n");
        expectGenericReport(3, 0);
        const FileSizeLimit limit(1000);
        importGeneric(folder / "one row.csv", 4);
    }
    void reopenWithoutRoom() {
        const FileSizeLimit limit(100);
        clickOn(*main, u"cmdReopen"_s);
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
        chooseFile(folder / "field.gpkg");
        chooseItem(*main, u"mnuSaveSurvey"_s);
    }
};

}  // namespace

TEST_F(EndedProgram, OffersItsSurveyAndBringsItBackWithItsHistory) {
    EXPECT_EQ(filesKept(), 0);
    endAndStartAgain();
    EXPECT_FALSE(isOffered()) << "there was none";
    importTwoRows();
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
    importTwoRows();
    saveTable(folder / "table.csv");
    endAndStartAgain();
    clickOn(*main, u"cmdReopen"_s);
    chooseFile(folder / "work.yaml");
    chooseItem(*main, u"mnuRecord"_s);
    EXPECT_NE(readFile(folder / "work.yaml").find("path: \"" + (folder / "table.csv") + "\""),
              std::string::npos);
}

TEST_F(EndedProgram, ForgetsWhatTheUserDiscards) {
    importTwoRows();
    endAndStartAgain();
    clickOn(*main, u"cmdDiscard"_s);
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(filesKept(), 0);
    EXPECT_EQ(theSurvey().NumSites, 0);
}

TEST_F(EndedProgram, OffersItAgainAsLongAsTheUserDecidesNothing) {
    importTwoRows();
    endAndStartAgain();
    endAndStartAgain();
    EXPECT_TRUE(isOffered());
    importTwoRows();
    EXPECT_TRUE(isOffered()) << "beside what has been begun";
    boxes.ask(false, kOpeningQuestion);
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_TRUE(isOffered());
}

TEST_F(EndedProgram, OffersOneAfterTheOther) {
    importTwoRows();
    endAndStartAgain();
    importTwoRows();
    endAndStartAgain();
    clickOn(*main, u"cmdDiscard"_s);
    EXPECT_TRUE(isOffered());
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(theSurvey().NumSites, 6);
}

TEST_F(EndedProgram, OffersNothingWhenItWasLeftInOrder) {
    importTwoRows();
    EXPECT_EQ(filesKept(), 1);
    boxes.ask(true, kProgramExitQuestion);
    EXPECT_TRUE(main->close());
    EXPECT_EQ(filesKept(), 0);
    endAndStartAgain();
    EXPECT_FALSE(isOffered());
}

TEST_F(EndedProgram, OffersNothingThatWasSavedUnlessItWasChangedSince) {
    importTwoRows();
    save();
    EXPECT_EQ(filesKept(), 0);
    endAndStartAgain();
    EXPECT_FALSE(isOffered());
    importTwoRows();
    save();
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(filesKept(), 1);
    endAndStartAgain();
    EXPECT_TRUE(isOffered());
}

TEST_F(EndedProgram, InTheMiddleOfTheMapBringsBackASurveyThatCanBeUsed) {
    for (const bool knowsItsGaps : {true, false}) {
        importTwoRows();
        deleteThreeOnTheMap();
        if (knowsItsGaps) theJournal().cannotRest();
        endAndStartAgain();
        clickOn(*main, u"cmdReopen"_s);
        EXPECT_EQ(theSurvey().NumSites, 3);
        EXPECT_EQ(theSurvey().NumRows, 1);
        EXPECT_TRUE(theJournal().canRestAt(theJournal().position()));
        EXPECT_FALSE(theJournal().canRestAt(theJournal().position() - 1));
        EXPECT_EQ(main->mnuUndo->text(), u"&Undo: "_s + u"delete 3 sites on the map"_s);
    }
}

TEST_F(EndedProgram, SaysInItsQuietLineWhenTheWorkCannotBeKept) {
    importWhatCannotBeKept();
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved \u2013 not kept for a crash"_s);
    EXPECT_TRUE(main->lblSurveyFile->toolTip().contains(u"cannot be written: File too large"_s));
    findRows(u"6"_s);
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved"_s);
}

TEST_F(EndedProgram, NoLongerSaysThatWorkCannotBeKeptOnceItIsSaved) {
    importWhatCannotBeKept();
    save();
    EXPECT_EQ(main->lblSurveyFile->text(), u"field.gpkg"_s);
}

TEST_F(EndedProgram, SaysAtOnceWhenWhatFollowsCannotBeKept) {
    importTwoRows();
    {
        const FileSizeLimit limit(100);
        theJournal().recount([](const Survey&, SurveyCounts&) {});
    }
    QApplication::processEvents();
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved \u2013 not kept for a crash"_s);
}

TEST_F(EndedProgram, OffersAgainWhatCouldNotBeKeptOnceReopenedUntilItIsSaved) {
    importTwoRows();
    endAndStartAgain();
    reopenWithoutRoom();
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(filesKept(), 1) << "the only copy";
    save();
    endAndStartAgain();
    EXPECT_FALSE(isOffered());
    EXPECT_EQ(filesKept(), 0);
}

TEST_F(EndedProgram, LetsGoOfWhatWasReopenedOnceItIsKeptAnew) {
    importTwoRows();
    endAndStartAgain();
    reopenWithoutRoom();
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(filesKept(), 1) << "the new one";
    endAndStartAgain();
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_TRUE(main->mnuRedo->isEnabled());
    EXPECT_FALSE(isOffered());
}

TEST_F(EndedProgram, ShowsNoErrorLogOfAnotherImport) {
    importTwoRows();
    EXPECT_TRUE(main->mnuEL->isEnabled());
    save();
    endAndStartAgain();
    chooseItem(*main, u"mnuOpenSurvey"_s);
    EXPECT_EQ(theSurvey().NumSites, 6);
    EXPECT_TRUE(main->mnuGrid->isEnabled());
    for (const QString& item : {u"mnuUndo"_s, u"mnuRedo"_s}) {
        EXPECT_FALSE(main->mnuEL->isEnabled());
        chooseItem(*main, item);
    }
    EXPECT_FALSE(main->mnuEL->isEnabled());
    importTwoRows();
    EXPECT_TRUE(main->mnuEL->isEnabled());
}

TEST_F(EndedProgram, IsBroughtBackPastAFileThatCannotBeRead) {
    importTwoRows();
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
    importTwoRows();
    save();
    endAndStartAgain();
    chooseItem(*main, u"mnuOpenSurvey"_s);
    EXPECT_EQ(filesKept(), 0);
    saveTable(folder / "table.csv");
    EXPECT_EQ(filesKept(), 1);
}

TEST_F(EndedProgram, DoesNotMixWhatIsReopenedWithWhatWasOpen) {
    importTwoRows();
    deleteThreeOnTheMap();
    endAndStartAgain();
    importTwoRows();
    save();
    reopenWithoutRoom();
    endAndStartAgain();
    EXPECT_EQ(filesKept(), 1);
    clickOn(*main, u"cmdReopen"_s);
    EXPECT_EQ(theSurvey().NumSites, 3);
    EXPECT_FALSE(isOffered());
}

}  // namespace tessel
