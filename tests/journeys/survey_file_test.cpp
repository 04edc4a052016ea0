// SPDX-License-Identifier: GPL-3.0-or-later
// The survey goes into its file and comes back, with its history, in the whole program.
#include "storage/survey_file.h"

#include "desktop/FileDialogs.h"
#include "journal/frmHistory.h"
#include "journal/journal.h"
#include "support/RunningProgram.h"
#include "support/file_size_limit.h"
#include "support/journal_bits.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

class SavedSurvey : public testing::Test, protected RunningProgram {
  protected:
    void importRows() {
        importTwoRows();
        setFileResponder([this](const FileQuestion& question) {
            asked << question.caption;
            suffix = question.suffix;
            proposed = question.proposed;
            return answer;
        });
    }
    void press(Qt::Key key) {
        main->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(main.get()));
        QTest::keyClick(main.get(), key, Qt::ControlModifier);
    }
    void saveAs(const std::string& name) {
        answer = fromPath(folder / name);
        chooseItem(*main, u"mnuSaveSurveyAs"_s);
    }
    void open(const std::string& name) {
        answer = fromPath(folder / name);
        press(Qt::Key_O);
    }
    QString line() const { return main->lblSurveyFile->text(); }

    QStringList asked;
    QString answer, suffix, proposed;
};

}  // namespace

TEST_F(SavedSurvey, ComesBackWithItsHistory) {
    EXPECT_FALSE(main->mnuSaveSurvey->isEnabled());
    EXPECT_FALSE(main->mnuSaveSurveyAs->isEnabled());
    EXPECT_EQ(line(), u""_s);
    importRows();
    EXPECT_EQ(line(), u"Survey not saved"_s);
    const Survey whole = theSurvey();
    saveAs("field.gpkg");
    EXPECT_EQ(asked, QStringList{u"Save the survey"_s});
    EXPECT_EQ(suffix, u"gpkg"_s);
    EXPECT_EQ(proposed, fromPath(folder / "rows.gpkg"));
    EXPECT_EQ(line(), u"field.gpkg"_s);
    EXPECT_EQ(main->lblSurveyFile->toolTip(), fromPath(folder / "field.gpkg"));
    EXPECT_EQ(main->lblMessage->text(), u"Survey saved to field.gpkg"_s);
    chooseItem(*main, u"mnuUndo"_s);
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(line(), u"field.gpkg \u2013 changes not saved"_s);
    boxes.ask(true, kOpeningQuestion);
    open("field.gpkg");
    EXPECT_EQ(differences(theSurvey(), whole), "");
    EXPECT_EQ(line(), u"field.gpkg"_s);
    EXPECT_TRUE(main->mnuGrid->isEnabled());
    EXPECT_TRUE(main->lblInvitation->text().startsWith(u"6 sites in"));
    EXPECT_EQ(theSession().InputFileName, folder / "rows.csv");
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_TRUE(main->mnuRedo->isEnabled());
    chooseItem(*main, u"mnuRedo"_s);
    EXPECT_EQ(differences(theSurvey(), whole), "");
    EXPECT_EQ(line(), u"field.gpkg"_s) << "it stands where it was saved";
    saveAs("other.gpkg");
    EXPECT_EQ(proposed, fromPath(folder / "field-2.gpkg"));
}

TEST_F(SavedSurvey, AsksForItsNameOnceOnly) {
    importRows();
    answer = fromPath(folder / "field.gpkg");
    press(Qt::Key_S);
    press(Qt::Key_S);
    chooseItem(*main, u"mnuSaveSurvey"_s);
    EXPECT_EQ(asked.size(), 1);
    saveAs("other.gpkg");
    EXPECT_EQ(line(), u"other.gpkg"_s);
    EXPECT_TRUE(std::filesystem::exists(folder / "field.gpkg"));
}

TEST_F(SavedSurvey, IsSavedNowhereWhenTheDialogIsCancelled) {
    importRows();
    answer.clear();
    press(Qt::Key_S);
    EXPECT_EQ(line(), u"Survey not saved"_s);
    press(Qt::Key_O);
    EXPECT_EQ(theSurvey().NumSites, 6);
}

TEST_F(SavedSurvey, StaysUnsavedAndInItsFileAsItWasWhenSavingFails) {
    importRows();
    saveAs("field.gpkg");
    const std::string saved = readFile(folder / "field.gpkg");
    chooseItem(*main, u"mnuUndo"_s);
    boxes.tell(fromPath(folder / "field.gpkg") + u" cannot be written: File too large"_s);
    {
        const FileSizeLimit limit(20'000);
        chooseItem(*main, u"mnuSaveSurvey"_s);
    }
    EXPECT_EQ(line(), u"field.gpkg \u2013 changes not saved"_s);
    EXPECT_EQ(readFile(folder / "field.gpkg"), saved);
}

TEST_F(SavedSurvey, IsNotWrittenOverAFileThatAnotherProgramHasChanged) {
    importRows();
    saveAs("field.gpkg");
    writeFile(folder / "field.gpkg", "changed in a GIS");
    answer.clear();
    asked.clear();
    chooseItem(*main, u"mnuSaveSurvey"_s);
    EXPECT_EQ(asked, QStringList{u"Save the survey"_s});
    EXPECT_EQ(readFile(folder / "field.gpkg"), "changed in a GIS");
    std::filesystem::remove(folder / "field.gpkg");
    chooseItem(*main, u"mnuSaveSurvey"_s);
    EXPECT_EQ(asked.size(), 1) << "one that is gone is written anew";
    EXPECT_TRUE(std::filesystem::exists(folder / "field.gpkg"));
}

TEST_F(SavedSurvey, KeepsWhatAnotherProgramHasPutIntoItsFileBeforeItWasOpened) {
    importRows();
    saveAs("field.gpkg");
    ASSERT_EQ(
        std::system(("sqlite3 " + (folder / "field.gpkg") + " 'CREATE TABLE layer_styles (x)'").c_str()), 0);
    open("field.gpkg");
    answer.clear();
    asked.clear();
    const std::string added = readFile(folder / "field.gpkg");
    chooseItem(*main, u"mnuSaveSurvey"_s);
    EXPECT_EQ(asked, QStringList{u"Save the survey"_s});
    EXPECT_EQ(readFile(folder / "field.gpkg"), added);
}

TEST_F(SavedSurvey, IsNotSavedAsItIsOnceItHasBeenExported) {
    importRows();
    saveAs("field.gpkg");
    exportTo(folder / "out.txt");
    EXPECT_EQ(line(), u"field.gpkg \u2013 changes not saved"_s);
}

TEST_F(SavedSurvey, StaysWhenTheFileToOpenIsNoneOfItsKind) {
    importRows();
    saveAs("field.gpkg");
    const Survey whole = theSurvey();
    boxes.tell(fromPath(folder / "rows.csv") + u" cannot be opened: it is no database"_s);
    open("rows.csv");
    EXPECT_EQ(differences(theSurvey(), whole), "");
    EXPECT_EQ(line(), u"field.gpkg"_s);
    EXPECT_TRUE(main->mnuUndo->isEnabled());
}

TEST_F(SavedSurvey, StaysWhenTheQuestionIsAnsweredWithNo) {
    importRows();
    saveAs("field.gpkg");
    chooseItem(*main, u"mnuUndo"_s);
    const Survey changed = theSurvey();
    boxes.ask(false, kOpeningQuestion);
    open("field.gpkg");
    EXPECT_EQ(differences(theSurvey(), changed), "");
}

TEST_F(SavedSurvey, TakesAwayWhatShowedTheOtherOne) {
    importRows();
    saveAs("field.gpkg");
    chooseItem(*main, u"mnuData"_s);
    chooseItem(*main, u"mnuHistory"_s);
    chooseItem(*main, u"mnuY"_s);
    EXPECT_TRUE(isVisible(u"Chart2D4"_s));
    open("field.gpkg");
    waitUntilClosed(u"frmDataEdit"_s);
    EXPECT_FALSE(isVisible(u"Chart2D4"_s));
    EXPECT_TRUE(main->mnuData->isEnabled());
    auto& history = dynamic_cast<frmHistory&>(shownWindow(u"frmHistory"_s));
    EXPECT_EQ(history.lstHistory->model()->rowCount(), static_cast<int>(theJournal().size()) + 1);
}

TEST_F(SavedSurvey, KnowsItsSensorFileByItsDigest) {
    importRows();
    saveAs("field.gpkg");
    const SavedRecords records = openSurvey(folder / "field.gpkg").records;
    ASSERT_EQ(records.imports.size(), 1U);
    EXPECT_EQ(records.imports[0].what.file.sha256.size(), 64U);
    EXPECT_EQ(records.imports[0].what.file.path, folder / "rows.csv");
    EXPECT_FALSE(records.menuItems.empty());
}

TEST_F(SavedSurvey, OfAnotherDayIsExportedAgainWhenItWas) {
    importRows();
    saveAs("field.gpkg");
    EXPECT_FALSE(theSession().DataSaved);
    exportTo(folder / "out.txt");
    EXPECT_TRUE(theSession().DataSaved);
    setFileResponder([this](const FileQuestion&) { return answer; });
    saveAs("exported.gpkg");
    open("field.gpkg");
    EXPECT_FALSE(theSession().DataSaved);
    open("exported.gpkg");
    EXPECT_TRUE(theSession().DataSaved);
}

TEST(MenusOfToday, AreThoseOfTheirNamesInWhateverOrderTheyWereCounted) {
    const auto items = followingItems();
    std::vector<std::string> names(items.begin(), items.end());
    EXPECT_EQ(menusOfToday(0b101, names), 0b101U);
    std::swap(names[0], names[1]);
    EXPECT_EQ(menusOfToday(0b01, names), 0b10U);
    names.pop_back();
    const MenuState last = MenuState{1} << (items.size() - 1);
    EXPECT_EQ(menusOfToday(0b01, names), 0b10U | last) << "one that was not there";
    EXPECT_EQ(menusOfToday(0, names), 0U);
}

}  // namespace tessel
