// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmDataControl.h"

#include "base/palette16.h"
#include "desktop/CaptionColour.h"
#include "journal/journal.h"
#include "support/ImportTest.h"

#include <QTest>

using namespace Qt::StringLiterals;

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

    QColor colourOf(const QWidget& widget) const { return widget.palette().color(QPalette::WindowText); }

    frmDataControl window;
    TrimbleOptions chosen;
    int timesChosen = 0;
};

}  // namespace

TEST_F(ImportControl, OpensWithItsDefaultsAndTexts) {
    EXPECT_EQ(window.windowTitle(), u"Import a Trimble Sensor File"_s);
    EXPECT_EQ(window.Text1->text(), u"-10"_s);
    EXPECT_EQ(window.Text2->text(), QString());
    EXPECT_TRUE(window.Option1->isChecked());
    EXPECT_FALSE(window.Check1->isChecked());
    EXPECT_FALSE(window.Check2->isChecked());
    const auto caption = [](QString text) { return text.remove(u'&'); };
    EXPECT_EQ(window.lblHeading->text(), u"Please adjust default data record control values as necessary:"_s);
    EXPECT_EQ(caption(window.lblEMCutoff->text()), u"Minimum EMv and/or EMh signal value:"_s);
    EXPECT_EQ(caption(window.lblMinDistance->text()), u"Min distance between adjacent rows:"_s);
    EXPECT_EQ(window.fraDistance->title(), u"Calculate distance between survey sites using:"_s);
    EXPECT_EQ(caption(window.Option1->text()), u"True Distance"_s);
    EXPECT_EQ(caption(window.Option2->text()), u"X Distance  (works best for N-S runs)"_s);
    EXPECT_EQ(caption(window.Option3->text()), u"Y Distance  (works best for E-W runs)"_s);
    EXPECT_EQ(caption(window.Check1->text()), u"Negate sign of EM-38 signal data:"_s);
    EXPECT_EQ(caption(window.Check2->text()), u"Change scale from 1000 mS/m to 100 mS/m:"_s);
    EXPECT_EQ(window.Command2->text(), u"Cancel"_s);
}

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

TEST_F(ImportControl, RefusesTextsThatAreNoNumbers) {
    refuse(u"abc"_s, u"5"_s, kNonNumeric);
    EXPECT_TRUE(window.Text1->hasFocus());
    EXPECT_EQ(window.Text1->selectedText(), u"abc"_s);
    refuse(u"1"_s, u"abc"_s, kNonNumeric);
    refuse(u""_s, u"5"_s, kNonNumeric);
    refuse(u"1,5"_s, u"5"_s, kNonNumeric);
}

TEST_F(ImportControl, RefusesANegativeDistance) {
    refuse(u"-10"_s, u"-1"_s, u"Error: Minimum distance must be > 0"_s);
    EXPECT_EQ(theSurvey().MinDistance, -1);
    refuse(u"-10"_s, u"-1e-9"_s, u"Error: Minimum distance must be > 0"_s);
}

TEST_F(ImportControl, StoresWhatItRefuses) {
    window.Check1->setChecked(true);
    refuse(u"12 mS/m"_s, u"-7"_s, kNonNumeric);
    EXPECT_EQ(theSurvey().EMCutoff, 12);
    EXPECT_EQ(theSurvey().MinDistance, -7);
    EXPECT_EQ(theSurvey().MinLineLength, 1);
    EXPECT_TRUE(theSurvey().NegateEM);
    EXPECT_FALSE(theSurvey().DivideEMBy10);
    refuse(u"5"_s, u" 2.5 m"_s, kNonNumeric);
    EXPECT_EQ(theSurvey().EMCutoff, 5);
    EXPECT_EQ(theSurvey().MinDistance, 2.5);
    refuse(u"abc"_s, u"x"_s, kNonNumeric);
    EXPECT_EQ(theSurvey().EMCutoff, 0);
    EXPECT_EQ(theSurvey().MinDistance, 0);
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
    const QColor blue = captionColour(kLightBlue, window);
    const QColor black = captionColour(kBlack, window);
    EXPECT_EQ(colourOf(*window.Option1), blue);
    EXPECT_EQ(colourOf(*window.Option2), black);
    EXPECT_EQ(colourOf(*window.Check1), black);
    click(*window.Option2);
    click(*window.Check1);
    EXPECT_EQ(colourOf(*window.Option1), black);
    EXPECT_EQ(colourOf(*window.Option2), blue);
    EXPECT_EQ(colourOf(*window.Check1), blue);
    click(*window.Check1);
    EXPECT_EQ(colourOf(*window.Check1), black);
}

}  // namespace tessel
