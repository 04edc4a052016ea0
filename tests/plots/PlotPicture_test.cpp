// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/PlotPicture.h"

#include "base/palette16.h"
#include "drawing/colour_map.h"
#include "plots/Chart2D.h"
#include "plots/ColourScale.h"
#include "plots/SeriesPainter.h"

namespace tessel {

namespace {

// A chart of 500 x 400 pixels, a scale at its right, and a label above both.
class PlotPictureTest : public testing::Test {
  protected:
    PlotPictureTest() {
        window.resize(600, 500);
        label.setGeometry(20, 20, 300, 30);
        chart.setGeometry(20, 60, 500, 400);
        scale.setGeometry(520, 60, 70, 400);
        chart.setAxisRange(Chart2D::Axis::kX, 0, 100);
        chart.setAxisRange(Chart2D::Axis::kY, 0, 100);
        setPoints(1);
        window.show();
        QCoreApplication::processEvents();
    }
    // So many in the middle and around it.
    void setPoints(int count) {
        std::vector<double> x, y;
        for (int i = 0; i < count; ++i) {
            x.push_back(50 + 40 * std::sin(i) * i / count);
            y.push_back(50 + 40 * std::cos(i * 1.7) * i / count);
        }
        chart.setSeriesCount(Chart2D::kData, 1);
        chart.replacePoints(Chart2D::kData, 1, x, y);
        chart.setSymbolColour(Chart2D::kData, 1, kLightRed);
    }
    QPoint middle() const { return chart.dataToPixel(50, 50).toPoint(); }

    QWidget window;
    QLabel label{u"Histogram"_s, &window};
    Chart2D chart{&window};
    ColourScale scale{&window};
};

}  // namespace

TEST_F(PlotPictureTest, LooksAsTheScreenAtEveryWidth) {
    const PlotPicture picture({&chart});
    EXPECT_EQ(picture.size(), QSize(500, 400));
    for (const int width : {500, 1500}) {
        const QImage image = picture.image(width);
        EXPECT_EQ(image.size(), QSize(width, width * 400 / 500));
        EXPECT_EQ(image.pixelColor(middle() * width / 500), QColor(255, 0, 0)) << width;
        EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::white));
    }
    EXPECT_EQ(picture.image(250).size(), QSize(250, 200));
}

TEST_F(PlotPictureTest, HasItsPartsWhereTheyStandInTheWindow) {
    const PlotPicture picture({&label, &chart, &scale});
    EXPECT_EQ(picture.size(), QSize(570, 440));
    const QImage image = picture.image(570);
    EXPECT_EQ(image.pixelColor(middle() + QPoint(0, 40)), QColor(255, 0, 0));
    EXPECT_EQ(image.pixel(500 + 15, 428) & 0xFFFFFFU, colourMap()[1]);
    int dark = 0;
    for (int x = 0; x < 300; ++x)
        for (int y = 0; y < 30; ++y)
            dark += image.pixelColor(x, y).lightness() < 100;
    EXPECT_GT(dark, 50) << "the label";
}

TEST_F(PlotPictureTest, LeavesOutWhatIsHidden) {
    scale.hide();
    EXPECT_EQ(PlotPicture({&chart, &scale}).size(), QSize(500, 400));
    chart.hide();
    EXPECT_TRUE(PlotPicture({&chart, &scale}).isEmpty());
}

TEST_F(PlotPictureTest, LeavesOutTheReadoutOfThePointerAndTheCross) {
    const QImage before = PlotPicture({&chart}).image(500);
    chart.setFooterText(u"Row #1"_s);
    chart.showCross(30, 30);
    EXPECT_EQ(PlotPicture({&chart}).image(500), before);
    EXPECT_EQ(chart.footerText(), u"Row #1"_s);
}

TEST_F(PlotPictureTest, IsMadeOfStrokesInSvgAndPdf) {
    setPoints(1000);
    const QByteArray svg = PlotPicture({&chart, &scale}).svg();
    EXPECT_TRUE(svg.contains("<svg"));
    EXPECT_TRUE(svg.contains("stroke=\"#ff0000\""));
    EXPECT_EQ(svg.count("<image"), 1) << "the strip of colours";
    const QByteArray pdf = PlotPicture({&chart}).pdf();
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    const auto box = pdf.mid(pdf.indexOf("/MediaBox"), 40);
    EXPECT_TRUE(box.startsWith("/MediaBox [0 0 375"))
        << box.toStdString() << ": the chart's 500 x 400, in points";
    EXPECT_FALSE(pdf.contains("/Subtype /Image"));
}

TEST_F(PlotPictureTest, HoldsManySymbolsAsOnePictureInsteadOfManyStrokes) {
    setPoints(static_cast<int>(SeriesPainter::kMostStrokes) + 1);
    const QByteArray svg = PlotPicture({&chart}).svg();
    EXPECT_EQ(svg.count("<image"), 1);
    EXPECT_LT(svg.size(), 5'000'000);
    EXPECT_LT(svg.count("<path"), 500) << "axes and letters";
    const QByteArray pdf = PlotPicture({&chart}).pdf();
    EXPECT_TRUE(pdf.contains("/Subtype /Image"));
    EXPECT_LT(pdf.size(), 5'000'000);
    EXPECT_EQ(PlotPicture({&chart}).image(1000).pixelColor(middle() * 2), QColor(255, 0, 0));
}

TEST_F(PlotPictureTest, IsCopiedTwiceAsWideAsOnTheScreen) {
    QGuiApplication::clipboard()->clear();
    offerPicture(chart, {&chart, &scale});
    chart.setFocus();
    QTest::keyClick(&chart, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(1140, 800));
}

TEST_F(PlotPictureTest, ShowsOverlappingReadingsInTheOrderOfTheScreen) {
    // In turns the lowest and the highest reading, each partly over the one before it.
    std::vector<double> x, y;
    std::vector<Shade> shades;
    for (int i = 0; i < 200; ++i) {
        x.push_back(10 + 0.4 * i);
        y.push_back(50);
        shades.push_back(i % 2 == 0 ? Shade{0} : Shade{kShades - 1});
    }
    chart.replacePoints(Chart2D::kData, 1, x, y);
    chart.setShades(Chart2D::kData, 1, shades);
    const QByteArray svg = PlotPicture({&chart}).svg();
    const auto colour = [](Shade shade) { return QColor::fromRgb(colourMap()[shade]).name().toLatin1(); };
    const QByteArray low = "stroke=\"" + colour(0) + '"', high = "stroke=\"" + colour(kShades - 1) + '"';
    EXPECT_EQ(svg.count(low), 100);
    EXPECT_LT(svg.indexOf(high), svg.indexOf(low)) << "the last site lies beneath";
    EXPECT_LT(svg.indexOf(low), svg.lastIndexOf(high));
}

TEST_F(PlotPictureTest, HoldsFewerSymbolsAsStrokesWhereEachHasItsColour) {
    const int count = static_cast<int>(SeriesPainter::kMostColouredStrokes) + 1;
    setPoints(count);
    std::vector<Shade> shades(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < shades.size(); ++i)
        shades[i] = static_cast<Shade>(i * 37 % kShades);
    chart.setShades(Chart2D::kData, 1, shades);
    EXPECT_EQ(PlotPicture({&chart}).svg().count("<image"), 1);
}

}  // namespace tessel
