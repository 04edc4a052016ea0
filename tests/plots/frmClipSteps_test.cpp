// SPDX-License-Identifier: GPL-3.0-or-later
// Steps on the map, taken back and done again.
#include "plots/ClipWindow.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

class StepsOnTheMap : public ClipWindowOnFullMap {
  protected:
    void undo() { QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier); }
    void redo() { QTest::keyClick(window, Qt::Key_Y, Qt::ControlModifier); }
    QString undoText() const { return window->mnuClipUndo->text(); }
    QString redoText() const { return window->mnuClipRedo->text(); }
};

}  // namespace

TEST_F(StepsOnTheMap, AreOfferedUnderTheirNamesWhenThereAreAny) {
    EXPECT_FALSE(window->mnuClipUndo->isEnabled());
    EXPECT_FALSE(window->mnuClipRedo->isEnabled());
    maskAndFinish(5, 125, 15, 95);
    EXPECT_EQ(undoText(), u"&undo: mask 3 sites"_s);
    choose(u"mnuClipUndo"_s);
    EXPECT_EQ(undoText(), u"&undo"_s);
    EXPECT_EQ(redoText(), u"r&edo: mask 3 sites"_s);
    expectState(kBrowsing, 0, 0);
}

TEST_F(StepsOnTheMap, TakeARectangleBackWhileClipping) {
    click(window->cmdClipOn);
    mask(5, 125, 15, 95);
    mask(-1, 125, 25, 115);
    expectState(kClipping, 5, 0);
    undo();
    expectState(kClipping, 3, 0);
    EXPECT_EQ(dotAt(0, 120), colour(kBlue));
    undo();
    expectState(kClipping, 0, 0);
    undo();
    expectState(kClipping, 0, 0);
    redo();
    redo();
    expectState(kClipping, 5, 0);
    click(window->cmdClipOff);
    expectState(kBrowsingMasked, 5, 0);
}

TEST_F(StepsOnTheMap, GiveUpARectangleThatIsOpenFirst) {
    click(window->cmdClipOn);
    mask(5, 125, 15, 95);
    press(pixelOfSite(20, 110));
    EXPECT_FALSE(window->cmdClipOff->isEnabled());
    EXPECT_EQ(undoText(), u"&undo"_s);
    undo();
    EXPECT_TRUE(window->cmdClipOff->isEnabled());
    expectState(kClipping, 3, 0);
}

TEST_F(StepsOnTheMap, BringDeletedSitesBackAsTheyWereMasked) {
    const Survey before = theSurvey();
    const std::vector<MadeSite> all = expected;
    maskAndDelete(5, 125, 15, 95);
    const Survey after = theSurvey();
    QSignalSpy moves(window.data(), &frmClip::journalMoved);
    undo();
    EXPECT_EQ(differences(theSurvey(), before), "");
    expected = all;
    expectState(kBrowsingMasked, 3, 0);
    EXPECT_EQ(dotAt(10, 110), 0xFFFFFFU) << "masked again";
    EXPECT_EQ(moves.count(), 1) << "what shows the survey beside the map follows";
    redo();
    EXPECT_EQ(differences(theSurvey(), after), "");
    EXPECT_EQ(window->lblDS->text(), u"3"_s);
    undo();
    undo();
    expectState(kBrowsing, 0, 0);
    EXPECT_EQ(dotAt(10, 110), colour(kBlue));
}

TEST_F(StepsOnTheMap, TakeARecoveryBack) {
    maskAndFinish(5, 125, 15, 95);
    restore();
    EXPECT_EQ(undoText(), u"&undo: restore 3 sites"_s);
    undo();
    expectState(kBrowsingMasked, 3, 0);
    redo();
    EXPECT_EQ(window->lblMS->text(), u"0"_s);
}

TEST_F(StepsOnTheMap, EndWithTheWindowAndTheMainWindowTakesItsDeletionsBack) {
    theJournal().noteMenus(main.menuState());
    const Survey before = theSurvey();
    maskAndDelete(5, 125, 15, 95);
    const std::size_t position = theJournal().position();
    EXPECT_EQ(theJournal().act(position - 1).words, "Deleted 3 sites on the map");
    closeWindow();
    EXPECT_EQ(main.mnuUndo->text(), u"&Undo: delete 3 sites on the map"_s);
    main.mnuUndo->trigger();
    EXPECT_EQ(differences(theSurvey(), before), "");
    open();
    EXPECT_FALSE(window->mnuClipUndo->isEnabled());
}

TEST_F(StepsOnTheMap, LostRowsComeBackTogetherWithTheSitesThatTookThemAlong) {
    const Survey before = theSurvey();
    maskAndDelete(-1, 115, 35, 105);
    boxes.tellBeginning(u"Warning!  The sites which you have deleted"_s);
    closeWindow();
    ASSERT_EQ(theSurvey().NumRows, 1);
    EXPECT_EQ(main.mnuUndo->text(), u"&Undo: delete 4 sites on the map"_s);
    main.mnuUndo->trigger();
    EXPECT_EQ(differences(theSurvey(), before), "");
    EXPECT_EQ(main.mnuRedo->text(), u"&Redo: delete 4 sites on the map"_s);
    main.mnuRedo->trigger();
    EXPECT_EQ(theSurvey().NumRows, 1);
    EXPECT_EQ(theSurvey().NumSites, 8);
}

TEST_F(StepsOnTheMap, BringRowsBackThatWereDeclaredLostBySomebodyWhoStayed) {
    const Survey before = theSurvey();
    maskAndDelete(-1, 115, 35, 105);
    const Survey after = theSurvey();
    maskAndFinish(5, 105, 15, 95);
    boxes.ask(false, kExitQuestion);
    boxes.tellBeginning(u"Warning!  The sites which you have deleted"_s);
    window->close();
    ASSERT_EQ(theSurvey().NumRows, 1);
    undo();
    EXPECT_EQ(theSurvey().NumRows, 1) << "the rectangle";
    undo();
    EXPECT_EQ(differences(theSurvey(), before), "");
    EXPECT_EQ(window->comboRow->count(), 4);
    redo();
    EXPECT_EQ(differences(theSurvey(), after), "");
    undo();
    undo();
    closeWindow();
    EXPECT_TRUE(window.isNull());
}

TEST_F(StepsOnTheMap, EndWhereTheJournalHasForgotten) {
    theJournal() = Journal(1);
    surveyUnderTest() = threeRows();
    maskAndDelete(5, 125, 15, 95);
    EXPECT_FALSE(window->mnuClipUndo->isEnabled());
    maskAndFinish(-5, 125, 5, 95);
    EXPECT_TRUE(window->mnuClipUndo->isEnabled());
    undo();
    EXPECT_FALSE(window->mnuClipUndo->isEnabled());
}

TEST_F(StepsOnTheMap, ThatWereTakenBackLeaveTheRowsAlone) {
    maskAndDelete(-1, 115, 35, 105);
    undo();
    undo();
    closeWindow();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(theSurvey().NumRows, 3);
}

TEST_F(StepsOnTheMap, CannotBeDoneAgainOnceTheRowsWereDeclaredLost) {
    maskAndDelete(-1, 115, 35, 105);
    maskAndDelete(5, 115, 15, 125);
    undo();
    boxes.ask(false, kExitQuestion);
    boxes.tellBeginning(u"Warning!  The sites which you have deleted"_s);
    window->close();
    ASSERT_EQ(theSurvey().NumRows, 1);
    const Survey lost = theSurvey();
    EXPECT_FALSE(window->mnuClipRedo->isEnabled());
    redo();
    EXPECT_EQ(differences(theSurvey(), lost), "");
}

TEST_F(StepsOnTheMap, LeaveNoRestBehindWhileTheRowsHaveAGap) {
    const Survey before = theSurvey();
    maskAndDelete(-1, 115, 35, 105);
    maskAndDelete(5, 115, 15, 125);
    boxes.tellBeginning(u"Warning!  The sites which you have deleted"_s);
    closeWindow();
    main.mnuUndo->trigger();
    EXPECT_EQ(differences(theSurvey(), before), "");
}

TEST_F(StepsOnTheMap, ShowNoSiteThatIsGone) {
    maskAndDelete(5, 125, 15, 95);
    undo();
    undo();
    moveTo(pixelOfSite(10, 110));
    ASSERT_FALSE(window->lblSite->text().isEmpty());
    redo();
    redo();
    EXPECT_EQ(window->lblSite->text(), QString());
}

}  // namespace tessel
