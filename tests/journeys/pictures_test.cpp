// SPDX-License-Identifier: GPL-3.0-or-later
// Every plot as a picture in a file and on the clipboard, from the menus of the windows.
#include "analysis/frmHistForm.h"
#include "plots/Chart2D.h"
#include "plots/frmClip.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

class Pictures : public testing::Test, protected RunningProgram {
  protected:
    Pictures() : RunningProgram(rowsAlongY(3)) {
        chooseFile(file);
        QGuiApplication::clipboard()->clear();
    }

    QImage saved() {
        clickOn(shownWindow(u"frmPicture"_s), u"cmdSave"_s);
        waitUntilClosed(u"frmPicture"_s);
        return QImage(fromPath(file));
    }
    static QImage copied() { return QGuiApplication::clipboard()->image(); }
    static int coloured(const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y).hsvSaturation() > 200;
        return count;
    }
    // Saves by the menu of the surface, opened with the right button.
    void saveByMenuOf(QWidget& surface) {
        QTest::mouseClick(&surface, Qt::RightButton, Qt::NoModifier, {20, 20});
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->setActiveAction(menu->actions().last());
        QTest::keyClick(menu, Qt::Key_Return);
    }

    const std::string file = folder / "plot.png";
};

}  // namespace

TEST_F(Pictures, OfThePlotThatIsShownAreSavedFromTheMenu) {
    QAction* const item = main->menuItem(u"mnuSavePicture"_s);
    EXPECT_FALSE(item->isEnabled());
    chooseItem(*main, u"mnuTrue_Dis"_s);
    chooseItem(*main, u"mnuSavePicture"_s);
    const QImage lag = saved();
    EXPECT_EQ(lag.size(), 2 * controlAs<Chart2D>(*main, u"Chart2D1"_s).size());
    EXPECT_GT(coloured(lag), 500);
    chooseItem(*main, u"mnuX"_s);
    chooseItem(*main, u"mnuSavePicture"_s);
    const QImage rows = saved();
    EXPECT_GT(rows.height(), controlAs<Chart2D>(*main, u"Chart2D3"_s).height() +
                                 controlAs<Chart2D>(*main, u"Chart2D4"_s).height());
    chooseItem(*main, u"mnuClear"_s);
    EXPECT_FALSE(item->isEnabled());
}

TEST_F(Pictures, OfAGridByReadingHaveItsScale) {
    chooseItem(*main, u"mnuGrid"_s);
    saveByMenuOf(control(*main, u"Chart2D2"_s));
    const int without = saved().width();
    chooseItem(*main, u"mnuGridEM1"_s);
    QWidget& chart = control(*main, u"Chart2D2"_s);
    saveByMenuOf(chart);
    const int with = saved().width();
    EXPECT_GT(with, 2 * chart.width() + 40);
    EXPECT_EQ(with, without) << "the chart gives room to its scale";
}

TEST_F(Pictures, OfTheMapAreSavedAndCopied) {
    chooseItem(*main, u"mnuIDEW"_s);
    QWidget& window = shownWindow(u"frmClip"_s);
    chooseItem(window, u"mnuFullMapMax"_s);
    QWidget& map = control(window, u"picMapZoom"_s);
    QTest::keyClick(&map, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied().size(), 2 * map.size());
    EXPECT_GT(coloured(copied()), 9 * 4) << "nine blue dots";
    chooseItem(window, u"mnuColourEM1"_s);
    QCoreApplication::processEvents();
    saveByMenuOf(map);
    EXPECT_GT(saved().width(), 2 * map.width() + 40);
}

TEST_F(Pictures, OfHistogramsHaveTheirTitlesAndFigures) {
    chooseItem(*main, u"mnuHist"_s);
    auto& window = dynamic_cast<frmHistForm&>(shownWindow(u"frmHistForm"_s));
    chooseItem(window, u"mnuSavePicture"_s);
    const QImage picture = saved();
    EXPECT_TRUE(window.frameHG->isVisible()) << "what has not been plotted is plotted first";
    EXPECT_GT(coloured(picture), 500);
    EXPECT_GT(picture.height(), 2 * (window.HG1->height() + window.HG2->height() + 60));
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied().size(), picture.size());
    saveByMenuOf(*window.HG2);
    EXPECT_LT(saved().height(), picture.height() / 2 + 60);
}

TEST_F(Pictures, OfTheCorrelationPlotAreSavedFromItsMenu) {
    chooseItem(*main, u"mnuSigCorr"_s);
    QWidget& window = shownWindow(u"frmSigCorrStruct"_s);
    chooseItem(window, u"mnuSavePicture"_s);
    EXPECT_EQ(saved().size(), 2 * control(window, u"Chart2D1"_s).size());
}

}  // namespace tessel
