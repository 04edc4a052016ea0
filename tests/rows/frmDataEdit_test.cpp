// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/frmDataEdit.h"

#include "desktop/CaptionColour.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

Survey fourRows() {
    Survey survey = surveyWithRows({{0, 0, 1, 2, 1, 1},
                                    {1, 0, 1, 2, 1, 2},
                                    {1, 9, 1, 2, 2, 3},
                                    {2, 9, 1, 2, 2, 4},
                                    {50, 9, 1, 2, 3, 5},
                                    {51, 30, 1, 2, 4, 6}});
    survey.MinDistance = 8;
    return survey;
}

class RowDialog : public testing::Test {
  protected:
    RowDialog() {
        surveyUnderTest() = fourRows();
        open();
    }

    void open() {
        dialog_ = std::make_unique<frmDataEdit>(&main_);
        changed_ = std::make_unique<QSignalSpy>(dialog_.get(), &frmDataEdit::surveyChanged);
        recalculated_ = std::make_unique<QSignalSpy>(dialog_.get(), &frmDataEdit::rowsRecalculated);
        noSitesLeft_ = std::make_unique<QSignalSpy>(dialog_.get(), &frmDataEdit::noSitesLeft);
        dialog_->show();
    }
    void activate() {
        dialog_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
    }
    void comeToTheFront() {
        QEvent activation(QEvent::ActivationChange);
        QApplication::sendEvent(dialog_.get(), &activation);
    }
    void choose(QRadioButton* option) {
        QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(8, option->height() / 2));
    }
    void enter(QRadioButton* option, const QString& first, const QString& second = {}) {
        choose(option);
        boxOf(option)->setText(first);
        if (option == dialog_->Option1) dialog_->Text3->setText(second);
    }
    void press() { QTest::mouseClick(dialog_->Command1, Qt::LeftButton); }
    QLineEdit* boxOf(const QRadioButton* option) const {
        if (option == dialog_->Option1) return dialog_->Text2;
        if (option == dialog_->Option2) return dialog_->Text4;
        if (option == dialog_->Option3) return dialog_->Text1;
        return option == dialog_->Option4 ? dialog_->Text5 : dialog_->Text6;
    }
    QList<QRadioButton*> options() const {
        return {dialog_->Option1, dialog_->Option2, dialog_->Option3, dialog_->Option4, dialog_->Option5};
    }
    QStringList visibleInputs() const {
        QStringList names;
        for (const QLineEdit* box : dialog_->findChildren<QLineEdit*>())
            if (box->isVisible()) names << box->objectName();
        names.sort();
        return names;
    }
    QStringList visibleLabels() const {
        QStringList texts;
        for (const QLabel* label : {dialog_->lblText2, dialog_->lblText3, dialog_->lblText4,
                                    dialog_->lblText1, dialog_->lblText5, dialog_->lblText6})
            if (label->isVisible()) texts << label->text().remove(u'&');
        return texts;
    }
    qsizetype visibleUnits() const {
        const QList<QLabel*> units{dialog_->lblUnit1, dialog_->lblUnit5, dialog_->lblUnit6};
        return std::count_if(units.begin(), units.end(),
                             [](const QLabel* unit) { return unit->isVisible() && unit->text() == u"m"_s; });
    }
    void expectJustOpened() const {
        EXPECT_TRUE(dialog_->isVisible());
        EXPECT_EQ(visibleInputs(), QStringList());
        EXPECT_EQ(visibleLabels(), QStringList());
        EXPECT_EQ(visibleUnits(), 0);
        for (const QLineEdit* box : dialog_->findChildren<QLineEdit*>())
            EXPECT_EQ(box->text(), QString());
        for (const QRadioButton* option : options())
            EXPECT_FALSE(option->isChecked());
        EXPECT_EQ(main_.findChildren<frmDataEdit*>().size(), 1);
    }
    // The message comes, nothing changes, and the dialog is as it opened.
    void expectRefused(QRadioButton* option, const QString& first, const QString& second,
                       const QString& message) {
        SCOPED_TRACE(first.toStdString() + " " + second.toStdString());
        const Survey before = theSurvey();
        ExpectedBoxes boxes;
        enter(option, first, second);
        boxes.tell(message);
        press();
        EXPECT_EQ(differences(theSurvey(), before), "");
        EXPECT_EQ(changed_->count(), 0);
        expectJustOpened();
    }

    QWidget main_;
    std::unique_ptr<frmDataEdit> dialog_;
    std::unique_ptr<QSignalSpy> changed_, recalculated_, noSitesLeft_;
};

// Sites 5 m apart: a row each for a smaller distance.
Survey manyGaps() {
    Survey survey = surveyAlongX(std::vector<double>(300, 5), 100);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        survey.SiteData(kRow, i) = 1;
    survey.NumRows = survey.RowIndex = 1;
    return survey;
}

const QString kNotNumeric = u"Invalid Input: you have to enter a numeric value"_s;

}  // namespace

TEST_F(RowDialog, AnOptionShowsItsInputsAndHidesTheOthers) {
    const QList<std::tuple<QRadioButton*, QStringList, QStringList>> expected = {
        {dialog_->Option1, {u"Text2"_s, u"Text3"_s}, {u"Row #1:"_s, u"Row #2:"_s}},
        {dialog_->Option2, {u"Text4"_s}, {u"Row:"_s}},
        {dialog_->Option3, {u"Text1"_s}, {u"Enter the new true distance value:"_s}},
        {dialog_->Option4, {u"Text5"_s}, {u"Enter the new X distance value:"_s}},
        {dialog_->Option5, {u"Text6"_s}, {u"Enter the new Y distance value:"_s}}};
    ASSERT_NO_FATAL_FAILURE(activate());
    for (const auto& [option, boxes, labels] : expected) {
        choose(option);
        EXPECT_EQ(visibleInputs(), boxes);
        EXPECT_EQ(visibleLabels(), labels);
        EXPECT_EQ(visibleUnits(), labels.first().contains(u"distance") ? 1 : 0);
        EXPECT_EQ(dialog_->focusWidget(), boxOf(option));
        for (const QRadioButton* other : options())
            EXPECT_EQ(inkOf(*other), captionColour(other == option ? kLightBlue : kBlack, *other));
    }
}

TEST_F(RowDialog, WithNothingChosenDoesNothing) {
    const Survey before = theSurvey();
    const ExpectedBoxes boxes;
    press();
    EXPECT_EQ(differences(theSurvey(), before), "");
    expectJustOpened();
}

TEST_F(RowDialog, RefusesWhatIsNoPairOfRowsNoRowAndNoDistance) {
    const QString notNumeric = u"Invalid Input: you have to enter numeric value(s)"_s;
    const QString outOfRange = u"Invalid Input: row number(s) out of range"_s;
    const QString notConsecutive = u"Invalid Input: you have to enter two consecutive numbers"_s;
    const std::tuple<QString, QString, QString> pairs[] = {
        {u"a"_s, u"2"_s, notNumeric}, {u"4"_s, u"5"_s, outOfRange}, {u"1"_s, u"3"_s, notConsecutive}};
    for (const auto& [first, second, message] : pairs)
        expectRefused(dialog_->Option1, first, second, message);
    for (const QString& row : {u"x"_s, u""_s})
        expectRefused(dialog_->Option2, row, {}, kNotNumeric);
    for (const QString& row : {u"0"_s, u"5"_s, u"1e99"_s})
        expectRefused(dialog_->Option2, row, {}, u"Invalid Input: row number out of range"_s);
    for (QRadioButton* option : {dialog_->Option3, dialog_->Option4, dialog_->Option5}) {
        for (const QString& distance : {u"x"_s, u""_s, u"1,5"_s})
            expectRefused(option, distance, {}, kNotNumeric);
        expectRefused(option, u"-1"_s, {}, u"Invalid Input: the number has to be greater than zero"_s);
    }
}

TEST_F(RowDialog, DeletesARowAndClosesOnEnter) {
    const ExpectedBoxes boxes;
    ASSERT_NO_FATAL_FAILURE(activate());
    choose(dialog_->Option2);
    QTest::keyClicks(dialog_->Text4, u"2"_s);
    QTest::keyClick(dialog_->Text4, Qt::Key_Return);
    EXPECT_EQ(readingsOf(theSurvey(), kRow), (std::vector<double>{1, 1, 2, 3}));
    EXPECT_EQ(theSurvey().NumSites, 4);
    EXPECT_EQ(theSurvey().SiteData(kX, 2), 50);
    EXPECT_EQ(theSurvey().SiteID[2], 5);
    EXPECT_EQ(theSurvey().TrueDist.size(), 5u);
    EXPECT_EQ(changed_->count(), 1);
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(noSitesLeft_->count(), 0);
}

TEST_F(RowDialog, SaysThatNoSitesAreLeftWhenTheOnlyRowIsDeleted) {
    surveyUnderTest() = surveyWithRows({{1, 1, 1, 1, 1}, {2, 2, 2, 2, 1}});
    ExpectedBoxes boxes;
    enter(dialog_->Option2, u"1"_s);
    boxes.tell(u"There is no more point left in the file!"_s);
    press();
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(theSurvey().NumRows, 0);
    EXPECT_EQ(changed_->count(), 1);
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(noSitesLeft_->count(), 1);
}

TEST_F(RowDialog, RecalculatesByEachMeasureAndSaysSo) {
    const QList<std::tuple<int, int, std::vector<double>>> expected = {
        {2, 1, {1, 1, 2, 2, 3, 4}}, {3, 2, {1, 1, 1, 1, 2, 2}}, {4, 3, {1, 1, 2, 2, 2, 3}}};
    for (const auto& [option, mode, rows] : expected) {
        surveyUnderTest() = fourRows();
        open();
        const ExpectedBoxes boxes;
        enter(options()[option], u"7.5"_s);
        press();
        EXPECT_EQ(readingsOf(theSurvey(), kRow), rows);
        EXPECT_EQ(theSurvey().DistanceMode, mode);
        EXPECT_EQ(theSurvey().MinDistance, 7.5);
        EXPECT_EQ(changed_->count(), 1);
        EXPECT_FALSE(dialog_->isVisible());
        EXPECT_EQ(recalculated_->count(), 1);
    }
}

TEST_F(RowDialog, StaysOpenForAnotherDistanceWhenThereAreTooManyRows) {
    surveyUnderTest() = manyGaps();
    open();
    {
        ExpectedBoxes boxes;
        enter(dialog_->Option3, u"4"_s);
        boxes.tell(u"Too many rows: Please specify a larger distance value"_s);
        press();
    }
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(theSurvey().RowIndex, 251);
    EXPECT_EQ(theSurvey().NumRows, 1);
    EXPECT_EQ(theSurvey().MinDistance, 4);
    EXPECT_EQ(changed_->count(), 1);
    EXPECT_FALSE(dialog_->Option1->isEnabled());
    EXPECT_FALSE(dialog_->Option2->isEnabled());
    EXPECT_TRUE(dialog_->Option3->isEnabled());
    EXPECT_EQ(visibleInputs(), QStringList{u"Text1"_s});
    EXPECT_EQ(recalculated_->count(), 0);
    EXPECT_EQ(main_.findChildren<frmDataEdit*>().size(), 1);
    const ExpectedBoxes boxes;
    dialog_->Text1->setText(u"5"_s);
    press();
    EXPECT_EQ(theSurvey().NumRows, 1);
    EXPECT_EQ(theSurvey().RowIndex, 1);
    EXPECT_EQ(recalculated_->count(), 1);
    EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(RowDialog, IsForRecalculationOnlyAboveTheRowLimitWhichItFollowsWhenItComesToTheFront) {
    surveyUnderTest().RowIndex = 251;
    open();
    expectJustOpened();
    for (const QRadioButton* option : options())
        EXPECT_EQ(option->isEnabled(), option != dialog_->Option1 && option != dialog_->Option2);
    surveyUnderTest().RowIndex = 250;
    open();
    EXPECT_TRUE(dialog_->Option1->isEnabled());
    ASSERT_NO_FATAL_FAILURE(activate());
    choose(dialog_->Option2);
    surveyUnderTest().RowIndex = 300;
    comeToTheFront();
    expectJustOpened();
    EXPECT_FALSE(dialog_->Option2->isEnabled());
    surveyUnderTest().RowIndex = 4;
    comeToTheFront();
    EXPECT_TRUE(dialog_->Option2->isEnabled());
}

TEST_F(RowDialog, SaysWhenTheSurveyHasMeanwhileBeenEmptied) {
    choose(dialog_->Option3);
    dialog_->Text1->setText(u"5"_s);
    surveyUnderTest() = Survey{};
    ExpectedBoxes boxes;
    boxes.tell(u"There is no more point left in the file!"_s);
    press();
    EXPECT_EQ(theSurvey().NumRows, 0);
    EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(RowDialog, CancelAndEscapeChangeNothing) {
    const Survey before = theSurvey();
    for (const bool escape : {false, true}) {
        open();
        enter(dialog_->Option2, u"1"_s);
        if (escape)
            QTest::keyClick(dialog_.get(), Qt::Key_Escape);
        else
            QTest::mouseClick(dialog_->Command2, Qt::LeftButton);
        EXPECT_FALSE(dialog_->isVisible());
    }
    EXPECT_EQ(differences(theSurvey(), before), "");
}

TEST_F(RowDialog, SaysHowManyRowsATypedDistanceWouldGiveAndNothingOfWhatCouldNotBeTaken) {
    const QList<std::tuple<QRadioButton*, QString, QString>> expected = {
        {dialog_->Option3, u"7.5"_s, u"4 rows"_s},  {dialog_->Option4, u"7.5"_s, u"2 rows"_s},
        {dialog_->Option5, u"7.5"_s, u"3 rows"_s},  {dialog_->Option3, u"0"_s, u"5 rows"_s},
        {dialog_->Option3, u" 1e3 "_s, u"1 row"_s}, {dialog_->Option3, u"x"_s, u""_s},
        {dialog_->Option3, u"7.5"_s, u"4 rows"_s},  {dialog_->Option3, u"-1"_s, u""_s},
        {dialog_->Option4, u"7.5"_s, u"2 rows"_s},  {dialog_->Option4, u""_s, u""_s},
        {dialog_->Option3, u"7.5"_s, u"4 rows"_s},  {dialog_->Option3, u"1,5"_s, u""_s}};
    for (const auto& [option, distance, rows] : expected) {
        enter(option, distance);
        EXPECT_EQ(dialog_->lblRows->text(), rows) << distance.toStdString();
        EXPECT_EQ(inkOf(*dialog_->lblRows), captionColour(kBlack, *dialog_)) << distance.toStdString();
    }
    enter(dialog_->Option3, u"7.5"_s);
    choose(dialog_->Option1);
    EXPECT_EQ(dialog_->lblRows->text(), QString());
    surveyUnderTest() = manyGaps();
    open();
    enter(dialog_->Option3, u"4"_s);
    EXPECT_EQ(dialog_->lblRows->text(), u"more than 250 rows"_s);
    EXPECT_EQ(inkOf(*dialog_->lblRows), captionColour(kWarningColour, *dialog_));
    EXPECT_TRUE(dialog_->lblRows->isVisible());
}

TEST_F(RowDialog, LooksAtTheSurveyWhenAMeasureIsChosenAndAtNoKey) {
    choose(dialog_->Option4);
    surveyUnderTest().SiteData(kX, 5) = 1000;
    dialog_->Text5->setText(u"7.5"_s);
    EXPECT_EQ(dialog_->lblRows->text(), u"2 rows"_s);
    dialog_->followSurvey();
    EXPECT_EQ(dialog_->lblRows->text(), u"3 rows"_s);
    EXPECT_EQ(dialog_->Text5->text(), u"7.5"_s);
}

TEST_F(RowDialog, SaysWhatIsInForceAlsoWhenItComesToTheFront) {
    ASSERT_NO_FATAL_FAILURE(activate());
    const auto inForce = [this] { return dialog_->lblInForce->text(); };
    EXPECT_EQ(inForce(), u"In force now: 4 rows, minimum distance 8 m (true distance)"_s);
    surveyUnderTest().MinDistance = 99;
    comeToTheFront();
    EXPECT_EQ(inForce(), u"In force now: 4 rows, minimum distance 99 m (true distance)"_s);
    surveyUnderTest().chooseDistance(3);
    surveyUnderTest().MinDistance = 0.1;
    surveyUnderTest().NumRows = surveyUnderTest().RowIndex = 1;
    dialog_->followSurvey();
    EXPECT_EQ(inForce(), u"In force now: 1 row, minimum distance 0.1 m (Y distance)"_s);
    surveyUnderTest().RowIndex = 251;
    dialog_->followSurvey();
    EXPECT_EQ(inForce(), u"In force now: more than 250 rows, minimum distance 0.1 m (Y distance)"_s);
}

TEST_F(RowDialog, ForgetsRowNumbersThatMeanOtherRowsNow) {
    enter(dialog_->Option1, u"2"_s, u"3"_s);
    dialog_->followSurvey();
    EXPECT_EQ(dialog_->Text2->text(), u"2"_s) << "the rows are the same";
    surveyUnderTest().NumRows = surveyUnderTest().RowIndex = 3;
    dialog_->followSurvey();
    EXPECT_EQ(dialog_->Text2->text(), QString());
    EXPECT_EQ(dialog_->Text3->text(), QString());
    EXPECT_TRUE(dialog_->Option1->isChecked());
}

TEST_F(RowDialog, TellsEachDistanceThatIsTypedUntilItCloses) {
    std::vector<std::pair<int, double>> told;
    QObject::connect(
        dialog_.get(), &frmDataEdit::distanceTyped, dialog_.get(),
        [&](int mode, std::optional<double> distance) { told.emplace_back(mode, distance.value_or(-1)); });
    using Told = std::vector<std::pair<int, double>>;
    enter(dialog_->Option4, u"7.5"_s);
    EXPECT_EQ(told, (Told{{2, -1}, {2, 7.5}}));
    told.clear();
    dialog_->Text5->setText(u"7x"_s);
    choose(dialog_->Option2);
    EXPECT_EQ(told, (Told{{2, -1}, {0, -1}}));
    told.clear();
    enter(dialog_->Option3, u"9"_s);
    told.clear();
    QHideEvent minimised;
    QSpontaneKeyEvent::setSpontaneous(&minimised);
    qApp->notify(dialog_.get(), &minimised);
    EXPECT_EQ(told, Told{}) << "it comes back with what was typed";
    dialog_->close();
    EXPECT_EQ(told, (Told{{0, -1}}));
}

TEST_F(RowDialog, TakesADistanceThatIsChosenElsewhere) {
    QSignalSpy typed(dialog_.get(), &frmDataEdit::distanceTyped);
    enter(dialog_->Option2, u"2"_s);
    dialog_->enterDistance(3, 0.000125);
    EXPECT_TRUE(dialog_->Option5->isChecked());
    EXPECT_TRUE(dialog_->Text6->isVisible());
    EXPECT_EQ(dialog_->Text6->text(), u"0.000125"_s);
    dialog_->enterDistance(3, 12345678);
    EXPECT_EQ(dialog_->Text6->text(), u"12345678"_s);
    EXPECT_GT(typed.count(), 2);
}

TEST_F(RowDialog, ForeseesTheRowsOfADistanceUntilItCloses) {
    std::vector<std::vector<IndexRange>> told;
    QObject::connect(dialog_.get(), &frmDataEdit::rowsForeseen, dialog_.get(),
                     [&](const std::vector<IndexRange>& rows) { told.push_back(rows); });
    enter(dialog_->Option3, u"20"_s);
    EXPECT_EQ(told.back(), (std::vector<IndexRange>{{0, 4}, {4, 5}, {5, 6}}));
    dialog_->Text1->setText(u"2x"_s);
    EXPECT_TRUE(told.back().empty());
    enter(dialog_->Option3, u"99"_s);
    EXPECT_EQ(told.back(), (std::vector<IndexRange>{{0, 6}}));
    dialog_->close();
    EXPECT_TRUE(told.back().empty());
}

TEST_F(RowDialog, SaysWhenItComesUpAndGoes) {
    QSignalSpy shown(dialog_.get(), &frmDataEdit::shownChanged);
    dialog_->close();
    dialog_->show();
    EXPECT_EQ(shown.count(), 2);
    EXPECT_FALSE(shown.at(0).at(0).toBool());
    EXPECT_TRUE(shown.at(1).at(0).toBool());
}

}  // namespace tessel
