// SPDX-License-Identifier: GPL-3.0-or-later
// Any table through the real windows: its columns are named by clicks on their heads, then it is a survey.
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

constexpr auto kLoggerFile =
    "Latitude\tLongitude\tTime\tCond.1[mS/m]\tInph.1[ppt]\tCond.2[mS/m]\tCond.3[mS/m]\tNote\n"
    "5224.461145N\t00220.673280W\t09:51:46.89\t4.90\t2.34\t7.52\t11.17\n"
    "5224.461129N\t00220.673282W\t09:51:47.94\t4.82\t2.35\t7.38\t11.05\n"
    "5224.471129N\t00220.673282W\t09:51:48.99\t4.88\t2.35\t7.53\t11.16\n"
    "5224.471168N\t00220.673242W\t09:51:49.89\tbad\t2.35\t7.66\t11.37\n";

class TableImportJourney : public testing::Test, protected RunningProgram {
  protected:
    QWidget& open(std::string_view bytes, const std::string& name = "table.dat") {
        writeFile(folder / name, bytes);
        chooseItem(*main, u"mnuImportTable"_s);
        QWidget& window = shownWindow(u"frmTable"_s);
        look(window, folder / name);
        return window;
    }
    // Types the name of a file and waits until its beginning is shown.
    static void look(QWidget& window, const std::string& path) {
        QSignalSpy shown(table(window).model(), &QAbstractItemModel::modelReset);
        typeInto(window, u"txtFile"_s, fromPath(path));
        EXPECT_TRUE(shown.count() > 0 || shown.wait());
    }
    static QTableView& table(QWidget& window) { return controlAs<QTableView>(window, u"tblPreview"_s); }
    static QString head(QWidget& window, int column) {
        return table(window).model()->headerData(column, Qt::Horizontal).toString();
    }
    static QString notice(QWidget& window) { return window.findChild<QLabel*>(u"lblNotice"_s)->text(); }
    static bool canImport(QWidget& window) {
        return window.findChild<QPushButton*>(u"cmdImport"_s)->isEnabled();
    }
    // Clicks a column's head and chooses from its menu.
    static void name(QWidget& window, int column, const QString& role) {
        QHeaderView& heads = *table(window).horizontalHeader();
        table(window).scrollTo(table(window).model()->index(0, column));
        const int x = heads.sectionViewportPosition(column) + heads.sectionSize(column) / 2;
        QTest::mouseClick(heads.viewport(), Qt::LeftButton, {}, QPoint(x, heads.height() / 2));
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* const item : menu->actions())
            if (item->text() == role) {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
                return;
            }
        FAIL() << role.toStdString();
    }
};

}  // namespace

TEST_F(TableImportJourney, ALoggersExportGoesInWithItsPositionsInMetres) {
    QWidget& window = open(kLoggerFile);
    EXPECT_EQ(controlAs<QComboBox>(window, u"cmbSeparator"_s).currentText(), u"a tab"_s);
    EXPECT_EQ(controlAs<QSpinBox>(window, u"spinSkip"_s).value(), 1);
    EXPECT_EQ(head(window, 0), u"Latitude\nlatitude"_s);
    EXPECT_EQ(head(window, 5), u"Cond.2[mS/m]\nEM2"_s);
    EXPECT_TRUE(controlAs<QCheckBox>(window, u"chkMinutes"_s).isChecked());
    EXPECT_EQ(controlAs<QLabel>(window, u"lblSystemName"_s).text(), u"the UTM zone that fits"_s);
    name(window, 6, u"EM2"_s);
    EXPECT_EQ(head(window, 5), u"Cond.2[mS/m]\n-"_s);
    EXPECT_EQ(head(window, 6), u"Cond.3[mS/m]\nEM2"_s);
    typeInto(window, u"txtDistance"_s, u"5"_s);
    expectGenericReport(3, 1);
    clickOn(window, u"cmdImport"_s);
    waitUntilClosed(u"frmTable"_s);
    ASSERT_EQ(theSurvey().NumSites, 3);
    EXPECT_EQ(theSurvey().NumRows, 2);
    EXPECT_EQ(theSurvey().SiteData(kEM2, 0), 11.17);
    EXPECT_NEAR(theSurvey().SiteData(kX, 0), 544586.53, 0.006);
    EXPECT_NEAR(theSurvey().SiteData(kY, 0), 5806585.84, 0.006);
    EXPECT_EQ(main->findChild<QLabel*>(u"lblSummaryPositions"_s)->text(), u"EPSG:32630"_s);
    EXPECT_TRUE(main->mnuGrid->isEnabled());
    EXPECT_EQ(readFile(folder / "error_log.dat").substr(0, 8), "Line # 5");
}

TEST_F(TableImportJourney, WhatWasChosenIsKeptForTheNextFileOfTheSameHeader) {
    QWidget& window = open(kLoggerFile);
    name(window, 6, u"EM1"_s);
    name(window, 5, u"nothing"_s);
    typeInto(window, u"txtDistance"_s, u"5"_s);
    typeInto(window, u"txtCutoff"_s, u"11.1"_s);
    expectGenericReport(3, 1);
    clickOn(window, u"cmdImport"_s);
    waitUntilClosed(u"frmTable"_s);
    QWidget& next = open(kLoggerFile, "next.dat");
    EXPECT_EQ(head(next, 6), u"Cond.3[mS/m]\nEM1"_s);
    EXPECT_EQ(head(next, 3), u"Cond.1[mS/m]\n-"_s);
    EXPECT_EQ(controlAs<QLineEdit>(next, u"txtDistance"_s).text(), u"5"_s);
    EXPECT_EQ(controlAs<QLineEdit>(next, u"txtCutoff"_s).text(), u"11.1"_s);
}

TEST_F(TableImportJourney, TheShapeCanBeChanged) {
    QWidget& window = open("a,b,c\n1,2,3\n4,5,6\n");
    EXPECT_EQ(table(window).model()->columnCount(), 3);
    pickItem(window, u"cmbSeparator"_s, 1);
    EXPECT_EQ(table(window).model()->columnCount(), 1);
    pickItem(window, u"cmbSeparator"_s, 0);
    QTest::keyClick(&control(window, u"spinSkip"_s), Qt::Key_Down);
    EXPECT_EQ(table(window).model()->rowCount(), 3);
    EXPECT_EQ(head(window, 0), u"Column 1\n-"_s);
    pickItem(window, u"cmbDecimal"_s, 1);
    EXPECT_EQ(controlAs<QComboBox>(window, u"cmbDecimal"_s).currentText(), u"a comma"_s);
}

TEST_F(TableImportJourney, ColumnsAreNamedWithTheKeyboardToo) {
    QWidget& window = open("a,b,c\n1,2,3\n4,5,6\n");
    EXPECT_EQ(notice(window), u"Say which columns hold X and Y, or longitude and latitude."_s);
    EXPECT_FALSE(canImport(window));
    const int roles[] = {1, 2, 5};  // X, Y, EM1
    for (int column = 0; column < 3; ++column) {
        pickItem(window, u"cmbColumn"_s, column);
        pickItem(window, u"cmbRole"_s, roles[column]);
    }
    EXPECT_EQ(notice(window), QString());
    boxes.tell(u"Non-numeric EM-cutoff or Minimum distance Input"_s);
    clickOn(window, u"cmdImport"_s);
    typeInto(window, u"txtDistance"_s, u"-1"_s);
    boxes.tell(u"Error: Minimum distance must be > 0"_s);
    clickOn(window, u"cmdImport"_s);
    typeInto(window, u"txtDistance"_s, u"50"_s);
    expectGenericReport(2, 0);
    clickOn(window, u"cmdImport"_s);
    waitUntilClosed(u"frmTable"_s);
    EXPECT_EQ(sitesIn(theSurvey()), (std::vector<MadeSite>{{1, 2, 3, 0, 1}, {4, 5, 6, 0, 1}}));
}

TEST_F(TableImportJourney, ARoleThatTheKeyboardPassesStaysWithItsColumn) {
    QWidget& window = open("a,b,c\n1,2,3\n4,5,6\n");
    name(window, 0, u"X"_s);
    name(window, 1, u"Y"_s);
    pickItem(window, u"cmbColumn"_s, 2);
    auto& role = controlAs<QComboBox>(window, u"cmbRole"_s);
    for (int passed = 0; passed < 5; ++passed)
        QTest::keyClick(&role, Qt::Key_Down);
    EXPECT_EQ(head(window, 0), u"a\nX"_s);
    EXPECT_EQ(head(window, 1), u"b\nY"_s);
    EXPECT_EQ(head(window, 2), u"c\nEM1"_s);
    EXPECT_TRUE(notice(window).isEmpty()) << notice(window).toStdString();
    QTest::keyClick(&role, Qt::Key_Home);
    EXPECT_EQ(head(window, 2), u"c\n-"_s);
}

TEST_F(TableImportJourney, AHeadMakesRoomForWhatItsColumnHolds) {
    QWidget& window = open("a,b,c\n1,2,3\n4,5,6\n");
    name(window, 0, u"site number"_s);
    EXPECT_EQ(head(window, 0), u"a\nsite number"_s);
    EXPECT_GE(table(window).columnWidth(0), table(window).horizontalHeader()->sectionSizeHint(0));
}

TEST_F(TableImportJourney, RowNumbersThatAreOfNoUseLeaveTheWindowOpen) {
    QWidget& window = open("x,y,ec1,row\n1,2,3,2\n");
    EXPECT_FALSE(window.findChild<QLineEdit*>(u"txtDistance"_s)->isEnabled());
    expectGenericReport(1, 0);
    boxes.tell(u"Fatal Error! Initial row # not equal to 1. Input aborted."_s);
    clickOn(window, u"cmdImport"_s);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(TableImportJourney, AnUnknownSystemOrAFileThatIsNoneIsTold) {
    QWidget& window = open("lon,lat,ec1\n-2.3,52.4,3\n");
    EXPECT_TRUE(canImport(window));
    typeInto(window, u"txtSystem"_s, u"2263"_s);
    EXPECT_EQ(notice(window), u"The unit of this system is the US survey foot, not the metre."_s);
    EXPECT_FALSE(canImport(window));
    typeInto(window, u"txtSystem"_s, u"27700"_s);
    EXPECT_EQ(controlAs<QLabel>(window, u"lblSystemName"_s).text().left(10), u"EPSG:27700"_s);
    EXPECT_TRUE(canImport(window));
    look(window, folder / "gone");
    EXPECT_EQ(notice(window), u"There is no such file, or it is none that can be read."_s);
    EXPECT_FALSE(canImport(window));
}

TEST_F(TableImportJourney, ValuesThatAreNoNumbersAreMarked) {
    QWidget& window = open(kLoggerFile);
    const QAbstractItemModel& model = *table(window).model();
    EXPECT_TRUE(model.index(3, 3).data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(model.index(3, 3).data(Qt::ToolTipRole).toString(), u"This is not a number."_s);
    EXPECT_FALSE(model.index(0, 3).data(Qt::ForegroundRole).isValid());
    EXPECT_FALSE(model.index(0, 2).data(Qt::ForegroundRole).isValid()) << "a time, which nobody reads";
    chooseFile(folder / "other.csv");
    clickOn(window, u"cmdBrowse"_s);
    EXPECT_EQ(controlAs<QLineEdit>(window, u"txtFile"_s).text(), fromPath(folder / "other.csv"));
}

}  // namespace tessel
