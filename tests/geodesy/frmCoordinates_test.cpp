// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/frmCoordinates.h"

#include "support/ExpectedBoxes.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

class CoordinatesWindow : public testing::Test {
  protected:
    CoordinatesWindow() {
        use(madeSurvey({{-2.3, 52.4, 20, 40, 1},
                        {-2.3, 52.4001, 21, 41, 1},
                        {-2.3, 52.4002, 22, 42, 1},
                        {-2.3, 52.4003, 23, 43, 1},
                        {0, 0, 9, 9, 1}}));
    }

    static void use(Survey survey) {
        startAfresh();
        surveyUnderTest() = std::move(survey);
    }
    static QString chosen(const frmCoordinates& window) {
        return window.lstSystems->currentItem() ? window.lstSystems->currentItem()->text() : QString();
    }

    ExpectedBoxes boxes;
};

}  // namespace

TEST_F(CoordinatesWindow, OpensWithWhatIsKnown) {
    EXPECT_TRUE(frmCoordinates().optDegrees->isChecked()) << "they look like degrees";
    surveyUnderTest().PositionsCRS = 27700;
    frmCoordinates window;
    EXPECT_TRUE(window.optCRS->isChecked());
    EXPECT_EQ(window.txtSystem->text(), u"27700"_s);
    EXPECT_TRUE(chosen(window).startsWith(u"EPSG:27700"_s));
    use(madeSurvey({{1000, 2000, 20, 40, 1}, {1010, 2000, 21, 41, 1}}));
    const frmCoordinates plain;
    EXPECT_TRUE(plain.optGrid->isChecked());
    EXPECT_FALSE(plain.fraSystem->isEnabled() || plain.chkLatitudeFirst->isEnabled());
    EXPECT_EQ(plain.lblNotice->text(), QString());
}

TEST_F(CoordinatesWindow, ProposesTheZoneThatFitsAndConverts) {
    frmCoordinates window;
    window.show();
    EXPECT_EQ(chosen(window), u"EPSG:32630  WGS 84 / UTM zone 30N"_s);
    EXPECT_EQ(window.lblNotice->text(), u"1 position stays as it is: 1 at 0, 0 (line 9)."_s);
    QSignalSpy changed(&window, &frmCoordinates::positionsChanged);
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(theSurvey().PositionsCRS, 32630);
    EXPECT_NEAR(theSurvey().SiteData(kX, 0), 547625.587, 0.001);
    EXPECT_EQ(theSurvey().SiteData(kX, 4), 0);
}

TEST_F(CoordinatesWindow, FindsAnySystemByTheWordsThatAreTyped) {
    frmCoordinates window;
    window.show();
    typeInto(window, u"txtSystem"_s, u"british national"_s);
    ASSERT_GE(window.lstSystems->count(), 1);
    EXPECT_TRUE(chosen(window).startsWith(u"EPSG:27700  "_s)) << chosen(window).toStdString();
    clickOn(window, u"cmdApply"_s);
    EXPECT_EQ(theSurvey().PositionsCRS, 27700);
    EXPECT_NEAR(theSurvey().SiteData(kX, 0), 379700, 200);
}

TEST_F(CoordinatesWindow, TakesTheSystemThatIsClickedInTheList) {
    frmCoordinates window;
    window.show();
    typeInto(window, u"txtSystem"_s, u"utm zone 30N"_s);
    ASSERT_GE(window.lstSystems->count(), 2);
    const QString second = window.lstSystems->item(1)->text();
    QTest::mouseClick(window.lstSystems->viewport(), Qt::LeftButton, {},
                      window.lstSystems->visualItemRect(window.lstSystems->item(1)).center());
    EXPECT_EQ(chosen(window), second);
    clickOn(window, u"cmdApply"_s);
    EXPECT_EQ(u"EPSG:%1"_s.arg(theSurvey().PositionsCRS), second.section(u' ', 0, 0));
}

TEST_F(CoordinatesWindow, ReadsDegreesAndMinutesWithTheLatitudeFirst) {
    use(madeSurvey({{5224.461145, -220.67328, 1, 1, 1}, {5224.461129, -220.673282, 1, 1, 1}}));
    frmCoordinates window;
    window.show();
    clickOn(window, u"optMinutes"_s);
    EXPECT_NE(chosen(window), u"EPSG:32630  WGS 84 / UTM zone 30N"_s);
    clickOn(window, u"chkLatitudeFirst"_s);
    EXPECT_EQ(chosen(window), u"EPSG:32630  WGS 84 / UTM zone 30N"_s);
    clickOn(window, u"cmdApply"_s);
    EXPECT_NEAR(theSurvey().SiteData(kX, 0), 544586.53, 0.01);
    EXPECT_NEAR(theSurvey().SiteData(kY, 0), 5806585.84, 0.01);
}

TEST_F(CoordinatesWindow, NamesASystemWithoutMovingAnything) {
    use(madeSurvey({{544586.53, 5806585.84, 1, 1, 1}, {544590, 5806585, 1, 1, 1}}));
    frmCoordinates window;
    window.show();
    clickOn(window, u"optCRS"_s);
    typeInto(window, u"txtSystem"_s, u"32630"_s);
    EXPECT_EQ(window.lblRows->text(), u"X and Y stay as they are."_s);
    clickOn(window, u"cmdApply"_s);
    EXPECT_EQ(theSurvey().PositionsCRS, 32630);
    EXPECT_EQ(theSurvey().SiteData(kX, 0), 544586.53);
    EXPECT_EQ(theJournal().size(), 1U);
}

// Enter would have named the first of all systems, which lies in the West Indies.
TEST_F(CoordinatesWindow, ChoosesNoSystemForMetresByItself) {
    use(madeSurvey({{544586.53, 5806585.84, 1, 1, 1}, {544590, 5806585, 1, 1, 1}}));
    frmCoordinates window;
    window.show();
    clickOn(window, u"optCRS"_s);
    EXPECT_GT(window.lstSystems->count(), 0);
    EXPECT_EQ(chosen(window), QString());
    EXPECT_FALSE(window.cmdApply->isEnabled());
    EXPECT_EQ(window.lblNotice->text(), u"Type a number or words of a name, and choose a system."_s);
    window.lstSystems->setCurrentRow(1);
    EXPECT_TRUE(window.cmdApply->isEnabled());
}

TEST_F(CoordinatesWindow, SaysWhyNothingCanBeDone) {
    frmCoordinates window;
    window.show();
    typeInto(window, u"txtSystem"_s, u"no such words"_s);
    EXPECT_EQ(window.lblNotice->text().section(u'\n', 0, 0),
              u"No coordinate system has this number or these words."_s);
    EXPECT_FALSE(window.cmdApply->isEnabled());
    typeInto(window, u"txtSystem"_s, u"2263"_s);
    EXPECT_EQ(window.lblNotice->text().section(u'\n', 0, 0),
              u"The unit of this system is the US survey foot, not the metre."_s);
    EXPECT_FALSE(window.cmdApply->isEnabled());
    clickOn(window, u"optGrid"_s);
    EXPECT_TRUE(window.cmdApply->isEnabled());
    use(madeSurvey({{544586.53, 5806585.84, 1, 1, 1}, {544590, 5806585, 1, 1, 1}}));
    frmCoordinates metres;
    metres.show();
    clickOn(metres, u"optDegrees"_s);
    EXPECT_EQ(metres.lblNotice->text().section(u'\n', 0, 0), u"No position can be one in degrees."_s);
    EXPECT_FALSE(metres.cmdApply->isEnabled());
}

TEST_F(CoordinatesWindow, DoesNothingWhereNothingIsOther) {
    use(madeSurvey({{1000, 2000, 20, 40, 1}, {1010, 2000, 21, 41, 1}}));
    frmCoordinates window;
    window.show();
    QSignalSpy changed(&window, &frmCoordinates::positionsChanged);
    clickOn(window, u"cmdApply"_s);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(theJournal().size(), 0U);
    EXPECT_FALSE(window.isVisible());
}

}  // namespace tessel
