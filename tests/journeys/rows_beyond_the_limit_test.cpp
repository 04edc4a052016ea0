// SPDX-License-Identifier: GPL-3.0-or-later
// What the program does with a survey that falls into more rows than it holds.
#include "app/frmMain.h"
#include "app/survey.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"
#include "support/temporary_folder.h"

#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const QString kTooManyRowsMessage = u"Too many rows: Please specify a larger distance value"_s;

class RowsBeyondTheLimit : public testing::Test {
  protected:
    RowsBeyondTheLimit() {
        theSurvey() = Survey{};
        theSession() = Session{};
        theSession().AppDir = theSession().DataDir = folder.path();
        main = createProgram();
        main->show();
    }
    ~RowsBeyondTheLimit() override { setFileResponder({}); }

    // 260 sites, each 10 m from the one before: 258 gaps that count.
    void importTooManyRows() {
        std::string lines;
        for (int i = 0; i < 260; ++i)
            lines += std::to_string(10000 + 10 * i) + " 10000 10\n";
        writeFile(folder / "survey.dat", lines);
        boxes.tell(
            u"There are  260 valid records in this file.\n\nThere are  0 records in this file\n"
            u"containing non-numeric or invalid numeric values."_s,
            u"VARN-Tesl File Import Message"_s);
        boxes.tell(kTooManyRowsMessage);
        importTrimbleFile(*main, {fromPath(folder / "survey.dat"),
                                  u"5"_s,
                                  {},
                                  {u"1"_s, u"5"_s},
                                  {u"7"_s, u"11"_s},
                                  {u"13"_s, u"14"_s},
                                  {}});
    }

    static void typeDistance(QWidget& dialog, const QString& distance) {
        clickOn(dialog, u"Option3"_s);
        typeInto(dialog, u"Text1"_s, distance);
    }
    // As a mouse does: through the windowing system, which a modal window bars.
    static void clickThroughTheDesktop(QWidget& button) {
        QWidget* const window = button.window();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          button.mapTo(window, button.rect().center()));
    }

    QString invitation() const { return main->lblInvitation->text(); }

    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
};

}  // namespace

TEST_F(RowsBeyondTheLimit, OpenTheRowDialogBesideTheMainWindow) {
    importTooManyRows();
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    EXPECT_EQ(dialog.windowModality(), Qt::NonModal);
    EXPECT_FALSE(controlAs<QRadioButton>(dialog, u"Option1"_s).isEnabled());
    EXPECT_TRUE(invitation().startsWith(u"260 sites, in too many rows\n")) << invitation().toStdString();
}

TEST_F(RowsBeyondTheLimit, AreNotShownButToldAgain) {
    importTooManyRows();
    for (const QString& item : {u"mnuX"_s, u"mnuY"_s, u"mnuGrid"_s, u"mnuStat"_s}) {
        shownWindow(u"frmDataEdit"_s).close();
        waitUntilClosed(u"frmDataEdit"_s);
        boxes.tell(kTooManyRowsMessage);
        chooseItem(*main, item);
        EXPECT_TRUE(isShown(u"frmDataEdit"_s)) << item.toStdString();
        EXPECT_EQ(boxes.pending(), 0) << item.toStdString();
        EXPECT_TRUE(main->lblInvitation->isVisible()) << item.toStdString();
        EXPECT_FALSE(isShown(u"frmStat"_s));
    }
}

TEST_F(RowsBeyondTheLimit, LeaveTheLagDistancePlotsToFindADistance) {
    importTooManyRows();
    for (const QString& item : {u"mnuTrue_Dis"_s, u"mnuX_Dis"_s, u"mnuY_Dis"_s}) {
        chooseItem(*main, item);
        EXPECT_TRUE(control(*main, u"Chart2D1"_s).isVisible()) << item.toStdString();
    }
    EXPECT_TRUE(isShown(u"frmDataEdit"_s));
}

TEST_F(RowsBeyondTheLimit, AreFoundAnewWithALargerDistance) {
    importTooManyRows();
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, u"Option3"_s);
    typeInto(dialog, u"Text1"_s, u"20"_s);
    clickOn(dialog, u"Command1"_s);
    waitUntilClosed(u"frmDataEdit"_s);
    EXPECT_EQ(theSurvey().NumRows, 1);
    EXPECT_TRUE(invitation().startsWith(u"260 sites in 1 row\n")) << invitation().toStdString();
    chooseItem(*main, u"mnuGrid"_s);
    EXPECT_TRUE(control(*main, u"Chart2D2"_s).isVisible());
}

// Nothing may change the survey beneath a window that edits it or writes it.
TEST_F(RowsBeyondTheLimit, KeepTheirRowDialogBlockedWhileAnotherWindowEdits) {
    importTooManyRows();
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    typeDistance(dialog, u"20"_s);
    const std::pair<QString, QString> openings[] = {{u"mnuIDEW"_s, u"frmClip"_s},
                                                    {u"mnuAdjust"_s, u"frmAdjustData"_s},
                                                    {u"mnuSave"_s, u"frmOutput"_s},
                                                    {u"mnuOpen"_s, u"frmDataControl"_s},
                                                    {u"mnuOpen2"_s, u"frmGeneric"_s}};
    for (const auto& [item, window] : openings) {
        chooseItem(*main, item);
        ASSERT_TRUE(isShown(window)) << window.toStdString();
        EXPECT_EQ(&shownWindow(u"frmDataEdit"_s), &dialog) << window.toStdString();
        clickThroughTheDesktop(control(dialog, u"Command1"_s));
        EXPECT_EQ(theSurvey().RowIndex, 251) << window.toStdString();
        shownWindow(window).close();
        waitUntilClosed(window);
    }
    clickThroughTheDesktop(control(dialog, u"Command1"_s));
    EXPECT_EQ(theSurvey().NumRows, 1) << "what was typed is still there";
}

TEST_F(RowsBeyondTheLimit, HaveTheSameRowDialogWhenItIsChosen) {
    importTooManyRows();
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    typeDistance(dialog, u"20"_s);
    chooseItem(*main, u"mnuData"_s);
    EXPECT_EQ(&shownWindow(u"frmDataEdit"_s), &dialog);
    EXPECT_EQ(dialog.windowModality(), Qt::NonModal);
    EXPECT_EQ(controlAs<QLineEdit>(dialog, u"Text1"_s).text(), u"20"_s);
    EXPECT_EQ(main->findChildren<QWidget*>(u"frmDataEdit"_s).size(), 1);
}

TEST_F(RowsBeyondTheLimit, AreToldApartFromRowNumbersOfNoUse) {
    writeFile(folder / "rows.txt", "1 1 10 2\n2 1 10 2\n");
    chooseItem(*main, u"mnuOpen2"_s);
    QWidget& window = shownWindow(u"frmGeneric"_s);
    typeInto(window, u"txtGFile"_s, fromPath(folder / "rows.txt"));
    clickOn(window, u"optCF_0"_s);
    boxes.tell(u"There are 2 valid records in this file."_s, u"VARN-Tessel File Import Message"_s);
    boxes.tell(u"Fatal Error! Initial row # not equal to 1. Input aborted."_s);
    clickOn(window, u"cmdImport"_s);
    EXPECT_TRUE(invitation().startsWith(u"2 sites, with row numbers that are of no use\n"))
        << invitation().toStdString();
}

}  // namespace tessel
