// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSigCorrStruct.h"

#include "base/palette16.h"
#include "base/session.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/PlotWindow.h"
#include "support/PointerAtShow.h"
#include "support/PrintedPdf.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

class CorrelationWindow : public testing::Test {
  protected:
    CorrelationWindow() {
        surveyUnderTest() = surveyOfReadings({10, 30, 12}, {60, 20, 33});
        open();
    }

    void open() {
        window_ = std::make_unique<frmSigCorrStruct>();
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }
    void plot() {
        window_->mnuPlot1->trigger();
        QApplication::processEvents();
    }
    frmSigCorrStruct& window() { return *window_; }
    Chart2D& chart() { return *window_->Chart2D1; }
    QColor seen(double x, double y) { return colourAt(chart().grab().toImage(), chart().dataToPixel(x, y)); }

    ExpectedBoxes boxes_;

  private:
    std::unique_ptr<frmSigCorrStruct> window_;
};

const QColor kDarkBlue(0, 0, 0x80);

// The box around all dark blue pixels of a page, in points.
QRectF blueBox(const QImage& page) {
    const QImage image = page.convertToFormat(QImage::Format_RGB32);
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (qBlue(row[x]) > 120 && qRed(row[x]) < 20 && qGreen(row[x]) < 20) box |= QRect(x, y, 1, 1);
    }
    return {QPointF(box.topLeft()) / PrintedPdf::kPixelsPerPoint,
            QSizeF(box.size()) / PrintedPdf::kPixelsPerPoint};
}

}  // namespace

TEST_F(CorrelationWindow, ShowsTheHourglassWhileItPlotsAndPrints) {
    const PointerAtShow pointer(window(), chart());
    plot();
    EXPECT_EQ(pointer.shape(), Qt::WaitCursor);
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(pointerWhilePrinting(window(), *window().mnuPrint), Qt::WaitCursor);
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(CorrelationWindow, PlotsEM2OfEverySiteAgainstItsEM1) {
    plot();
    ASSERT_EQ(chart().seriesCount(Chart2D::kData), 2);
    EXPECT_EQ(pointsOf(chart(), Chart2D::kData, 1),
              (std::vector<Chart2D::Point>{{10, 60}, {30, 20}, {12, 33}}));
    expectRange(chart(), Chart2D::Axis::kX, 8, 32);
    expectRange(chart(), Chart2D::Axis::kY, 16, 64);
    EXPECT_EQ(chart().headerText(), u"Conductivity Signal Data Correlation Plot"_s);
    EXPECT_EQ(chart().axisTitle(Chart2D::Axis::kX), u"1st Signal Data Column (EC1)"_s);
    EXPECT_EQ(chart().axisTitle(Chart2D::Axis::kY), u"2nd Signal Data Column (EC2)"_s);
}

TEST_F(CorrelationWindow, DrawsUnconnectedDarkBluePointsAndNothingOfTheSecondSeries) {
    plot();
    EXPECT_EQ(chart().seriesStyle(Chart2D::kData, 1).colour, kBlue);
    EXPECT_EQ(chart().seriesStyle(Chart2D::kData, 1).line, ChartLine::kNone);
    EXPECT_EQ(chart().seriesStyle(Chart2D::kData, 2).symbol, ChartSymbol::kNone);
    EXPECT_EQ(pointsOf(chart(), Chart2D::kData, 2), std::vector<Chart2D::Point>(3));
    EXPECT_EQ(seen(10, 60), kDarkBlue);
    EXPECT_EQ(seen(30, 20), kDarkBlue);
    EXPECT_NE(seen(20, 40), kDarkBlue);
}

TEST_F(CorrelationWindow, AConstantColumnIsDrawnInTheMiddle) {
    surveyUnderTest() = surveyOfReadings({5, 5, 5}, {1, 2, 3});
    plot();
    expectRange(chart(), Chart2D::Axis::kX, 5, 5);
    EXPECT_EQ(seen(5, 2), kDarkBlue);
}

TEST_F(CorrelationWindow, WhatIsPlottedFollowsTheSurveyAndALookAtItStays) {
    window().redraw();
    EXPECT_FALSE(chart().isVisible()) << "nothing has been plotted yet";
    surveyUnderTest() = surveyOfReadings({10, 20, 30}, {20, 40, 60});
    plot();
    QTest::keyClick(&chart(), Qt::Key_Plus);
    const auto seenAt = [this](QPoint pixel) { return chart().pixelToData(pixel); };
    const QPoint middle = chart().rect().center();
    const Chart2D::PixelData before = seenAt(middle);
    surveyUnderTest() = surveyOfReadings({10, 20, 28}, {20, 40, 56});
    window().redraw();
    EXPECT_EQ(chart().point(Chart2D::kData, 1, 3), (Chart2D::Point{28, 56}));
    EXPECT_TRUE(chart().isZoomed());
    EXPECT_DOUBLE_EQ(seenAt(middle).x, before.x);
    EXPECT_DOUBLE_EQ(seenAt(middle).y, before.y);
}

TEST_F(CorrelationWindow, ASurveyThatCannotBePlottedTakesThePlotAwayWithoutABox) {
    for (const Survey& other : {surveyOfReadings({1, 2}), Survey{}}) {
        surveyUnderTest() = surveyOfReadings({10, 20, 30}, {20, 40, 60});
        plot();
        ASSERT_TRUE(chart().isVisible());
        surveyUnderTest() = other;
        window().redraw();
        EXPECT_FALSE(chart().isVisible());
    }
}

TEST_F(CorrelationWindow, SaysThatItNeedsTwoReadingsOrThatNoPointIsLeft) {
    surveyUnderTest() = surveyOfReadings({1, 2});
    boxes_.tell(u"This option is only available when 2 signal data columns are present."_s);
    plot();
    EXPECT_FALSE(chart().isVisible());
    surveyUnderTest() = surveyOfReadings({1, 2}, {3, 4});
    surveyUnderTest().NumSites = 0;
    boxes_.tell(u"There is no more point left in the file!"_s);
    plot();
    EXPECT_FALSE(chart().isVisible());
}

// 2000 device units of 300 to the inch are 480 points; the corner stays at 200 device units.
TEST_F(CorrelationWindow, PrintsAlsoBeforeTheFirstPlotWithTheSameSizeAtEveryResolution) {
    surveyUnderTest() = surveyOfReadings({10, 30, 10, 30}, {60, 60, 20, 20});
    QSizeF size;
    for (const double scale : {1.0, 2.0, 4.0}) {
        SCOPED_TRACE(scale);
        theSession().PrintScale = scale;
        const PrintedPdf pdf;
        QTest::keyClick(&window(), Qt::Key_P, Qt::ControlModifier);
        ASSERT_EQ(pdf.questions(), 1);
        const double corner = 200 / (300 * scale) * 72;
        const QRectF header = pdf.find(u"Conductivity"_s) | pdf.find(u"Plot"_s);
        EXPECT_NEAR(header.center().x(), corner + 240, 8);
        EXPECT_GE(header.top(), corner - 2);
        EXPECT_LT(header.top(), corner + 30);
        const QRectF axisTitle = pdf.find(u"(EC1)"_s);
        EXPECT_LE(axisTitle.bottom(), corner + 482);
        EXPECT_GT(axisTitle.bottom(), corner + 440);
        const QRectF points = blueBox(pdf.picture());
        EXPECT_GT(points.width(), 300);
        if (size.isEmpty()) size = points.size();
        EXPECT_NEAR(points.width(), size.width(), 1);
        EXPECT_NEAR(points.height(), size.height(), 1);
        EXPECT_GT(points.left(), corner);
        EXPECT_LT(points.right(), corner + 480);
    }
    EXPECT_TRUE(chart().isVisible());
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

// 1.0004 stands for a factor that leads to no whole number of device units: 2000.8.
TEST_F(CorrelationWindow, PrintsIntoASquareOfWholeDeviceUnits) {
    plot();
    const std::pair<double, double> sizes[] = {{1.0, 2000}, {2.0, 4000}, {1.0004, 2001}};
    for (const auto& [scale, size] : sizes) {
        SCOPED_TRACE(scale);
        theSession().PrintScale = scale;
        const PrintedPdf expected;
        printPage(&window(), QString(), [this, size = size](QPainter& painter, const QPrinter&) {
            chart().print(painter, QRectF(200, 200, size, size));
        });
        const QImage wanted = expected.picture();
        const PrintedPdf pdf;
        window().mnuPrint->trigger();
        EXPECT_EQ(pdf.picture(), wanted);
    }
}

TEST_F(CorrelationWindow, PrintsNothingThatItCannotPlot) {
    surveyUnderTest().TwoEMColumns = false;
    const PrintedPdf pdf;
    boxes_.tell(u"This option is only available when 2 signal data columns are present."_s);
    window().mnuPrint->trigger();
    EXPECT_EQ(pdf.questions(), 0);
    EXPECT_FALSE(pdf.exists());
}

TEST_F(CorrelationWindow, ReadsOutTheSiteUnderThePointer) {
    surveyUnderTest().SiteIDPresent = true;
    surveyUnderTest().SiteID = {7, 8, 9};
    plot();
    const QPoint site = chart().dataToPixel(12, 33).toPoint();
    QTest::mouseMove(&chart(), site + QPoint(2, 0));
    EXPECT_EQ(chart().footerText(),
              u"Site sequence number = 2, Row #1, Site # 9, EM1 = 12.00, EM2 = 33.00"_s);
    QTest::mouseMove(&chart(), site + QPoint(20, 0));
    EXPECT_EQ(chart().footerText(), QString());
    surveyUnderTest().SiteData(kEM1, 2) = 25;  // a new plot has not been read yet
    QTest::mouseMove(&chart(), site);
    window().redraw();
    EXPECT_EQ(chart().footerText(), QString());
    QTest::mouseMove(&chart(), chart().dataToPixel(25, 33).toPoint());
    EXPECT_EQ(chart().footerText(),
              u"Site sequence number = 2, Row #1, Site # 9, EM1 = 25.00, EM2 = 33.00"_s);
}

}  // namespace tessel
