// SPDX-License-Identifier: GPL-3.0-or-later
// What the items of the main menu open, chosen in the whole program.
#include "support/RunningProgram.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

class MainMenu : public testing::Test, protected RunningProgram {
  protected:
    MainMenu() : RunningProgram(rowsAlongY(2)) {}

    // Opens the window, checks that it blocks the main window or does not, and closes it.
    void expectOpens(const QString& item, const QString& name, Qt::WindowModality modality) {
        chooseItem(*main, item);
        QWidget& window = shownWindow(name);
        EXPECT_EQ(window.windowModality(), modality) << name.toStdString();
        window.close();
        waitUntilClosed(name);
    }
};

}  // namespace

TEST_F(MainMenu, OpensModalWhatReliesOnTheSurveyAndBesideItWhatFollows) {
    expectOpens(u"mnuOpen"_s, u"frmDataControl"_s, Qt::WindowModal);
    expectOpens(u"mnuOpen2"_s, u"frmGeneric"_s, Qt::WindowModal);
    expectOpens(u"mnuSave"_s, u"frmOutput"_s, Qt::WindowModal);
    expectOpens(u"mnuIDEW"_s, u"frmClip"_s, Qt::WindowModal);
    expectOpens(u"mnuData"_s, u"frmDataEdit"_s, Qt::NonModal);
    expectOpens(u"mnuAdjust"_s, u"frmAdjustData"_s, Qt::WindowModal);
    expectOpens(u"mnuTurns"_s, u"frmTurns"_s, Qt::NonModal);
    expectOpens(u"mnuSuspects"_s, u"frmSuspects"_s, Qt::NonModal);
    expectOpens(u"mnuHelpAbout"_s, u"frmAbout"_s, Qt::WindowModal);
    expectOpens(u"mnuStat"_s, u"frmStat"_s, Qt::NonModal);
    expectOpens(u"mnuSigCorr"_s, u"frmSigCorrStruct"_s, Qt::NonModal);
    expectOpens(u"mnuHist"_s, u"frmHistForm"_s, Qt::NonModal);
}

TEST_F(MainMenu, ShowsThePlotsOneAtATime) {
    const std::pair<QString, QString> plots[] = {
        {u"mnuTrue_Dis"_s, u"Chart2D1"_s}, {u"mnuX"_s, u"Chart2D3"_s},     {u"mnuGrid"_s, u"Chart2D2"_s},
        {u"mnuY"_s, u"Chart2D4"_s},        {u"mnuX_Dis"_s, u"Chart2D1"_s}, {u"mnuY_Dis"_s, u"Chart2D1"_s}};
    for (const auto& [item, chart] : plots) {
        chooseItem(*main, item);
        EXPECT_TRUE(control(*main, chart).isVisible()) << item.toStdString();
        EXPECT_FALSE(main->lblInvitation->isVisible());
    }
    for (const QString& hidden : {u"Chart2D2"_s, u"Chart2D3"_s, u"Chart2D4"_s, u"Frame1"_s})
        EXPECT_FALSE(isVisible(hidden)) << hidden.toStdString();
    chooseItem(*main, u"mnuClear"_s);
    EXPECT_FALSE(isVisible(u"Chart2D1"_s));
    EXPECT_TRUE(main->lblInvitation->isVisible());
}

TEST_F(MainMenu, AsksBeforeItEndsWhenSitesOrRowsAreOthersThanThoseExported) {
    exportTo(folder / "out.txt");
    chooseItem(*main, u"mnuGrid"_s);
    EXPECT_TRUE(theSession().DataSaved) << "looking changes nothing";
    findRows(u"6"_s);
    EXPECT_TRUE(theSession().DataSaved) << "the same rows by another distance";
    inRowDialog(u"Option1"_s, {u"Text2"_s, u"Text3"_s}, {u"1"_s, u"2"_s});
    boxes.ask(false, kProgramExitQuestion);
    EXPECT_FALSE(main->close());
}

TEST_F(MainMenu, ShowsNoCorrelationOfOneReading) {
    surveyUnderTest().TwoEMColumns = false;
    boxes.tell(u"This option is only available when 2 signal data columns are present."_s);
    chooseItem(*main, u"mnuSigCorr"_s);
    EXPECT_FALSE(isShown(u"frmSigCorrStruct"_s));
}

TEST_F(MainMenu, ChangesThePrinterResolution) {
    const std::pair<QString, double> items[] = {
        {u"mnuDPI600"_s, 2.0}, {u"mnuDPI1200"_s, 4.0}, {u"mnuDPI300"_s, 1.0}};
    EXPECT_TRUE(main->mnuDPI300->isChecked());
    for (const auto& [item, scale] : items) {
        // Chosen twice it stays what it is.
        for (int time = 0; time < 2; ++time) {
            boxes.tell(
                u"The printer resolution has been temporarily redefined to be %1 DPI."_s.arg(item.mid(6)));
            chooseItem(*main, item);
            EXPECT_EQ(theSession().PrintScale, scale);
            for (const auto& other : items)
                EXPECT_EQ(main->menuItem(other.first)->isChecked(), other.first == item);
        }
    }
}

}  // namespace tessel
