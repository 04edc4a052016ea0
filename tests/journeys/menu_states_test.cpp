// SPDX-License-Identifier: GPL-3.0-or-later
// The states that the program goes through, and what can be chosen in each; and what the windows do to one
// another.
#include "app/frmMain.h"
#include "app/survey.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "plots/Chart2D.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/PlotWindow.h"
#include "support/UserDriver.h"
#include "support/temporary_folder.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <numeric>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const QString kTooManyRowsText = u"Too many rows: Please specify a larger distance value"_s;
const QString kNoPointLeft = u"There is no more point left in the file!"_s;
const char* const kFollowingItems[] = {"mnuSave",  "mnuInvokeIDE", "mnuIDEW", "mnuRow",     "mnuData",
                                       "mnuStat",  "mnuDistance",  "mnuGrid", "mnuSigCorr", "mnuHist",
                                       "mnuClear", "mnuAdjust",    "mnuEL"};

class MenuStates : public testing::Test {
  protected:
    MenuStates() {
        theSurvey() = Survey{};
        theSession() = Session{};
        theSession().AppDir = theSession().DataDir = folder.path();
        main = createProgram();
        main->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(main.get()));
    }
    ~MenuStates() override {
        setFileResponder({});
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window != main.get()) window->hide();
    }

    // Which of the items that follow the survey are enabled, in the order of kFollowingItems: "x" or ".".
    std::string enabled() const {
        std::string marks;
        for (const char* item : kFollowingItems)
            marks += main->menuItem(QString::fromLatin1(item))->isEnabled() ? 'x' : '.';
        return marks;
    }
    bool isVisible(const QString& name) const { return main->findChild<QWidget*>(name)->isVisible(); }

    // Columns: X 1-8, Y 9-16, EM1 17-24, EM2 25-32. Runs of sites 1 m apart, 10 m between runs.
    static std::string sensorFile(const std::vector<int>& runs) {
        std::string bytes;
        for (std::size_t run = 0; run < runs.size(); ++run)
            for (int k = 0; k < runs[run]; ++k) {
                char line[64];
                std::snprintf(line, sizeof line, "%8d%8d%8d%8d\n", k, int(run) * 10, 20 + k % 7,
                              30 + k % 5 * 2);
                bytes += line;
            }
        return bytes;
    }
    void importFixed(const std::string& bytes, int sites, const QString& minDistance = u"3"_s,
                     bool two = true) {
        writeFile(folder / "fixed.dat", bytes);
        const bool none = sites == 0;
        boxes.tell(
            u"There are  %1 valid records in this file.\n\nThere are  %2 records in this file\n"
            u"containing non-numeric or invalid numeric values."_s.arg(sites)
                    .arg(none ? 1 : 0) +
                (none ? u"\n\nPlease refer to the error_log.dat text file for more details."_s : QString()),
            u"VARN-Tesl File Import Message"_s);
        if (minDistance == u"0"_s) boxes.tell(kTooManyRowsText);
        TrimbleEntries entries;
        entries.file = fromPath(folder / "fixed.dat");
        entries.minDistance = minDistance;
        const auto set = [](QString(&field)[2], const QString& first, const QString& last) {
            field[0] = first;
            field[1] = last;
        };
        set(entries.x, u"1"_s, u"8"_s);
        set(entries.y, u"9"_s, u"16"_s);
        set(entries.em1, u"17"_s, u"24"_s);
        if (two) set(entries.em2, u"25"_s, u"32"_s);
        importTrimbleFile(*main, entries);
    }
    void importRuns(const std::vector<int>& runs) {
        importFixed(sensorFile(runs), std::accumulate(runs.begin(), runs.end(), 0));
    }
    // 260 sites, each a row.
    void importTooManyRows() { importFixed(sensorFile({260}), 260, u"0"_s); }

    void importGeneric(const std::string& bytes, int layout, const QStringList& messages) {
        writeFile(folder / "generic.txt", bytes);
        const QString path = fromPath(folder / "generic.txt");
        setFileResponder([path](const FileQuestion&) { return path; });
        chooseItem(*main, u"mnuOpen2"_s);
        QWidget& window = shownWindow(u"frmGeneric"_s);
        clickOn(window, u"cmdBrowse"_s);
        clickOn(window, u"optCF_%1"_s.arg(layout));
        boxes.tell(messages[0], u"VARN-Tessel File Import Message"_s);
        for (const QString& message : messages.mid(1))
            boxes.tell(message);
        clickOn(window, u"cmdImport"_s);
    }

    void inRowDialog(const QString& option, const QString& box, const QString& text) {
        QWidget& dialog = shownWindow(u"frmDataEdit"_s);
        clickOn(dialog, option);
        typeInto(dialog, box, text);
        clickOn(dialog, u"Command1"_s);
    }
    void deleteRow(const QString& row) {
        chooseItem(*main, u"mnuData"_s);
        inRowDialog(u"Option2"_s, u"Text4"_s, row);
        waitUntilClosed(u"frmDataEdit"_s);
    }
    void recalculate(const QString& distance) {
        chooseItem(*main, u"mnuData"_s);
        inRowDialog(u"Option3"_s, u"Text1"_s, distance);
        waitUntilClosed(u"frmDataEdit"_s);
    }

    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
};

}  // namespace

// The marks stand for: mnuSave, mnuInvokeIDE, mnuIDEW, mnuRow, mnuData, mnuStat, mnuDistance, mnuGrid,
// mnuSigCorr, mnuHist, mnuClear, mnuAdjust, mnuEL.
TEST_F(MenuStates, AreThoseOfTheTableOnAWalkThroughTheProgram) {
    EXPECT_EQ(enabled(), "x............") << "at the start";
    importFixed("no number in this line\n", 0);
    EXPECT_EQ(enabled(), "x............") << "after an import of no site";
    importRuns({3, 1});
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxx") << "after an import";
    importFixed("no number in this line\n", 0);
    EXPECT_EQ(enabled(), "x............") << "after another import of no site";

    importGeneric("0 0 20 2\n", 0,
                  {u"There are 1 valid records in this file."_s,
                   u"Fatal Error! Initial row # not equal to 1. Input aborted."_s});
    EXPECT_EQ(enabled(), ".............") << "after row numbers of no use";
    clickOn(shownWindow(u"frmGeneric"_s), u"cmdCancel"_s);

    importTooManyRows();
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxx") << "with more than 250 rows";
    inRowDialog(u"Option3"_s, u"Text1"_s, u"3"_s);
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxx") << "after finding the rows anew";

    importRuns({3, 1});
    chooseItem(*main, u"mnuX"_s);
    clickOn(*main, u"Command2"_s);
    clickPoint(controlAs<Chart2D>(*main, u"Chart2D3"_s), 1, 1);
    clickOn(*main, u"Command5"_s);
    EXPECT_EQ(enabled(), "xxx.....xxxxx") << "with fewer than two rows";
    clickOn(*main, u"Command4"_s);
    EXPECT_EQ(enabled(), "xxx.x...xxxxx") << "when the row plots are finished";
    recalculate(u"0.5"_s);
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxx") << "recalculated";

    boxes.tell(kNoPointLeft);
    recalculate(u"3"_s);
    deleteRow(u"1"_s);
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(enabled(), "...........xx") << "with no sites left";
    importRuns({2});
    EXPECT_EQ(enabled(), "xxxxxxxxxxxxx") << "after the next import";
}

TEST_F(MenuStates, WithTooManyRowsAViewSaysSoAgainAndOpensTheOneRowDialogWhileLagPlotsWork) {
    importTooManyRows();
    const QWidget* const dialog = &shownWindow(u"frmDataEdit"_s);
    EXPECT_FALSE(dialog->isModal());
    for (const QString& item : {u"mnuX"_s, u"mnuY"_s, u"mnuGrid"_s, u"mnuStat"_s}) {
        boxes.tell(kTooManyRowsText);
        chooseItem(*main, item);
        EXPECT_EQ(&shownWindow(u"frmDataEdit"_s), dialog);
        EXPECT_EQ(boxes.pending(), 0) << item.toStdString();
    }
    for (const QString& part : {u"Chart2D2"_s, u"Chart2D3"_s, u"Frame1"_s})
        EXPECT_FALSE(isVisible(part));
    EXPECT_FALSE(isShown(u"frmStat"_s));
    EXPECT_EQ(main->findChildren<QDialog*>(u"frmDataEdit"_s).size(), 1);

    chooseItem(*main, u"mnuTrue_Dis"_s);
    EXPECT_TRUE(isVisible(u"Chart2D1"_s));
    clickOn(shownWindow(u"frmDataEdit"_s), u"Command2"_s);
    boxes.tell(kTooManyRowsText);
    chooseItem(*main, u"mnuGrid"_s);
    inRowDialog(u"Option3"_s, u"Text1"_s, u"3"_s);
    EXPECT_TRUE(isVisible(u"Chart2D1"_s)) << "a plot stays until another view replaces it";
    chooseItem(*main, u"mnuGrid"_s);
    EXPECT_TRUE(isVisible(u"Chart2D2"_s));
}

TEST_F(MenuStates, WithNoSitesLeftWhatIsStillEnabledAnswersWithAMessage) {
    importRuns({1});
    chooseItem(*main, u"mnuX"_s);
    clickPoint(controlAs<Chart2D>(*main, u"Chart2D3"_s), 1, 1);
    clickOn(*main, u"Command5"_s);
    clickOn(*main, u"Command4"_s);
    ASSERT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(enabled(), "xxx.x...xxxxx");
    for (const QString& item : {u"mnuIDEW"_s, u"mnuData"_s, u"mnuAdjust"_s, u"mnuSigCorr"_s, u"mnuHist"_s}) {
        boxes.tell(kNoPointLeft);
        chooseItem(*main, item);
        EXPECT_EQ(boxes.pending(), 0) << item.toStdString();
    }
    for (const QString& window : {u"frmClip"_s, u"frmDataEdit"_s, u"frmAdjustData"_s, u"frmHistForm"_s})
        EXPECT_FALSE(isShown(window));
}

TEST_F(MenuStates, F1OpensTheHelpOfTheView) {
    std::filesystem::create_directory(folder / "helpdocs");
    for (const char* number : {"101", "111", "114"})
        writeFile(folder / ("helpdocs/hdoc" + std::string(number) + ".rtf"),
                  "{\\rtf1 Document " + std::string(number) + "\\par}");
    const auto helpTitle = [this] {
        main->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(main.get()));
        QTest::keyClick(main.get(), Qt::Key_F1);
        const QString title = shownWindow(u"frmHelpTesl"_s).windowTitle();
        shownWindow(u"frmHelpTesl"_s).close();
        return title.toStdString();
    };
    importRuns({3, 3});
    EXPECT_EQ(helpTitle(), "Document 101 - Help");
    chooseItem(*main, u"mnuGrid"_s);
    EXPECT_EQ(helpTitle(), "Document 111 - Help");
    chooseItem(*main, u"mnuX"_s);
    EXPECT_EQ(helpTitle(), "Document 114 - Help");
}

TEST_F(MenuStates, HelpCanBeReadAndUsedWhileADialogIsOpen) {
    std::filesystem::create_directory(folder / "helpdocs");
    writeFile(folder / "helpdocs/hdoc112.rtf", "{\\rtf1 About rows\\par}");
    importRuns({3, 3});
    chooseItem(*main, u"mnuData"_s);
    clickOn(shownWindow(u"frmDataEdit"_s), u"cmdHelp"_s);
    QWidget& help = shownWindow(u"frmHelpTesl"_s);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&help)) << "a modal dialog blocks it";
    typeInto(help, u"txtFind"_s, u"rows"_s);
    EXPECT_EQ(controlAs<QLineEdit>(help, u"txtFind"_s).text(), u"rows"_s);
    clickOn(help, u"Command2"_s);
    EXPECT_FALSE(isShown(u"frmHelpTesl"_s));
    EXPECT_TRUE(isShown(u"frmDataEdit"_s));
    clickOn(shownWindow(u"frmDataEdit"_s), u"Command2"_s);
}

TEST_F(MenuStates, TheRowStatisticsFollowAnImport) {
    importRuns({3, 2, 4});
    chooseItem(*main, u"mnuStat"_s);
    QWidget& statistics = shownWindow(u"frmStat"_s);
    clickOn(statistics, u"optDSR"_s);
    importRuns({2, 5});
    ASSERT_TRUE(isShown(u"frmStat"_s));
    EXPECT_EQ(controlAs<QLabel>(statistics, u"lblInfo"_s).text(), u"Total # of detected rows = 2"_s);
    const QAbstractItemModel& table = *controlAs<QTableView>(statistics, u"Stats"_s).model();
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(table.index(1, 1).data().toInt(), 5);
    EXPECT_EQ(table.index(1, 2).data().toString(), u"100.00"_s) << "the scale chosen stays";
}

TEST_F(MenuStates, TheCorrelationWindowSaysWhenASurveyOfOneReadingHasComeMeanwhile) {
    importRuns({3, 3});
    chooseItem(*main, u"mnuSigCorr"_s);
    QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
    importFixed(sensorFile({3, 3}), 6, u"3"_s, false);
    boxes.tell(u"This option is only available when 2 signal data columns are present."_s);
    chooseItem(correlation, u"mnuPlot1"_s);
    EXPECT_FALSE(correlation.findChild<Chart2D*>(u"Chart2D1"_s)->isVisible());
    boxes.tell(u"This option is only available when 2 signal data columns are present."_s);
    chooseItem(*main, u"mnuSigCorr"_s);
}

}  // namespace tessel
