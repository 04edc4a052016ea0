// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmAdjustData.h"

#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/TextAtPaint.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

using Texts = std::vector<std::string>;

const Texts kNotAvailable{"n/a", "n/a", "n/a", "n/a", "n/a", "n/a"};

// The window on a survey, driven with mouse and keys.
class AdjustmentWindow : public testing::Test {
  protected:
    AdjustmentWindow() {
        surveyUnderTest() = surveyOfReadings({10, 20, 0, -4}, {1, 2, 3, 6});
        open();
    }

    void open() {
        window_ = std::make_unique<frmAdjustData>();
        changed_ = std::make_unique<QSignalSpy>(window_.get(), &frmAdjustData::readingsChanged);
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        QApplication::processEvents();
    }
    frmAdjustData& window() { return *window_; }
    // Chooses to scale by these factors.
    void typeFactors(const QString& factor1, const QString& factor2) {
        clickOn(window(), u"optScale"_s);
        typeInto(window(), u"txtScale1"_s, factor1);
        typeInto(window(), u"txtScale2"_s, factor2);
    }
    void compute() { QTest::mouseClick(window_->cmdCompute, Qt::LeftButton); }
    Texts em1() const { return figures(u"lble1%1"_s); }
    Texts em2() const { return figures(u"lble2%1"_s); }
    Texts figures(const QString& label) const {
        Texts texts;
        for (const QChar figure : u"nusmxz"_s)
            texts.push_back(window_->findChild<QLabel*>(label.arg(figure))->text().toStdString());
        return texts;
    }
    Texts relation() const {
        return {window_->lblRatio->text().toStdString(), window_->lblShift->text().toStdString()};
    }
    qsizetype changes() const { return changed_->count(); }
    QList<QWidget*> visibleEntries() const {
        QList<QWidget*> visible;
        for (QWidget* entry : QList<QWidget*>{window_->txtAdjEC1, window_->txtAdjEC2, window_->lblEM1,
                                              window_->txtScale1, window_->lblEM2, window_->txtScale2})
            if (entry->isVisible()) visible << entry;
        return visible;
    }
    void expectChosen(const QRadioButton* chosen) const {
        for (const QRadioButton* option : {window_->optAddEM1, window_->optAddEM2, window_->optScale}) {
            EXPECT_EQ(option->isChecked(), option == chosen) << option->objectName().toStdString();
            EXPECT_EQ(inkOf(*option), captionColour(option == chosen ? kLightBlue : kBlack, *option))
                << option->objectName().toStdString();
        }
    }

    ExpectedBoxes boxes_;

  private:
    std::unique_ptr<frmAdjustData> window_;
    std::unique_ptr<QSignalSpy> changed_;
};

}  // namespace

TEST_F(AdjustmentWindow, OpensReadyToAddToEM1) {
    expectChosen(window().optAddEM1);
    EXPECT_EQ(visibleEntries(), (QList<QWidget*>{window().txtAdjEC1}));
    EXPECT_TRUE(window().cmdCompute->isVisible());
    EXPECT_TRUE(window().txtAdjEC1->hasFocus());
    EXPECT_TRUE(window().optAddEM2->isEnabled());
    for (const QLineEdit* box :
         {window().txtAdjEC1, window().txtAdjEC2, window().txtScale1, window().txtScale2})
        EXPECT_TRUE(box->text().isEmpty());
    EXPECT_EQ(changes(), 0);
}

// By hand: EM1 10, 20, 0, -4: mean 26 / 4, squares about it 12.25 + 182.25 + 42.25 + 110.25 = 347, sd
// sqrt(347 / 3); EM2 1, 2, 3, 6: mean 3, squares 4 + 1 + 0 + 9, sd sqrt(14 / 3); products -7 - 13.5 + 0
// - 31.5 = -52, so b = -52 / 347 = -0.14986 and -a = -(3 + 0.14986 * 6.5) = -3.974.
TEST_F(AdjustmentWindow, ShowsTheStatisticsOfBothReadings) {
    EXPECT_EQ(em1(), (Texts{"4", "6.50", "10.75", "-4.00", "20.00", "2"}));
    EXPECT_EQ(em2(), (Texts{"4", "3.00", "2.16", "1.00", "6.00", "0"}));
    EXPECT_EQ(relation(), (Texts{"-0.150", "-4.0"}));
}

TEST_F(AdjustmentWindow, WithOneReadingShowsNotAvailableForEM2AndCannotAddToIt) {
    surveyUnderTest() = surveyOfReadings({10, 20, 0, -4});
    open();
    EXPECT_EQ(em1(), (Texts{"4", "6.50", "10.75", "-4.00", "20.00", "2"}));
    EXPECT_EQ(em2(), kNotAvailable);
    EXPECT_EQ(relation(), (Texts{"n/a", "n/a"}));
    EXPECT_FALSE(window().optAddEM2->isEnabled());
    QTest::mouseClick(window().optAddEM2, Qt::LeftButton, {}, {8, window().optAddEM2->height() / 2});
    expectChosen(window().optAddEM1);
}

TEST_F(AdjustmentWindow, ChoosingAnOptionShowsAndEmptiesItsBoxes) {
    typeInto(window(), u"txtAdjEC1"_s, u"5"_s);
    clickOn(window(), u"optAddEM2"_s);
    expectChosen(window().optAddEM2);
    EXPECT_EQ(visibleEntries(), (QList<QWidget*>{window().txtAdjEC2}));
    EXPECT_TRUE(window().txtAdjEC2->hasFocus());
    EXPECT_TRUE(window().txtAdjEC1->text().isEmpty());
    typeInto(window(), u"txtAdjEC2"_s, u"6"_s);

    clickOn(window(), u"optScale"_s);
    expectChosen(window().optScale);
    EXPECT_EQ(visibleEntries(),
              (QList<QWidget*>{window().lblEM1, window().txtScale1, window().lblEM2, window().txtScale2}));
    EXPECT_TRUE(window().txtScale1->hasFocus());
    EXPECT_EQ(window().txtScale1->text(), u"1.000"_s);
    EXPECT_EQ(window().txtScale2->text(), u"1.000"_s);
    EXPECT_TRUE(window().txtAdjEC2->text().isEmpty());

    clickOn(window(), u"optAddEM1"_s);
    expectChosen(window().optAddEM1);
    EXPECT_EQ(visibleEntries(), (QList<QWidget*>{window().txtAdjEC1}));
    EXPECT_TRUE(window().txtAdjEC1->hasFocus());
    EXPECT_TRUE(window().txtScale1->text().isEmpty());
    EXPECT_TRUE(window().txtScale2->text().isEmpty());
    EXPECT_TRUE(window().cmdCompute->isVisible());
}

TEST_F(AdjustmentWindow, ScalingOneReadingHidesTheBoxOfEM2ButFillsIt) {
    surveyUnderTest() = surveyOfReadings({10, 20, 0, -4});
    open();
    clickOn(window(), u"optScale"_s);
    EXPECT_EQ(visibleEntries(), (QList<QWidget*>{window().lblEM1, window().txtScale1}));
    EXPECT_EQ(window().txtScale2->text(), u"1.000"_s);
    typeInto(window(), u"txtScale1"_s, u"2"_s);
    compute();
    EXPECT_EQ(em1(), (Texts{"4", "13.00", "21.51", "-8.00", "40.00", "2"}));
    EXPECT_EQ(em2(), kNotAvailable);
    EXPECT_EQ(changes(), 1);
}

TEST_F(AdjustmentWindow, ArrowKeysAndMnemonicsChooseOptionsToo) {
    window().optAddEM1->setFocus();
    QTest::keyClick(window().optAddEM1, Qt::Key_Down);
    expectChosen(window().optAddEM2);
    QApplication::processEvents();
    EXPECT_TRUE(window().txtAdjEC2->hasFocus());
    QTest::keyClick(window().txtAdjEC2, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().optScale->isChecked(); }));
    expectChosen(window().optScale);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().txtScale1->hasFocus(); }));
}

TEST_F(AdjustmentWindow, AddsAConstantToEM1AndPaintsTheNewFiguresAtOnce) {
    typeInto(window(), u"txtAdjEC1"_s, u"-2.5"_s);
    QApplication::processEvents();
    const TextAtPaint mean(*window().lble1u, *window().lble1u);
    const TextAtPaint ratio(*window().lblRatio, *window().lblRatio);
    compute();  // without waiting for the events that follow
    EXPECT_EQ(mean.texts, QStringList{u"4.00"_s});
    EXPECT_EQ(ratio.texts, QStringList{u"-0.150"_s});
    EXPECT_EQ(readingsOf(theSurvey(), kEM1), (std::vector<double>{7.5, 17.5, -2.5, -6.5}));
    EXPECT_EQ(em1(), (Texts{"4", "4.00", "10.75", "-6.50", "17.50", "2"}));
    EXPECT_EQ(theSurvey().EMAdjustTotalA, -2.5);
    EXPECT_EQ(theSurvey().EMAdjustTotalB, 0);
    EXPECT_EQ(changes(), 1);
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(AdjustmentWindow, ARefusedFactorOfEM2LeavesEM1ScaledAndTellsSo) {
    const Texts figures = em1();
    typeFactors(u"2"_s, u"0"_s);
    boxes_.tell(u"Error! EM2 Scale factor must be >= 0.01"_s);
    compute();
    EXPECT_EQ(readingsOf(theSurvey(), kEM1), (std::vector<double>{20, 40, 0, -8}));
    EXPECT_EQ(readingsOf(theSurvey(), kEM2), (std::vector<double>{1, 2, 3, 6}));
    EXPECT_EQ(em1(), figures);
    EXPECT_EQ(changes(), 1);
    EXPECT_EQ(window().lblNotice->text(), u"Every EM1 reading has been multiplied by 2."_s);
    EXPECT_EQ(window().lblTotals->text(), u"Since the import: EM1 x 2, EM2 unchanged"_s);
    EXPECT_TRUE(window().cmdFinished->hasFocus()) << "a second Enter would scale EM1 again";

    typeInto(window(), u"txtScale1"_s, u"x"_s);
    boxes_.tell(u"Error! Non-numeric EM1 scale factor detected."_s);
    compute();
    EXPECT_EQ(window().lblNotice->text(), QString());
    EXPECT_EQ(window().lblTotals->text(), u"Since the import: EM1 x 2, EM2 unchanged"_s);
    EXPECT_FALSE(window().cmdFinished->hasFocus()) << "nothing has been done that could be done twice";
    EXPECT_EQ(em1(), figures);
}

TEST_F(AdjustmentWindow, AConstantEM1IsReportedOnceAndLeavesTheWindowUsable) {
    surveyUnderTest() = surveyOfReadings({7, 7, 7}, {1, 2, 3});
    boxes_.tell(u"Division by zero"_s);
    open();
    EXPECT_EQ(boxes_.pending(), 0);
    EXPECT_EQ(em1(), (Texts{"3", "7.00", "0.00", "7.00", "7.00", "0"}));
    EXPECT_EQ(em2(), (Texts{"3", "2.00", "1.00", "1.00", "3.00", "0"}));
    EXPECT_EQ(relation(), (Texts{"n/a", "n/a"}));

    typeInto(window(), u"txtAdjEC1"_s, u"1"_s);
    boxes_.tell(u"Division by zero"_s);
    compute();
    EXPECT_EQ(boxes_.pending(), 0);
    EXPECT_EQ(window().lblNotice->text(), u"1 has been added to every EM1 reading."_s);
    EXPECT_EQ(window().lblTotals->text(), u"Since the import: EM1 + 1, EM2 unchanged"_s);
    EXPECT_TRUE(window().cmdFinished->hasFocus());
    EXPECT_EQ(em1(), (Texts{"3", "8.00", "0.00", "8.00", "8.00", "0"}));
    EXPECT_EQ(theSurvey().EMAdjustTotalA, 1);
    EXPECT_EQ(changes(), 1);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(AdjustmentWindow, OneSiteHasNoDeviationWhichIsReportedOnce) {
    surveyUnderTest() = surveyOfReadings({-3}, {8});
    boxes_.tell(u"Division by zero"_s);
    open();
    EXPECT_EQ(em1(), (Texts{"1", "-3.00", "n/a", "-3.00", "-3.00", "1"}));
    EXPECT_EQ(em2(), (Texts{"1", "8.00", "n/a", "8.00", "8.00", "0"}));
    EXPECT_EQ(relation(), (Texts{"n/a", "n/a"}));
    EXPECT_TRUE(window().optAddEM2->isEnabled());
    window().hide();
    window().show();
    QApplication::processEvents();
}

TEST_F(AdjustmentWindow, AnOverflowInEM2TellsOfTheScaledEM1) {
    typeFactors(u"2"_s, u"1e308"_s);
    boxes_.tell(u"Overflow"_s);
    compute();
    EXPECT_EQ(readingsOf(theSurvey(), kEM1), (std::vector<double>{20, 40, 0, -8}));
    EXPECT_EQ(changes(), 1);
}

TEST_F(AdjustmentWindow, TabFollowsTheEyeAndEnterComputes) {
    EXPECT_TRUE(window().cmdCompute->isDefault());
    clickOn(window(), u"optScale"_s);
    const QList<QWidget*> order{window().txtScale1, window().txtScale2, window().cmdCompute,
                                window().cmdFinished, window().cmdHelp};
    for (QWidget* expected : order) {
        EXPECT_EQ(QApplication::focusWidget(), expected);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

TEST_F(AdjustmentWindow, SaysThatAnAdjustmentHasBeenMadeBeforeTheErrorThatFollows) {
    surveyUnderTest() = surveyOfReadings({-3});
    boxes_.tell(u"Division by zero"_s);
    open();
    typeInto(window(), u"txtAdjEC1"_s, u"2.5"_s);
    QApplication::processEvents();
    const TextAtPaint notice(*window().lblNotice, *window().lblNotice);
    boxes_.tell(u"Division by zero"_s);
    compute();
    EXPECT_EQ(notice.texts, QStringList{u"2.5 has been added to every EM1 reading."_s});
    EXPECT_EQ(window().lblTotals->text(), u"Since the import: EM1 + 2.5"_s);
}

TEST_F(AdjustmentWindow, ShowsWhatHasBeenAppliedSinceTheImportAlsoWhenOpenedAgain) {
    EXPECT_EQ(window().lblTotals->text(), u"Since the import: EM1 unchanged, EM2 unchanged"_s);
    EXPECT_EQ(window().lblNotice->text(), QString());
    clickOn(window(), u"optAddEM2"_s);
    typeInto(window(), u"txtAdjEC2"_s, u"-2.5"_s);
    compute();
    EXPECT_EQ(window().lblNotice->text(), u"-2.5 has been added to every EM2 reading."_s);
    typeFactors(u"2"_s, u"0.5"_s);
    compute();
    EXPECT_EQ(window().lblNotice->text(),
              u"Every EM1 reading has been multiplied by 2. Every EM2 reading has been multiplied by 0.5."_s);
    EXPECT_EQ(window().lblTotals->text(), u"Since the import: EM1 x 2, EM2 x 0.5 - 1.25"_s);
    window().close();
    open();
    EXPECT_EQ(window().lblTotals->text(), u"Since the import: EM1 x 2, EM2 x 0.5 - 1.25"_s);
}

TEST_F(AdjustmentWindow, IsFinishedByASecondEnterUnlessAnotherNumberIsTyped) {
    for (const QString& shift : {u"2"_s, u"3"_s}) {
        typeInto(window(), u"txtAdjEC1"_s, shift);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(window().isVisible());
        EXPECT_TRUE(window().cmdFinished->hasFocus());
    }
    EXPECT_EQ(theSurvey().EMAdjustTotalA, 5);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(readingsOf(theSurvey(), kEM1), (std::vector<double>{15, 25, 5, 1}));
}

}  // namespace tessel
