// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/frmTurns.h"

#include "base/palette16.h"
#include "desktop/CaptionColour.h"
#include "journal/journal.h"
#include "rows/row_detection.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

// Opened on four rows.
class TurnsWindow : public testing::Test {
  protected:
    TurnsWindow() { open(surveyWalkedToAndFro(4)); }
    void open(const Survey& survey) {
        surveyUnderTest() = survey;
        window = std::make_unique<frmTurns>();
        QObject::connect(window.get(), &frmTurns::rowsFound, window.get(), [this](const RowTurns& found) {
            shown = found;
            ++showings;
        });
        window->show();
    }
    void type(QLineEdit* box, const QString& text) {
        box->selectAll();
        QTest::keyClicks(box, text);
    }

    ExpectedBoxes boxes;
    RowTurns shown;
    int showings = 0;
    std::unique_ptr<frmTurns> window;
};

}  // namespace

TEST_F(TurnsWindow, OpensWithTheValuesThatTheSurveyProposesAndShowsWhatTheyFind) {
    EXPECT_EQ(window->txtTurn->text(), u"45.00"_s);
    EXPECT_EQ(window->txtChord->text(), u"10.00"_s);
    EXPECT_EQ(window->txtShortest->text(), u"8.00"_s);
    EXPECT_EQ(window->sldTurn->value(), 45);
    EXPECT_EQ(window->sldChord->value(), 100);
    EXPECT_TRUE(window->optTurnsKeep->isChecked());
    EXPECT_EQ(shown.rows, 4);
    EXPECT_EQ(window->lblTurns->text(),
              u"4 rows, 40.00 to 40.00 m long. %1 sites in turns."_s.arg(shown.sitesInTurns));
}

TEST_F(TurnsWindow, LooksAgainWithEveryKeyAndEveryStepOfASlider) {
    const int before = showings;
    type(window->txtShortest, u"39"_s);
    EXPECT_EQ(showings, before + 2);
    EXPECT_EQ(window->sldShortest->value(), 400);
    window->sldTurn->setValue(60);
    EXPECT_EQ(window->txtTurn->text(), u"60.00"_s);
    EXPECT_EQ(showings, before + 3);
    window->sldChord->setValue(50);
    EXPECT_EQ(window->txtChord->text(), u"5.00"_s);
    type(window->txtChord, u"12"_s);
    EXPECT_EQ(window->sldChord->value(), 120);
    EXPECT_EQ(window->txtChord->text(), u"12"_s);
}

TEST_F(TurnsWindow, SaysWhatIsWrongWithAValueAndTakesNoneOfIt) {
    const std::tuple<QLineEdit*, QString, QString> wrong[] = {
        {window->txtTurn, u"180"_s, u"The angle is a number of degrees, above 0 and below 180."_s},
        {window->txtTurn, u"x"_s, u"The angle is a number of degrees, above 0 and below 180."_s},
        {window->txtChord, u"0"_s, u"The length is a number of metres above 0."_s},
        {window->txtShortest, u"-1"_s, u"The shortest row is a number of metres, 0 or more."_s},
        {window->txtShortest, u"41"_s, u"No stretch is as long as the shortest row."_s}};
    for (const auto& [box, text, message] : wrong) {
        const QString before = box->text();
        type(box, text);
        EXPECT_EQ(window->lblTurns->text(), message);
        EXPECT_EQ(inkOf(*window->lblTurns), captionColour(kWarningColour, *window->lblTurns));
        EXPECT_FALSE(window->cmdOk->isEnabled());
        type(box, before);
        EXPECT_TRUE(window->cmdOk->isEnabled());
        EXPECT_NE(inkOf(*window->lblTurns), captionColour(kWarningColour, *window->lblTurns));
    }
}

TEST_F(TurnsWindow, PutsTheRowsIntoTheSurveyAsOneActAndDeletesSitesInTurnsWhereItIsTold) {
    for (const bool deletes : {false, true}) {
        open(surveyWalkedToAndFro(4));
        const Survey before = theSurvey();
        const SiteIndex gone = deletes ? shown.sitesInTurns : 0;
        if (deletes) window->optTurnsDelete->click();
        QSignalSpy changed(window.get(), &frmTurns::surveyChanged),
            found(window.get(), &frmTurns::rowsRecalculated);
        const std::size_t acts = theJournal().position();
        QTest::mouseClick(window->cmdOk, Qt::LeftButton);
        EXPECT_FALSE(window->isVisible());
        EXPECT_EQ(changed.count(), 1);
        EXPECT_EQ(found.count(), 1);
        EXPECT_EQ(theSurvey().NumRows, 4);
        EXPECT_EQ(theSurvey().NumSites, before.NumSites - gone);
        ASSERT_EQ(theJournal().position(), acts + 1);
        const std::string andDeleted = " and deleted " + std::to_string(gone) + " sites in turns";
        EXPECT_EQ(theJournal().act(acts).words, "Found 4 rows by turns" + (deletes ? andDeleted : ""));
        EXPECT_EQ(theJournal().act(acts).parameters[0].second, "45");
        theJournal().goTo(acts);
        expectSameSurvey(theSurvey(), before);
    }
}

TEST_F(TurnsWindow, RefusesMoreRowsThanASurveyHolds) {
    const int before = showings;
    open(surveyWalkedToAndFro(252, 24));
    EXPECT_EQ(window->lblTurns->text(), u"More than 250 rows."_s);
    EXPECT_EQ(showings, before) << "what cannot be taken over is not shown";
    const std::size_t acts = theJournal().position();
    boxes.tell(QString::fromLatin1(kTooManyRows));
    QTest::mouseClick(window->cmdOk, Qt::LeftButton);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(theJournal().position(), acts);
}

TEST_F(TurnsWindow, SaysHowManyGapsEndRowsToo) {
    Survey survey = surveyWalkedToAndFro(4);
    survey.MinDistance = 3;
    for (SiteIndex i = 100; i < survey.NumSites; ++i)
        survey.SiteData(kY, i) += 5;
    open(survey);
    EXPECT_TRUE(window->lblTurns->text().endsWith(
        u" sites in turns. 1 gap is longer than the minimum distance of 3.00 m."_s))
        << window->lblTurns->text().toStdString();
}

TEST_F(TurnsWindow, ShowsNothingAnyMoreWhenItIsClosed) {
    QSignalSpy ended(window.get(), &frmTurns::previewEnded);
    const std::size_t acts = theJournal().position();
    QTest::mouseClick(window->cmdCancel, Qt::LeftButton);
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(theJournal().position(), acts);
}

TEST_F(TurnsWindow, ReadsSmallValuesOfASurveyInDegrees) {
    Survey survey = surveyWalkedToAndFro(4);
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        survey.SiteData(kX, i) *= 1e-5;
        survey.SiteData(kY, i) *= 1e-5;
    }
    open(survey);
    EXPECT_EQ(shown.rows, 4);
    EXPECT_EQ(window->txtChord->text(), u"0.0001"_s);
}

}  // namespace tessel
