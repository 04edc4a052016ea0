// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/frmStat.h"

#include "desktop/CaptionColour.h"
#include "desktop/Windows.h"
#include "support/Pixels.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

Survey threeRows() {
    return surveyWithRows({{0, 0, 10, 1.005, 1},
                           {3, 4, 20, 2, 1},
                           {1, 1, 60, 6, 2},
                           {0, 0, 5, 50, 3},
                           {0, 20, 7.5, 70, 3},
                           {20, 0, 7, 75, 3}});
}

// A window beneath the pointer and the keyboard.
std::unique_ptr<frmStat> opened() {
    auto window = std::make_unique<frmStat>();
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    return window;
}

void askForMenu(const frmStat& window) {
    QWidget* const table = window.Stats->viewport();
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(5, 5), table->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(table, &asked);
}

QString cell(const frmStat& window, int line, int column) {
    return window.Stats->model()->index(line, column).data().toString();
}

QStringList line(const frmStat& window, int number) {
    QStringList cells;
    for (int column = 0; column < window.Stats->model()->columnCount(); ++column)
        cells << cell(window, number, column);
    return cells;
}

QStringList header(const frmStat& window) {
    QStringList cells;
    for (int column = 0; column < window.Stats->model()->columnCount(); ++column)
        cells << window.Stats->model()->headerData(column, Qt::Horizontal).toString();
    return cells;
}

}  // namespace

TEST(RowStatisticsWindow, ShowsALineForEachRow) {
    surveyUnderTest() = threeRows();
    for (const qsizetype columns : {5, 4}) {
        surveyUnderTest().TwoEMColumns = columns == 5;
        const frmStat window;
        EXPECT_EQ(window.lblInfo->text(), u"Total # of detected rows = 3"_s);
        EXPECT_EQ(header(window),
                  QStringList({u"Row"_s, u"# of Sites"_s, u"Row Length"_s, u"EC1 Mean"_s, u"EC2 Mean"_s})
                      .first(columns));
        ASSERT_EQ(window.Stats->model()->rowCount(), 3);
        EXPECT_EQ(line(window, 0),
                  QStringList({u"1"_s, u"2"_s, u"5.00"_s, u"15.00"_s, u"1.50"_s}).first(columns));
        EXPECT_EQ(line(window, 1),
                  QStringList({u"2"_s, u"1"_s, u"0.00"_s, u"60.00"_s, u"6.00"_s}).first(columns));
        EXPECT_EQ(line(window, 2),
                  QStringList({u"3"_s, u"3"_s, u"20.00"_s, u"6.50"_s, u"65.00"_s}).first(columns));
    }
    surveyUnderTest() = surveyWithRows({{0, 0, 5.63, 1, 1}, {1, 0, 39.54, 1, 1}});
    EXPECT_EQ(cell(frmStat(), 0, 3), u"22.59"_s) << "the mean as one adds two readings by hand";
    surveyUnderTest() = Survey{};
    const frmStat empty;
    EXPECT_EQ(empty.lblInfo->text(), u"Total # of detected rows = 0"_s);
    EXPECT_EQ(empty.Stats->model()->rowCount(), 0);
}

TEST(RowStatisticsWindow, SwitchesTheDistanceScale) {
    surveyUnderTest() = threeRows();
    frmStat window;
    window.show();
    EXPECT_TRUE(window.optDSA->isChecked());
    EXPECT_EQ(inkOf(*window.optDSA), captionColour(kLightBlue, window));
    EXPECT_EQ(inkOf(*window.optDSR), captionColour(kBlack, window));
    clickOn(window, u"optDSR"_s);
    EXPECT_EQ(cell(window, 0, 2), u"25.00"_s);
    EXPECT_EQ(cell(window, 1, 2), u"0.00"_s);
    EXPECT_EQ(cell(window, 2, 2), u"100.00"_s);
    EXPECT_EQ(cell(window, 2, 3), u"6.50"_s);
    EXPECT_EQ(inkOf(*window.optDSA), captionColour(kBlack, window));
    EXPECT_EQ(inkOf(*window.optDSR), captionColour(kLightBlue, window));
    clickOn(window, u"optDSA"_s);
    EXPECT_EQ(cell(window, 0, 2), u"5.00"_s);
}

TEST(RowStatisticsWindow, SetsTheRowCounterAndTheSitesOfEachRow) {
    surveyUnderTest() = threeRows();
    const std::vector<MadeSite> before = sitesIn(theSurvey());
    const auto points = theSurvey().NumPoints;
    surveyUnderTest().RowIndex = 17;
    surveyUnderTest().NumPoints.fill(0);
    const frmStat window;
    EXPECT_EQ(theSurvey().RowIndex, 3);
    EXPECT_EQ(theSurvey().NumPoints, points);
    EXPECT_EQ(theSurvey().NumRows, 3);
    EXPECT_TRUE(sitesIn(theSurvey()) == before);
}

TEST(RowStatisticsWindow, CountsTheSitesOfExactly250Rows) {
    std::vector<MadeSite> sites(500);
    for (std::size_t i = 0; i < sites.size(); ++i)
        sites[i].row = static_cast<double>(i / 2 + 1);
    surveyUnderTest() = surveyWithRows(sites);
    surveyUnderTest().NumPoints.fill(0);
    const frmStat window;
    EXPECT_EQ(window.lblInfo->text(), u"Total # of detected rows = 250"_s);
    EXPECT_EQ(theSurvey().RowIndex, 250);
    EXPECT_EQ(theSurvey().NumPoints[250], 2);
}

TEST(RowStatisticsWindow, ShowsMoreRunsThanRowsCanBeHeld) {
    surveyUnderTest() = surveyWithRows(std::vector<MadeSite>(300));
    for (SiteIndex i = 0; i < 300; ++i)
        surveyUnderTest().SiteData(kRow, i) = static_cast<double>(i + 1);
    const frmStat window;
    EXPECT_EQ(window.lblInfo->text(), u"Total # of detected rows = 300"_s);
    EXPECT_EQ(window.Stats->model()->rowCount(), 300);
    EXPECT_EQ(cell(window, 299, 0), u"300"_s);
    EXPECT_EQ(theSurvey().RowIndex, 300);
}

TEST(RowStatisticsWindow, AlignsItsNumbersRight) {
    surveyUnderTest() = threeRows();
    const frmStat window;
    const auto* const model = window.Stats->model();
    for (int column = 0; column < 5; ++column) {
        EXPECT_TRUE(model->index(0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
        EXPECT_TRUE(model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt() &
                    Qt::AlignRight);
    }
    EXPECT_FALSE(window.Stats->horizontalHeader()->isHidden());
}

TEST(RowStatisticsWindow, CopiesTheTableOrTheSelectedLinesForASpreadsheet) {
    surveyUnderTest() = threeRows();
    const auto window = opened();
    const QString names = u"Row\t# of Sites\tRow Length\tEC1 Mean\tEC2 Mean\n"_s;
    const auto copied = [&] {
        QTest::keyClick(window->Stats, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    };
    window->Stats->setFocus();
    window->Stats->clearSelection();
    EXPECT_EQ(copied(),
              names + u"1\t2\t5.00\t15.00\t1.50\n2\t1\t0.00\t60.00\t6.00\n3\t3\t20.00\t6.50\t65.00\n"_s);
    for (const auto& [number, key] : {std::pair(2, Qt::NoModifier), {0, Qt::ControlModifier}})
        QTest::mouseClick(window->Stats->viewport(), Qt::LeftButton, key,
                          window->Stats->visualRect(window->Stats->model()->index(number, 1)).center());
    EXPECT_EQ(copied(), names + u"1\t2\t5.00\t15.00\t1.50\n3\t3\t20.00\t6.50\t65.00\n"_s);
}

TEST(RowStatisticsWindow, CopiesFromTheMenuOfItsTable) {
    surveyUnderTest() = threeRows();
    const auto window = opened();
    askForMenu(*window);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions(), window->Stats->actions());
    QApplication::clipboard()->clear();
    menu->setActiveAction(window->actionCopy);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(u"Row\t"_s));
}

TEST(RowStatisticsWindow, TakesTheMenuOfItsTableWithIt) {
    surveyUnderTest() = threeRows();
    const QPointer<frmStat> window = new frmStat;
    showBeside(window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    QPointer<QWidget> menu;
    QTimer::singleShot(0, qApp, [&] {
        menu = QApplication::activePopupWidget();
        window->close();
    });
    askForMenu(*window);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
    EXPECT_TRUE(menu.isNull());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

}  // namespace tessel
