// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/frmTurns.h"

#include "base/palette16.h"
#include "desktop/CaptionColour.h"
#include "journal/journal.h"
#include "rows/row_detection.h"
#include "support/ExpectedBoxes.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

// Rows of a site a metre, 40 m long and 6 m apart, walked to and fro without a stop; all in row 1.
Survey walk(int rows, double length = 40) {
    std::vector<MadeSite> sites;
    for (int row = 0; row < rows; ++row) {
        for (double i = 0; i <= length; ++i)
            sites.push_back({row * 6.0, row % 2 == 0 ? i : length - i, 20, 30, 1, 0});
        for (int i = 1; i < 6 && row + 1 < rows; ++i)
            sites.push_back({row * 6.0 + i, row % 2 == 0 ? length : 0, 20, 30, 1, 0});
    }
    return madeSurvey(sites);
}

QColor ink(const QWidget& widget) {
    return widget.palette().color(QPalette::WindowText);
}

class TurnsWindow : public testing::Test {
  protected:
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
    open(walk(4));
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
    open(walk(4));
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
    open(walk(4));
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
        EXPECT_EQ(ink(*window->lblTurns), captionColour(kWarningColour, *window->lblTurns));
        EXPECT_FALSE(window->cmdOk->isEnabled());
        type(box, before);
        EXPECT_TRUE(window->cmdOk->isEnabled());
        EXPECT_NE(ink(*window->lblTurns), captionColour(kWarningColour, *window->lblTurns));
    }
}

TEST_F(TurnsWindow, PutsTheRowsIntoTheSurveyAsOneAct) {
    open(walk(4));
    const Survey before = theSurvey();
    QSignalSpy changed(window.get(), &frmTurns::surveyChanged),
        found(window.get(), &frmTurns::rowsRecalculated);
    const std::size_t acts = theJournal().position();
    QTest::mouseClick(window->cmdOk, Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(found.count(), 1);
    EXPECT_EQ(theSurvey().NumRows, 4);
    EXPECT_EQ(theSurvey().NumSites, before.NumSites);
    ASSERT_EQ(theJournal().position(), acts + 1);
    EXPECT_EQ(theJournal().act(acts).words, "Found 4 rows by turns");
    EXPECT_EQ(theJournal().act(acts).parameters[0].second, "45");
    theJournal().goTo(acts);
    expectSameSurvey(theSurvey(), before);
}

TEST_F(TurnsWindow, DeletesTheSitesInTurnsWhereItIsTold) {
    open(walk(4));
    const Survey before = theSurvey();
    const SiteIndex inTurns = shown.sitesInTurns;
    window->optTurnsDelete->click();
    const std::size_t acts = theJournal().position();
    QTest::mouseClick(window->cmdOk, Qt::LeftButton);
    EXPECT_EQ(theSurvey().NumSites, before.NumSites - inTurns);
    EXPECT_EQ(theSurvey().NumRows, 4);
    EXPECT_EQ(theJournal().act(acts).words,
              "Found 4 rows by turns and deleted " + std::to_string(inTurns) + " sites in turns");
    theJournal().goTo(acts);
    expectSameSurvey(theSurvey(), before);
}

TEST_F(TurnsWindow, RefusesMoreRowsThanASurveyHolds) {
    Survey survey = walk(252, 24);
    open(survey);
    EXPECT_EQ(window->lblTurns->text(), u"More than 250 rows."_s);
    EXPECT_EQ(showings, 0) << "what cannot be taken over is not shown";
    const std::size_t acts = theJournal().position();
    boxes.tell(QString::fromLatin1(kTooManyRows));
    QTest::mouseClick(window->cmdOk, Qt::LeftButton);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(theJournal().position(), acts);
}

TEST_F(TurnsWindow, SaysHowManyGapsEndRowsToo) {
    Survey survey = walk(4);
    survey.MinDistance = 3;
    for (SiteIndex i = 100; i < survey.NumSites; ++i)
        survey.SiteData(kY, i) += 5;
    open(survey);
    EXPECT_TRUE(window->lblTurns->text().endsWith(
        u" sites in turns. 1 gap is longer than the minimum distance of 3.00 m."_s))
        << window->lblTurns->text().toStdString();
}

TEST_F(TurnsWindow, ShowsNothingAnyMoreWhenItIsClosed) {
    open(walk(3));
    QSignalSpy ended(window.get(), &frmTurns::previewEnded);
    const std::size_t acts = theJournal().position();
    QTest::mouseClick(window->cmdCancel, Qt::LeftButton);
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(theJournal().position(), acts);
}

TEST_F(TurnsWindow, ReadsSmallValuesOfASurveyInDegrees) {
    Survey survey = walk(4);
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        survey.SiteData(kX, i) *= 1e-5;
        survey.SiteData(kY, i) *= 1e-5;
    }
    open(survey);
    EXPECT_EQ(shown.rows, 4);
    EXPECT_EQ(window->txtChord->text(), u"0.0001"_s);
}

}  // namespace tessel
