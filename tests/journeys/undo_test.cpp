// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever has been done to a survey can be taken back and done again, and what is shown follows.
#include "drawing/PictureBox.h"
#include "journal/frmHistory.h"
#include "journal/journal.h"
#include "plots/Chart2D.h"
#include "plots/RowPlotEditor.h"
#include "plots/site_masking.h"
#include "rows/row_acts.h"
#include "rows/row_editing.h"
#include "support/PlotWindow.h"
#include "support/RunningProgram.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

class TakingBack : public testing::Test, protected RunningProgram {
  protected:
    TakingBack() { importRows(3); }

    // Rows along Y, 1 km apart, of three sites each, through the import of a file.
    void importRows(int rows) {
        std::string lines;
        for (int row = 0; row < rows; ++row)
            for (int site = 0; site < 3; ++site)
                lines += std::to_string(row * 1000) + ',' + std::to_string(site) + ',' +
                         std::to_string(10 * row + site) + ',' + std::to_string(row + 1) + '\n';
        writeFile(folder / "rows.csv", lines);
        expectGenericReport(3 * rows, 0);
        importGeneric(folder / "rows.csv", 0);
        before = theSurvey();
    }
    // Keys find the window in front.
    static void toFront(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void undo() { chooseItem(*main, u"mnuUndo"_s); }
    void redo() { chooseItem(*main, u"mnuRedo"_s); }
    void openRowPlots() {
        chooseItem(*main, u"mnuY"_s);
        editor = main->findChild<RowPlotEditor*>();
    }
    void emptyTheFirstRow() {
        openRowPlots();
        for (const int point : {1, 2, 3})
            clickPoint(*editor->Chart2D3, 1, point);
        clickOn(*main, u"Command5"_s);
    }
    frmHistory& history() {
        chooseItem(*main, u"mnuHistory"_s);
        return dynamic_cast<frmHistory&>(shownWindow(u"frmHistory"_s));
    }
    static void clickLine(frmHistory& window, int line) {
        const QModelIndex index = window.lstHistory->model()->index(line, HistoryModel::kWhat);
        QTest::mouseClick(window.lstHistory->viewport(), Qt::LeftButton, {},
                          window.lstHistory->visualRect(index).center());
    }
    static QString textIn(frmHistory& window, int line, int column) {
        return window.lstHistory->model()->index(line, column).data().toString();
    }
    static bool isBold(frmHistory& window, int line) {
        return window.lstHistory->model()->index(line, 0).data(Qt::FontRole).value<QFont>().bold();
    }
    QString message() const { return main->lblMessage->text(); }
    void expectAsBefore() const { EXPECT_EQ(differences(theSurvey(), before), ""); }

    RowPlotEditor* editor = nullptr;
};

}  // namespace

TEST_F(TakingBack, IsOfferedUnderTheNameOfTheLastAct) {
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo: import rows.csv"_s);
    EXPECT_FALSE(main->mnuRedo->isEnabled());
    EXPECT_EQ(main->mnuRedo->text(), u"&Redo"_s);
    deleteRow(2);
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo: delete row 2"_s);
    undo();
    expectAsBefore();
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo: import rows.csv"_s);
    EXPECT_EQ(main->mnuRedo->text(), u"&Redo: delete row 2"_s);
    redo();
    EXPECT_EQ(theSurvey().NumSites, 6);
}

TEST_F(TakingBack, IsNotOfferedBeforeAnythingWasDone) {
    undo();
    EXPECT_FALSE(main->mnuUndo->isEnabled());
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo"_s);
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_FALSE(main->mnuData->isEnabled()) << "as at the start";
    EXPECT_FALSE(theSession().DataSaved);
    boxes.ask(false, kProgramExitQuestion);
    EXPECT_FALSE(main->mayLeave());
    redo();
    expectAsBefore();
    EXPECT_TRUE(main->mnuData->isEnabled());
}

TEST_F(TakingBack, HasItsKeys) {
    deleteRow(1);
    toFront(*main);
    QTest::keyClick(main.get(), Qt::Key_Z, Qt::ControlModifier);
    expectAsBefore();
    QTest::keyClick(main.get(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(theSurvey().NumSites, 6);
    QTest::keyClick(main.get(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(main.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(theSurvey().NumSites, 6);
}

TEST_F(TakingBack, SaysForSomeSecondsWhatWasTakenBack) {
    deleteRow(2);
    EXPECT_EQ(message(), QString());
    undo();
    EXPECT_EQ(message(), u"Taken back: Deleted row 2 with its 3 sites"_s);
    EXPECT_LE(main->lblMessage->geometry().right(), main->width());
    redo();
    EXPECT_EQ(message(), u"Done again: Deleted row 2 with its 3 sites"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return message().isEmpty(); }, 12000));
}

TEST_F(TakingBack, WorksInTheRowPlotsWhereverTheKeyboardIs) {
    openRowPlots();
    clickPoint(*editor->Chart2D3, 1, 2);
    clickOn(*main, u"Command5"_s);
    ASSERT_EQ(theSurvey().NumSites, 8);
    toFront(*main);
    clickOn(*main, u"Option2"_s);
    ASSERT_TRUE(editor->Text1->hasFocus());
    QTest::keyClicks(editor->Text1, u"1"_s);
    QTest::keyClick(editor->Text1, Qt::Key_Z, Qt::ControlModifier);
    expectAsBefore();
    EXPECT_EQ(editor->Text1->text(), u"1"_s);
    EXPECT_EQ(editor->Chart2D3->pointCount(Chart2D::kData, 1), 3) << "the plot follows in its place";
    EXPECT_TRUE(editor->isVisible());
    QTest::keyClick(editor->Text1, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(theSurvey().NumSites, 8);
    QTest::keyClick(editor->Command4, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(editor->Chart2D4, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(editor->Chart2D3->pointCount(Chart2D::kData, 1), 2);
}

TEST_F(TakingBack, BringsARowBackThatWasEmptiedAndShowsIt) {
    emptyTheFirstRow();
    ASSERT_EQ(theSurvey().NumRows, 2);
    undo();
    expectAsBefore();
    EXPECT_EQ(editor->CurrentRow, 1);
    EXPECT_EQ(editor->Chart2D3->pointCount(Chart2D::kData, 1), 3);
    EXPECT_TRUE(editor->Command2->isEnabled());
}

TEST_F(TakingBack, RestoresMenusAsTheyWereAfterTheAct) {
    deleteRow(3);
    emptyTheFirstRow();
    ASSERT_FALSE(main->mnuGrid->isEnabled());
    undo();
    EXPECT_TRUE(main->mnuGrid->isEnabled());
    EXPECT_TRUE(main->mnuData->isEnabled());
    redo();
    EXPECT_FALSE(main->mnuGrid->isEnabled());
    EXPECT_FALSE(main->mnuData->isEnabled());
}

TEST_F(TakingBack, HidesAPlotThatHasNothingToShowAnyMore) {
    chooseItem(*main, u"mnuGrid"_s);
    undo();
    EXPECT_FALSE(isVisible(u"Chart2D2"_s));
    EXPECT_TRUE(isVisible(u"lblInvitation"_s));
    EXPECT_FALSE(main->mnuGrid->isEnabled());
}

TEST_F(TakingBack, BringsTheSurveyBackThatAWrongImportReplaced) {
    deleteRow(2);
    const Survey mine = theSurvey();
    writeFile(folder / "other.csv", "1,1,5\n");
    expectGenericReport(1, 0);
    importGeneric(folder / "other.csv", 4);
    EXPECT_TRUE(theSession().InputFileName.ends_with("other.csv"));
    undo();
    EXPECT_EQ(differences(theSurvey(), mine), "");
    EXPECT_TRUE(theSession().InputFileName.ends_with("rows.csv"));
    EXPECT_TRUE(main->summaryArea->accessibleName().contains(u"rows.csv"_s));
}

TEST_F(TakingBack, MakesTheSurveyTheExportedOneAgain) {
    exportTo(folder / "out.txt");
    deleteRow(2);
    EXPECT_FALSE(theSession().DataSaved);
    undo();
    EXPECT_TRUE(theSession().DataSaved);
    redo();
    EXPECT_FALSE(theSession().DataSaved);
}

TEST_F(TakingBack, IsFollowedByTheRowDialogAndTheOtherWindows) {
    chooseItem(*main, u"mnuData"_s);
    chooseItem(*main, u"mnuStat"_s);
    QWidget& statistics = shownWindow(u"frmStat"_s);
    deleteRow(2);
    undo();
    chooseItem(*main, u"mnuData"_s);
    EXPECT_TRUE(
        controlAs<QLabel>(shownWindow(u"frmDataEdit"_s), u"lblInForce"_s).text().contains(u"3 rows"_s));
    EXPECT_EQ(controlAs<QLabel>(statistics, u"lblInfo"_s).text(), u"Total # of detected rows = 3"_s);
    // And it works from them.
    toFront(statistics);
    QTest::keyClick(&statistics, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(theSurvey().NumSites, 0);
}

TEST_F(TakingBack, GoesPastTheStateThatTheMapLeftBehind) {
    // (the map is driven in its own tests; here what it does to the journal)
    const std::size_t start = theJournal().position();
    SiteMaskArray mask = {0, 0, 0, 1, 1, 1, 0, 0, 0};
    theJournal().perform(deletionOfMasked(3),
                         [&](Survey& survey) { return deleteMaskedSites(survey, mask); });
    theJournal().cannotRest();
    theJournal().perform(lossOfRows(), makeOneRow);
    frmHistory& window = history();
    EXPECT_EQ(window.lstHistory->model()->rowCount(), static_cast<int>(start) + 3);
    clickLine(window, static_cast<int>(start) + 1);
    EXPECT_EQ(theJournal().position(), start + 2) << "on to where the survey can stay";
    undo();
    expectAsBefore();
}

TEST_F(TakingBack, OffersASingleRowToTheRowDialogWhereNoRowPlotsAreOpen) {
    importRows(2);
    openRowPlots();
    theJournal().perform(deletionOfRow(theSurvey(), 2), [](Survey& survey) { return Delete_Row(survey, 2); });
    main->menusFollow(MenuEvent::kFewerThanTwoRows);
    theJournal().noteMenus(main->menuState());
    undo();
    clickOn(*main, u"Command4"_s);
    redo();
    ASSERT_EQ(theSurvey().NumRows, 1);
    EXPECT_TRUE(main->mnuData->isEnabled());
}

TEST_F(TakingBack, TakesATypedRowNumberAwayThatMeantAnotherFile) {
    importRows(3);
    chooseItem(*main, u"mnuData"_s);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, u"Option2"_s);
    auto& typed = controlAs<QLineEdit>(dialog, u"Text4"_s);
    QTest::keyClicks(&typed, u"2"_s);
    undo();
    ASSERT_EQ(theSurvey().NumRows, 3);
    EXPECT_EQ(typed.text(), QString());
}

TEST_F(TakingBack, IsShownAsAHistoryWithThePresentStateMarked) {
    deleteRow(2);
    deleteRow(1);
    frmHistory& window = history();
    ASSERT_EQ(window.lstHistory->model()->rowCount(), 4);
    EXPECT_EQ(textIn(window, 0, HistoryModel::kWhat), u"Start of the program"_s);
    EXPECT_EQ(textIn(window, 1, HistoryModel::kWhat), u"Imported rows.csv with 9 sites"_s);
    EXPECT_EQ(textIn(window, 2, HistoryModel::kWhat), u"Deleted row 2 with its 3 sites"_s);
    EXPECT_EQ(textIn(window, 2, HistoryModel::kNumber), u"2"_s);
    EXPECT_EQ(textIn(window, 2, HistoryModel::kSites), u"6"_s);
    EXPECT_EQ(textIn(window, 2, HistoryModel::kRows), u"2"_s);
    EXPECT_FALSE(textIn(window, 2, HistoryModel::kTime).isEmpty());
    EXPECT_TRUE(isBold(window, 3));
    EXPECT_FALSE(isBold(window, 2));
    clickLine(window, 1);
    expectAsBefore();
    EXPECT_TRUE(isBold(window, 1));
    EXPECT_TRUE(window.lstHistory->model()->index(2, 2).data(Qt::ForegroundRole).isValid()) << "greyed";
    EXPECT_FALSE(window.lstHistory->model()->index(1, 2).data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(message(), u"Taken back: 2 acts"_s);
    clickLine(window, 3);
    EXPECT_EQ(theSurvey().NumSites, 3);
    QTest::keyClick(window.lstHistory, Qt::Key_Home);
    QTest::keyClick(window.lstHistory, Qt::Key_Return);
    EXPECT_EQ(theSurvey().NumSites, 0);
}

TEST_F(TakingBack, FollowsInTheHistoryWhatIsDoneBesideIt) {
    frmHistory& window = history();
    EXPECT_EQ(window.lstHistory->model()->rowCount(), 2);
    deleteRow(2);
    EXPECT_EQ(window.lstHistory->model()->rowCount(), 3);
    undo();
    deleteRow(1);
    EXPECT_EQ(window.lstHistory->model()->rowCount(), 3);
    EXPECT_EQ(textIn(window, 2, HistoryModel::kWhat), u"Deleted row 1 with its 3 sites"_s);
}

TEST_F(TakingBack, SaysHowManyActsAreForgotten) {
    theJournal() = Journal(1);
    importRows(2);
    EXPECT_FALSE(main->mnuUndo->isEnabled());
    EXPECT_EQ(textIn(history(), 0, HistoryModel::kWhat),
              u"1 earlier act(s) can no longer be taken back: there is no more memory for them"_s);
}

}  // namespace tessel
