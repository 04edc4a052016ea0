// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmDataControl.h"

#include "desktop/CaptionColour.h"
#include "journal/journal.h"
#include "support/ImportTest.h"

namespace tessel {

namespace {

const QString kNonNumeric = u"Non-numeric EM-cutoff or Minimum distance Input"_s;

class ImportControl : public ImportTest {
  protected:
    ImportControl() : window(&main) {
        QObject::connect(&window, &frmDataControl::parametersChosen, &window,
                         [this](const TrimbleOptions& options) {
                             chosen = options;
                             ++timesChosen;
                         });
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void refuse(const QString& cutoff, const QString& distance, const QString& message) {
        type(*window.Text1, cutoff);
        type(*window.Text2, distance);
        boxes.tell(message);
        click(*window.Command1);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(timesChosen, 0);
    }

    frmDataControl window;
    TrimbleOptions chosen;
    int timesChosen = 0;
};

}  // namespace

TEST_F(ImportControl, OpensReadyToReplaceTheCutOff) {
    QTest::keyClicks(QApplication::focusWidget(), u"2"_s);
    EXPECT_EQ(window.Text1->text(), u"2"_s);
}

TEST_F(ImportControl, RefusesToGoOnAsItOpens) {
    boxes.tell(kNonNumeric);
    click(*window.Command1);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.Text2->hasFocus());
}

TEST_F(ImportControl, StoresWhatItRefuses) {
    const QString negative = u"Error: Minimum distance must be > 0"_s;
    window.Check1->setChecked(true);
    const std::tuple<QString, QString, QString, double, double> cases[] = {
        {u"abc"_s, u"5"_s, kNonNumeric, 0, 5},        {u"1"_s, u"abc"_s, kNonNumeric, 1, 0},
        {u""_s, u"5"_s, kNonNumeric, 0, 5},           {u"1,5"_s, u"5"_s, kNonNumeric, 1, 5},
        {u"12 mS/m"_s, u"-7"_s, kNonNumeric, 12, -7}, {u"5"_s, u" 2.5 m"_s, kNonNumeric, 5, 2.5},
        {u"abc"_s, u"x"_s, kNonNumeric, 0, 0},        {u"-10"_s, u"-1"_s, negative, -10, -1},
        {u"-10"_s, u"-1e-9"_s, negative, -10, -1e-9}};
    for (const auto& [cutoff, distance, message, storedCutoff, storedDistance] : cases) {
        SCOPED_TRACE((cutoff + u' ' + distance).toStdString());
        refuse(cutoff, distance, message);
        EXPECT_EQ(theSurvey().EMCutoff, storedCutoff);
        EXPECT_EQ(theSurvey().MinDistance, storedDistance);
        if (cutoff == u"abc"_s) {
            EXPECT_EQ(window.Text1->selectedText(), cutoff);
        }
    }
    EXPECT_EQ(theSurvey().MinLineLength, 1);
    EXPECT_TRUE(theSurvey().NegateEM);
    EXPECT_FALSE(theSurvey().DivideEMBy10);
    expectSurveyUntouched();
}

TEST_F(ImportControl, AcceptsADistanceOfZero) {
    type(*window.Text2, u"0"_s);
    click(*window.Command1);
    EXPECT_FALSE(window.isVisible());
    ASSERT_EQ(timesChosen, 1);
    EXPECT_EQ(chosen.MinDistance, 0);
    EXPECT_EQ(chosen.EMCutoff, -10);
    EXPECT_EQ(chosen.DistanceMode, 1);
    EXPECT_FALSE(chosen.NegateEM || chosen.DivideEMBy10);
}

TEST_F(ImportControl, HandsOnWhatWasChosenAndStoresAllButTheMeasure) {
    type(*window.Text1, u"2.5"_s);
    type(*window.Text2, u" 7.5e0"_s);
    click(*window.Option3);
    click(*window.Check1);
    click(*window.Check2);
    QTest::keyClick(&window, Qt::Key_Return);
    ASSERT_EQ(timesChosen, 1);
    EXPECT_EQ(chosen.EMCutoff, 2.5);
    EXPECT_EQ(chosen.MinDistance, 7.5);
    EXPECT_EQ(chosen.MinLineLength, 1);
    EXPECT_EQ(chosen.DistanceMode, 3);
    EXPECT_TRUE(chosen.NegateEM && chosen.DivideEMBy10);
    EXPECT_EQ(theSurvey().EMCutoff, 2.5);
    EXPECT_EQ(theSurvey().MinDistance, 7.5);
    EXPECT_TRUE(theSurvey().NegateEM && theSurvey().DivideEMBy10);
    expectSurveyUntouched();
}

TEST_F(ImportControl, CancelledLeavesEverythingAsItWas) {
    for (int way = 0; way < 2; ++way) {
        window.show();
        type(*window.Text1, u"5"_s);
        type(*window.Text2, u"5"_s);
        click(*window.Option3);
        if (way == 0)
            click(*window.Command2);
        else
            QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(timesChosen, 0);
        expectSurveyUntouched();
        EXPECT_EQ(theSurvey().EMCutoff, -1);
        EXPECT_EQ(theSurvey().MinDistance, 3);
    }
}

TEST_F(ImportControl, ShowsInLightBlueWhatIsChosen) {
    const auto expectBlue = [this](std::initializer_list<const QWidget*> blue) {
        for (const QWidget* widget :
             std::initializer_list<const QWidget*>{window.Option1, window.Option2, window.Check1})
            EXPECT_EQ(colourOf(*widget),
                      captionColour(std::ranges::count(blue, widget) ? kLightBlue : kBlack, window));
    };
    expectBlue({window.Option1});
    click(*window.Option2);
    click(*window.Check1);
    expectBlue({window.Option2, window.Check1});
    click(*window.Check1);
    expectBlue({window.Option2});
}

}  // namespace tessel
