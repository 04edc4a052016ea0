// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmHistForm.h"

#include "app/frmMain.h"
#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/Windows.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/PointerAtShow.h"
#include "support/PrintedPdf.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

using Texts = std::vector<std::string>;

// Readings 0, 100 and as many as wished between: bins are easily told by hand.
const std::vector<double> kSpread{0, 0, 0, 0, 20, 20, 50, 100};
const std::vector<double> kSpread2{0, 90, 90, 90, 90, 90, 90, 100};

// A histogram as it is seen: what stands at the foot of each bar, and where it ends.
class SeenHistogram {
  public:
    explicit SeenHistogram(QWidget* box) : image_(box->grab().toImage()), scale_(image_.devicePixelRatio()) {}

    /// Number of the palette's colour at the place of bar i (1..50), at height y (0 top, 1 bottom); -1 when
    /// it is none of these.
    int colour(int i, double y) const {
        const QRgb pixel = image_.pixel(column(i), std::min(row(y), image_.height() - 3));
        for (const int number : {kBlue, kGreen, kLightBlue, kLightGreen, kBrightWhite})
            if ((pixel & 0xFFFFFF) == kBasicPalette[static_cast<std::size_t>(number)]) return number;
        return -1;
    }
    int foot(int i) const { return colour(i, 1); }
    /// Width of bar i in device-independent pixels.
    double width(int i) const {
        const int y = image_.height() - 3;
        const QRgb colour = image_.pixel(column(i), y);
        int first = column(i), last = column(i);
        while (first > 0 && image_.pixel(first - 1, y) == colour)
            --first;
        while (last + 1 < image_.width() && image_.pixel(last + 1, y) == colour)
            ++last;
        return (last - first + 1) / scale_;
    }
    /// The height at which bar i ends, in pixels from the top.
    int top(int i) const {
        int y = image_.height() - 3;
        while (y > 0 && image_.pixel(column(i), y - 1) == image_.pixel(column(i), y))
            --y;
        return y;
    }
    int row(double y) const { return static_cast<int>(std::lround(y * image_.height())); }

  private:
    int column(int i) const { return static_cast<int>(i / 51.0 * image_.width()); }

    QImage image_;
    double scale_;
};

// Bars with these tops and no others, in one colour up to the mark of the mean and in the other beyond it.
void expectBars(const SeenHistogram& seen, const std::map<int, double>& tops, int mark, int upToMark,
                int beyond) {
    for (int i = 1; i <= 50; ++i) {
        SCOPED_TRACE(i);
        const auto bar = tops.find(i);
        if (bar == tops.end()) {
            EXPECT_EQ(seen.foot(i), kBrightWhite);
            continue;
        }
        EXPECT_EQ(seen.foot(i), i <= mark ? upToMark : beyond);
        EXPECT_NEAR(seen.top(i), seen.row(bar->second), 1);
    }
}

class HistogramWindow : public testing::Test {
  protected:
    HistogramWindow() {
        surveyUnderTest() = surveyOfReadings(kSpread, kSpread2);
        open();
    }

    void open() {
        window_ = std::make_unique<frmHistForm>();
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }
    void plot() {
        window_->mnuPlot->trigger();
        QApplication::processEvents();
    }
    void expectFailure(const QString& number) {
        boxes_.tell(u"Unexpected error: request terminated."_s);
        boxes_.tell(number);
    }
    frmHistForm& window() { return *window_; }
    Texts em1() const { return figures(u"lblH1_%1"_s); }
    Texts em2() const { return figures(u"lblH2_%1"_s); }
    Texts figures(const QString& label) const {
        Texts texts;
        for (const int figure : {0, 1, 2, 3})
            texts.push_back(window_->findChild<QLabel*>(label.arg(figure))->text().toStdString());
        return texts;
    }
    bool nothingPlotted() const {
        const QList<QWidget*> parts{window_->Label1, window_->Label2, window_->HG1, window_->HG2,
                                    window_->frameHG};
        return std::none_of(parts.begin(), parts.end(), [](QWidget* part) { return part->isVisible(); });
    }

    ExpectedBoxes boxes_;

  private:
    std::unique_ptr<frmHistForm> window_;
};

}  // namespace

TEST_F(HistogramWindow, ComesUpEmptyBesideTheCornerOfTheMainWindow) {
    frmMain main;
    main.move(120, 80);
    frmHistForm histograms(&main);
    const double dpi = histograms.logicalDpiX();
    EXPECT_EQ(histograms.pos(), QPoint(120, 80) + QPointF(1000 / 1440.0 * dpi, 500 / 1440.0 * dpi).toPoint());
    EXPECT_TRUE(histograms.isWindow());
    EXPECT_TRUE(nothingPlotted());
    EXPECT_TRUE(window().lblHint->isVisible());
}

TEST_F(HistogramWindow, IsShownWhereItHasPlacedItselfOrOnTheScreenWhereThatIsBeyondTheEdge) {
    frmMain main;
    const QRect screen = main.screen()->availableGeometry();
    for (const QPoint corner : {QPoint(40, 50), screen.bottomRight() - QPoint(60, 60)}) {
        main.setGeometry(QRect(corner, QSize(500, 400)));
        main.show();
        auto* const histograms = new frmHistForm(&main);
        const QPoint place = histograms->pos();
        EXPECT_NE(place, main.pos());
        showBeside(histograms);
        EXPECT_TRUE(screen.contains(histograms->geometry()));
        if (corner.x() == 40) {
            EXPECT_EQ(histograms->pos(), place);
        }
    }
}

// EM1 by hand: mean 190 / 8 = 23.75; squares about it 4 * 564.0625 + 2 * 14.0625 + 689.0625 + 5814.0625 =
// 8787.5, sd sqrt(8787.5 / 7) = 35.43. EM2: mean 640 / 8 = 80, squares 6400 + 600 + 400 = 7400, sd 32.51.
TEST_F(HistogramWindow, PlotsBothReadingsWithTheirStatistics) {
    plot();
    EXPECT_EQ(em1(), (Texts{"23.75", "35.43", "0.00", "100.00"}));
    EXPECT_EQ(em2(), (Texts{"80.00", "32.51", "0.00", "100.00"}));
    for (const QWidget* part :
         QList<QWidget*>{window().Label1, window().Label2, window().HG1, window().HG2, window().frameHG})
        EXPECT_TRUE(part->isVisible()) << part->objectName().toStdString();
    EXPECT_FALSE(window().lblHint->isVisible());
}

// EM1 fills bins 1 (four), 11 (two), 26 and 50 (one each); the mean's mark is 23.75 / 2 rounded: 12.
TEST_F(HistogramWindow, BarsStandWhereTheBinsAreAndEndAtTheirCounts) {
    plot();
    const SeenHistogram seen(window().HG1);
    expectBars(seen, {{1, 0.1}, {11, 0.55}, {26, 0.775}, {50, 0.775}}, 12, kLightBlue, kBlue);
    for (const int bin : {1, 11, 26, 50})
        EXPECT_EQ(seen.width(bin), 4);
}

// EM2 fills bins 1, 25, 26 and 50 alike; its mean 49.75 puts the mark at 25, where that of EM1 is 12.
TEST_F(HistogramWindow, SecondReadingsHaveBarsAndAMarkOfTheirOwnAndNoneOfAnEarlierPlot) {
    plot();
    ASSERT_EQ(SeenHistogram(window().HG2).foot(46), kGreen);
    surveyUnderTest() = surveyOfReadings(kSpread, {0, 49, 50, 100, 0, 49, 50, 100});
    window().redraw();
    expectBars(SeenHistogram(window().HG2), {{1, 0.1}, {25, 0.1}, {26, 0.1}, {50, 0.1}}, 25, kLightGreen,
               kGreen);
}

TEST_F(HistogramWindow, ShowsTheHourglassWhileItPlotsAndPrints) {
    const PointerAtShow pointer(window(), *window().HG1);
    plot();
    EXPECT_EQ(pointer.shape(), Qt::WaitCursor);
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);

    EXPECT_EQ(pointerWhilePrinting(window(), *window().mnuPrint), Qt::WaitCursor);
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(HistogramWindow, ASurveyWithOneReadingTakesTheSecondHistogramOfAnEarlierOneAway) {
    plot();
    surveyUnderTest() = surveyOfReadings(kSpread);
    plot();
    EXPECT_FALSE(window().HG2->isVisible());
    EXPECT_EQ(em2(), (Texts{"n/a", "n/a", "n/a", "n/a"}));
    surveyUnderTest() = surveyOfReadings(kSpread, kSpread2);
    plot();
    EXPECT_TRUE(window().HG2->isVisible());
    EXPECT_EQ(SeenHistogram(window().HG2).foot(46), kGreen);
}

// Both columns are divided into bins before the first is drawn.
TEST_F(HistogramWindow, EqualReadingsOrAnOverflowLeaveTheNumberOfTheErrorAndNothingOfTheEarlierPlot) {
    const Texts equal{"5.00", "0.00", "5.00", "5.00"};
    const std::tuple<Survey, QString, Texts, Texts> cases[] = {
        {surveyOfReadings({5, 5, 5}, {1, 2, 3}), u"11"_s, equal, {"2.00", "1.00", "1.00", "3.00"}},
        {surveyOfReadings({1, 2, 3}, {5, 5, 5}), u"11"_s, {"2.00", "1.00", "1.00", "3.00"}, equal},
        {surveyOfReadings({5}), u"11"_s, {"", "", "", ""}, {"", "", "", ""}},
        {surveyOfReadings({1e200, -1e200, 0}), u"6"_s, {"", "", "", ""}, {"", "", "", ""}}};
    for (const auto& [survey, number, texts1, texts2] : cases) {
        surveyUnderTest() = surveyOfReadings(kSpread, kSpread2);
        plot();
        surveyUnderTest() = survey;
        expectFailure(number);
        plot();
        EXPECT_EQ(boxes_.pending(), 0);
        EXPECT_TRUE(nothingPlotted());
        EXPECT_TRUE(window().lblHint->isVisible());
        EXPECT_EQ(em1(), texts1);
        EXPECT_EQ(em2(), texts2);
        EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
    }
    surveyUnderTest() = surveyOfReadings({0, 0, 100});
    plot();
    expectBars(SeenHistogram(window().HG1), {{1, 0.1}, {50, 0.55}}, 17, kLightBlue, kBlue);
}

TEST_F(HistogramWindow, WhatIsPlottedFollowsTheSurvey) {
    window().redraw();
    EXPECT_TRUE(nothingPlotted()) << "nothing has been plotted yet";
    plot();
    surveyUnderTest() = surveyOfReadings({0, 0, 100});
    window().redraw();
    QApplication::processEvents();
    EXPECT_EQ(em1(), (Texts{"33.33", "57.74", "0.00", "100.00"}));
    EXPECT_EQ(em2(), (Texts{"n/a", "n/a", "n/a", "n/a"}));
    expectBars(SeenHistogram(window().HG1), {{1, 0.1}, {50, 0.55}}, 17, kLightBlue, kBlue);
    EXPECT_FALSE(window().HG2->isVisible());
}

TEST_F(HistogramWindow, ASurveyThatCannotBePlottedTakesThePlotAwayWithoutABox) {
    plot();
    surveyUnderTest() = surveyOfReadings({1, 2, 3}, {5, 5, 5});
    window().redraw();
    EXPECT_TRUE(nothingPlotted());
    EXPECT_TRUE(window().lblHint->isVisible());
    EXPECT_EQ(em1(), (Texts{"", "", "", ""}));
    surveyUnderTest() = Survey{};
    window().redraw();
    EXPECT_TRUE(nothingPlotted());
}

TEST_F(HistogramWindow, BoxesGrowWithTheWindowAndAreDrawnAnew) {
    plot();
    const QSize before = window().HG1->size();
    window().resize(window().size() + QSize(300, 200));
    QApplication::processEvents();
    EXPECT_EQ(window().HG1->width(), before.width() + 300);
    EXPECT_GE(window().HG1->height(), before.height() + 90);
    EXPECT_GE(window().HG2->height(), before.height() + 90);
    const SeenHistogram seen(window().HG1);
    EXPECT_EQ(seen.foot(50), kBlue);
    EXPECT_EQ(seen.foot(49), kBrightWhite);
    EXPECT_EQ(seen.width(26), 4);
    EXPECT_NEAR(seen.top(11), seen.row(0.55), 1);
}

TEST_F(HistogramWindow, AlwaysShowsTheWhole) {
    plot();
    for (PictureBox* box : {window().HG1, window().HG2}) {
        turnWheel(*box, {50, 50}, 240);
        QTest::keyClick(box, Qt::Key_Plus);
        EXPECT_EQ(box->scale(), Rectangle{});
        EXPECT_FALSE(box->hasFocus());
    }
    EXPECT_EQ(SeenHistogram(window().HG1).foot(50), kBlue);
}

namespace {

// The block whose title stands at `top` twips, as it must be on paper at every resolution.
void expectBlock(const PrintedPdf& pdf, const QString& signal, double top, const QString& minimum,
                 const QString& maximum) {
    constexpr double kTwip = 1 / 20.0;  // points
    const double half = PrintedPdf::printableArea().width() / 2;
    const QRectF title = pdf.find(signal);
    EXPECT_NEAR(title.top(), top * kTwip, 4) << signal.toStdString();
    const QRectF left = pdf.find(minimum, (top + 4300) * kTwip);
    EXPECT_NEAR(left.left(), 25, 1.5) << minimum.toStdString();
    EXPECT_NEAR(left.top() - title.top(), 4400 * kTwip, 0.5);
    const QRectF right = pdf.find(maximum, (top + 4300) * kTwip);
    EXPECT_NEAR(right.left(), half, 1.5) << maximum.toStdString();
    EXPECT_NEAR(right.top() - title.top(), 4400 * kTwip, 0.5);
}

// The frame of the picture that begins at `top` points, which is 200 points high.
void expectFrame(const QImage& page, double top) {
    constexpr int kScale = PrintedPdf::kPixelsPerPoint;
    const double half = PrintedPdf::printableArea().width() / 2;
    const auto dark = [&page](double x, double y) {
        const QPoint place(qRound(x * kScale), qRound(y * kScale));
        for (const QPoint beside : {QPoint(0, 0), QPoint(-1, -1), QPoint(1, 1)})
            if (page.pixelColor(place + beside).lightness() < 200) return true;
        return false;
    };
    const double between = 25 + half * 40.5 / 51;  // no bar reaches this place
    EXPECT_TRUE(dark(between, top));
    EXPECT_TRUE(dark(between, top + 200));
    EXPECT_TRUE(dark(25, top + 100));
    EXPECT_TRUE(dark(25 + half, top + 100));
    for (const double inside : {2.0, 198.0})
        EXPECT_FALSE(dark(between, top + inside)) << inside;
}

// Colour on paper at the place of bar i of the block whose picture begins at `top` points.
QColor barOnPaper(const QImage& page, int i, double top) {
    const double width = PrintedPdf::printableArea().width() / 2;
    const QPointF place = QPointF(25 + i / 51.0 * width, top + 200 - 2) * PrintedPdf::kPixelsPerPoint;
    return page.pixelColor(place.toPoint());
}

// A page is drawn with smoothing, which rounds.
void expectPaletteColour(const QColor& seen, BasicColour number) {
    const QColor wanted = paletteColour(number);
    EXPECT_NEAR(seen.red(), wanted.red(), 3);
    EXPECT_NEAR(seen.green(), wanted.green(), 3);
    EXPECT_NEAR(seen.blue(), wanted.blue(), 3);
}

}  // namespace

TEST_F(HistogramWindow, PrintsBothBlocksAlsoBeforeTheFirstPlotAtTheSamePlacesAtEveryResolution) {
    surveyUnderTest() = surveyOfReadings(kSpread, {3, 90, 90, 90, 90, 90, 90, 103});
    for (const double scale : {1.0, 2.0, 4.0}) {
        SCOPED_TRACE(scale);
        theSession().PrintScale = scale;
        const PrintedPdf pdf;
        QTest::keyClick(&window(), Qt::Key_P, Qt::ControlModifier);
        ASSERT_EQ(pdf.questions(), 1);
        EXPECT_NEAR(pdf.find(u"Signal"_s).left(), 25, 1.5);
        EXPECT_TRUE(pdf.fonts().contains(u"Bold"_s)) << pdf.fonts().toStdString();
        EXPECT_EQ(pdf.fonts().count(u'\n'), 0) << pdf.fonts().toStdString();
        expectBlock(pdf, u"Ec1"_s, 200, u"0.00"_s, u"100.00"_s);
        expectBlock(pdf, u"Ec2"_s, 5200, u"3.00"_s, u"103.00"_s);
        const QImage page = pdf.picture();
        expectFrame(page, 25);
        expectFrame(page, 275);
        expectPaletteColour(barOnPaper(page, 1, 25), kLightBlue);
        expectPaletteColour(barOnPaper(page, 26, 25), kBlue);
        expectPaletteColour(barOnPaper(page, 45, 275), kGreen);
        expectPaletteColour(barOnPaper(page, 1, 275), kLightGreen);
        expectPaletteColour(barOnPaper(page, 30, 25), kBrightWhite);
    }
    EXPECT_FALSE(nothingPlotted());
    EXPECT_EQ(SeenHistogram(window().HG1).foot(50), kBlue) << "printing has changed the screen";
}

TEST_F(HistogramWindow, PrintsBothBlocksOfASurveyWithOneReading) {
    surveyUnderTest() = surveyOfReadings(kSpread);
    plot();
    const PrintedPdf pdf;
    window().mnuPrint->trigger();
    EXPECT_FALSE(pdf.find(u"Ec2"_s).isNull());
    EXPECT_NEAR(pdf.find(u"n/a"_s).left(), 25, 1.5);
    expectPaletteColour(barOnPaper(pdf.picture(), 1, 25), kLightBlue);
    expectPaletteColour(barOnPaper(pdf.picture(), 1, 275), kBrightWhite);
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(HistogramWindow, PrintsNothingThatItCannotPlot) {
    surveyUnderTest() = surveyOfReadings({5, 5, 5});
    open();
    const PrintedPdf pdf;
    expectFailure(QString::number(RunTimeError::kDivisionByZero));
    window().mnuPrint->trigger();
    EXPECT_EQ(pdf.questions(), 0);
    EXPECT_FALSE(pdf.exists());
}

TEST_F(HistogramWindow, ReadsOutTheBarUnderThePointer) {
    QTest::mouseMove(window().HG1, QPoint(20, 20));
    EXPECT_EQ(window().lblBar->text(), QString()) << "nothing is plotted";
    plot();
    const auto pointAt = [&](QWidget* box, int bar) {
        QTest::mouseMove(box, QPoint(qRound(bar / 51.0 * box->width()), box->height() / 2));
        return window().lblBar->text().toStdString();
    };
    EXPECT_EQ(pointAt(window().HG1, 1), "0.00 to 1.00 mS/m: 4 sites");
    EXPECT_EQ(pointAt(window().HG1, 11), "19.00 to 21.00 mS/m: 2 sites");
    EXPECT_EQ(pointAt(window().HG1, 50), "97.00 to 100.00 mS/m: 1 site");
    EXPECT_EQ(pointAt(window().HG2, 46), "89.00 to 91.00 mS/m: 6 sites");
    QTest::mouseMove(window().HG1, QPoint(1, 20));
    EXPECT_EQ(window().lblBar->text(), QString()) << "beside the bars";
    pointAt(window().HG1, 11);
    leave(*window().HG1);
    EXPECT_EQ(window().lblBar->text(), QString());
}

}  // namespace tessel
