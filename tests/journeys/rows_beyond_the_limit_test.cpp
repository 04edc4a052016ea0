// SPDX-License-Identifier: GPL-3.0-or-later
// What the program does with a survey that falls into more rows than it holds.
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

class RowsBeyondTheLimit : public testing::Test, protected RunningProgram {
  protected:
    // 260 sites, each 10 m from the one before: 258 gaps that count.
    QWidget& importTooManyRows() {
        std::string lines;
        for (int i = 0; i < 260; ++i)
            lines += std::to_string(10000 + 10 * i) + " 10000 10\n";
        writeFile(folder / "survey.dat", lines);
        expectTrimbleReport(260, 0);
        expectTooManyRows();
        importTrimbleFile(*main, {folder / "survey.dat", u"5"_s, {}, {1, 5}, {7, 11}, {13, 14}, {}});
        return shownWindow(u"frmDataEdit"_s);
    }
    static void typeDistance(QWidget& dialog, const QString& distance) {
        clickOn(dialog, u"Option3"_s);
        typeInto(dialog, u"Text1"_s, distance);
    }
};

}  // namespace

TEST_F(RowsBeyondTheLimit, AreNotShownButToldAgain) {
    importTooManyRows();
    for (const QString& item : {u"mnuX"_s, u"mnuY"_s, u"mnuGrid"_s, u"mnuStat"_s}) {
        shownWindow(u"frmDataEdit"_s).close();
        waitUntilClosed(u"frmDataEdit"_s);
        expectTooManyRows();
        chooseItem(*main, item);
        EXPECT_TRUE(isShown(u"frmDataEdit"_s)) << item.toStdString();
        EXPECT_EQ(boxes.pending(), 0) << item.toStdString();
        EXPECT_TRUE(main->lblInvitation->isVisible()) << item.toStdString();
        EXPECT_FALSE(isShown(u"frmStat"_s));
    }
}

// Nothing may change the survey beneath a window that edits it or writes it.
TEST_F(RowsBeyondTheLimit, KeepTheirRowDialogBlockedWhileAnotherWindowEdits) {
    QWidget& dialog = importTooManyRows();
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
    QWidget& dialog = importTooManyRows();
    typeDistance(dialog, u"20"_s);
    chooseItem(*main, u"mnuData"_s);
    EXPECT_EQ(&shownWindow(u"frmDataEdit"_s), &dialog);
    EXPECT_EQ(dialog.windowModality(), Qt::NonModal);
    EXPECT_EQ(controlAs<QLineEdit>(dialog, u"Text1"_s).text(), u"20"_s);
    EXPECT_EQ(main->findChildren<QWidget*>(u"frmDataEdit"_s).size(), 1);
}

TEST_F(RowsBeyondTheLimit, TakeTheirRowDialogAlongWhenAnotherSurveyComes) {
    importTooManyRows();
    writeFile(folder / "one.txt", "1 1 10\n");
    expectGenericReport(1, 0);
    importGeneric(folder / "one.txt", 4);
    EXPECT_FALSE(isShown(u"frmDataEdit"_s));
}

}  // namespace tessel
