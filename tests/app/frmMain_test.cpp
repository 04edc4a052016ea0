// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"

#include "app/survey.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "support/ExpectedBoxes.h"

namespace tessel {

namespace {

class MainWindow : public testing::Test {
  protected:
    ExpectedBoxes boxes;
    frmMain window;
};

}  // namespace

TEST_F(MainWindow, WritesItsBannerInDarkBlue) {
    EXPECT_EQ(window.Label20->palette().color(QPalette::WindowText), captionColour(kBlue, window));
    EXPECT_NE(captionColour(kBlue, window), captionColour(kBlack, window));
}

TEST_F(MainWindow, WritesItsBannerOneCharacterATick) {
    EXPECT_EQ(window.findChild<QLabel*>(u"Label20"_s)->text(), u""_s);
    QSignalSpy ticks(window.findChild<QTimer*>(u"Timer1"_s), &QTimer::timeout);
    EXPECT_EQ(window.findChild<QTimer*>(u"Timer1"_s)->interval(), 50);
    ASSERT_TRUE(ticks.wait());
    EXPECT_EQ(window.Label20->text(), u"O"_s);
    ASSERT_TRUE(ticks.wait());
    EXPECT_EQ(window.Label20->text(), u"Or"_s);
    const QString banner = u"Orvane Kettle Soils Lab:  VARN Utility Software"_s;
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.Label20->text() == banner; }, 10000));
    EXPECT_FALSE(window.findChild<QTimer*>(u"Timer1"_s)->isActive());
    EXPECT_EQ(ticks.count(), banner.size());
}

TEST_F(MainWindow, ClosesWhenTheExitQuestionIsAnsweredWithYesOnly) {
    window.show();
    boxes.ask(false, kProgramExitQuestion);
    EXPECT_FALSE(window.close());
    for (const bool yes : {false, true}) {
        boxes.ask(yes, kProgramExitQuestion);
        window.mnuExit->trigger();
        EXPECT_EQ(window.isVisible(), !yes);
    }
}

// The program's end closes what is still open once more: the question must not come a second time.
TEST_F(MainWindow, AsksOnceAndEndsTheProgramWhileItRuns) {
    window.show();
    QWidget helpBesideIt;
    helpBesideIt.show();
    boxes.ask(true, kProgramExitQuestion);
    QTimer::singleShot(0, &window, [this] { window.mnuExit->trigger(); });
    QTimer::singleShot(5000, &window, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(MainWindow, SaysHowToBeginWhileNoChartIsShown) {
    window.show();
    EXPECT_TRUE(window.lblInvitation->isVisible());
    EXPECT_TRUE(window.lblInvitation->text().contains(u"Import a Trimble/EM-38 Sensor file"));
    auto* const chart = new QWidget;
    window.addChart(chart);
    EXPECT_FALSE(chart->isVisible());
    chart->show();
    EXPECT_FALSE(window.lblInvitation->isVisible());
    window.hidePlots();
    EXPECT_TRUE(window.lblInvitation->isVisible());
}

TEST_F(MainWindow, AsksForTheDescriptionOnlyWhenItCanBeSeen) {
    int asked = 0;
    window.describeWith([&asked] {
        ++asked;
        return SurveyDescription{"headline " + std::to_string(asked),
                                 {{DescriptionKind::kFact, "Sites", "Sites", std::to_string(asked), {}, {}}}};
    });
    auto* const chart = new QWidget;
    window.addChart(chart);
    window.show();
    EXPECT_EQ(asked, 0) << "before the first import the area says how to begin";
    window.descriptionChanged();
    EXPECT_EQ(window.lblInvitation->text(), u"headline 1"_s);
    chart->show();
    for (int i = 0; i < 10; ++i)
        window.descriptionChanged();
    EXPECT_EQ(asked, 1) << "while a plot hides it";
    window.hidePlots();
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(window.lblInvitation->text(), u"headline 2"_s);
    EXPECT_EQ(window.findChild<QLabel*>(u"lblSummarySites"_s)->text(), u"2"_s);
    chart->show();
    window.hidePlots();
    EXPECT_EQ(asked, 2) << "nothing has changed";
}

TEST_F(MainWindow, SpeaksTheWholeDescriptionAsOneText) {
    window.describeWith([] {
        return SurveyDescription{"5 sites in 2 rows",
                                 {{DescriptionKind::kWarning, "Warning", "Attention", "Look!", {}, {}},
                                  {DescriptionKind::kRange, "X", "X", "1.00", "2.00", "m"}}};
    });
    window.show();
    window.descriptionChanged();
    EXPECT_EQ(window.summaryArea->accessibleName(),
              u"5 sites in 2 rows\nAttention: Look!\nX: 1.00 to 2.00 m"_s);
    EXPECT_TRUE(window.summaryArea->focusPolicy() & Qt::TabFocus);
}

TEST_F(MainWindow, ScrollsADescriptionThatIsLongerThanTheWindow) {
    window.describeWith([] {
        SurveyDescription description{"headline", {}};
        for (int i = 0; i < 100; ++i)
            description.lines.push_back(
                {DescriptionKind::kWarning, "Warning", "Attention", std::string(200, 'w'), {}, {}});
        return description;
    });
    window.resize(500, 300);
    window.show();
    window.descriptionChanged();
    EXPECT_LE(window.height(), 300);
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.summaryArea->verticalScrollBar()->maximum() > 300; }));
}

TEST_F(MainWindow, GoesOnWhenTheSurveyCannotBeDescribed) {
    window.describeWith([]() -> SurveyDescription { throw std::bad_alloc(); });
    window.show();
    boxes.tellBeginning(u""_s);
    window.descriptionChanged();
}

TEST_F(MainWindow, ClearScreenHidesChartsAndEditorsAndSaysSo) {
    window.show();
    window.menusFollow(MenuEvent::kSitesImported);
    auto* const chart = new QWidget;
    auto* const frame = new QWidget;
    window.addChart(chart);
    window.addEditor(frame);
    EXPECT_FALSE(window.editorArea->isVisible());
    chart->show();
    frame->show();
    EXPECT_TRUE(window.editorArea->isVisible());
    QSignalSpy hidden(&window, &frmMain::plotsHidden);
    window.mnuClear->trigger();
    EXPECT_FALSE(chart->isVisible());
    EXPECT_FALSE(frame->isVisible());
    EXPECT_EQ(hidden.count(), 1);
}

}  // namespace tessel
