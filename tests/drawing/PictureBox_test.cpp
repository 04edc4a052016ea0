// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/PictureBox.h"

#include "support/Pixels.h"

namespace tessel {

namespace {

class PictureBoxTest : public testing::Test {
  protected:
    PictureBoxTest() { box.resize(400, 200); }

    void show() {
        box.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
        QCoreApplication::processEvents();
        box.clearFocus();
    }

    QImage grab() {
        box.clearFocus();
        return box.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    QColor at(const QImage& image, double x, double y) const { return colourAt(image, box.toPixel(x, y)); }
    static int count(const QImage& image, int colour) { return countColour(image, paletteColour(colour)); }

    // An extent has its large y up.
    void drawPoint(double x, double y, int colour) {
        const double up = 1 - y;
        box.drawPoints(&x, &up, nullptr, 1, {}, colour);
    }

    PictureBox box;
};

}  // namespace

TEST_F(PictureBoxTest, StartsWithTheUnitSquareOnWhitePaper) {
    EXPECT_EQ(box.scale(), (Rectangle{}));
    QPalette dark(Qt::black);
    box.setPalette(dark);
    show();
    const QImage image = grab();
    EXPECT_EQ(count(image, kBrightWhite), image.width() * image.height());
}

TEST_F(PictureBoxTest, DrawsPointsLinesAndRectanglesOnItsScale) {
    show();
    box.setScale(Rectangle::at(-0.05, -0.05, 1.1, 1.1));
    box.fillRectangle(0.1, 0.9, 0.3, 0.7, kLightYellow);
    box.setPenWidth(2);
    drawPoint(0.5, 0.5, kBlue);
    box.drawLine(0.7, 1, 0.7, 0.2, kRed);
    const QImage image = grab();
    EXPECT_EQ(at(image, 0.2, 0.8), paletteColour(kLightYellow));
    EXPECT_EQ(at(image, 0.5, 0.5), paletteColour(kBlue));
    EXPECT_EQ(at(image, 0.7, 0.6), paletteColour(kRed));
    EXPECT_EQ(at(image, 0.7, 0.1), paletteColour(kBrightWhite));
    box.clear();
    EXPECT_EQ(count(grab(), kBrightWhite), image.width() * image.height());
}

TEST_F(PictureBoxTest, DotsAreSharpAtEveryDisplayScale) {
    show();
    box.setPenWidth(2);
    drawPoint(0.5, 0.5, kBlue);
    const QImage image = grab();
    const int side = qRound(2 * image.devicePixelRatio());
    EXPECT_GE(count(image, kBlue), side == 2 ? 4 : side * side - 4);
    EXPECT_EQ(count(image, kBlue) + count(image, kBrightWhite), image.width() * image.height());
}

TEST_F(PictureBoxTest, ManyPointsFallWhereSinglePointsFall) {
    show();
    const std::vector<double> x = {436000, 436500, 437000, 436250};
    const std::vector<double> y = {100, 300, 200, 150};
    const Rectangle extent{436000, 437000, 100, 300};
    box.setScale(Rectangle::at(-0.05, -0.05, 1.1, 1.1));
    box.setPenWidth(2);
    box.drawPoints(x.data(), y.data(), nullptr, 4, extent, kBlue);
    const QImage many = grab();
    box.clear();
    for (std::size_t i = 0; i < x.size(); ++i)
        drawPoint((x[i] - 436000) / 1000, 1 - (y[i] - 100) / 200, kBlue);
    EXPECT_EQ(many, grab());
    EXPECT_EQ(at(many, 0.5, 0), paletteColour(kBlue));
    EXPECT_EQ(at(many, 0, 1), paletteColour(kBlue));
}

TEST_F(PictureBoxTest, TheRubberBandLeavesThePictureAsItWas) {
    show();
    box.drawLine(0.2, 0, 0.2, 1, kBlue);
    const QImage before = grab();
    box.showRubberBand(0.1, 0.1, 0.6, 0.6, kGreen);
    EXPECT_GT(count(grab(), kGreen), 300);
    box.showRubberBand(0.9, 0.9, 0.4, 0.3, kGreen);
    EXPECT_EQ(at(grab(), 0.1, 0.4), paletteColour(kBrightWhite));
    box.hideRubberBand();
    EXPECT_EQ(grab(), before);
    box.showCross(0.5, 0.5);
    EXPECT_NE(grab(), before);
    box.hideCross();
    EXPECT_EQ(grab(), before);
}

TEST_F(PictureBoxTest, ReportsThePointerInItsScale) {
    show();
    box.setScale(Rectangle::at(0.5, -0.05, 0.55, 0.55));
    QSignalSpy moved(&box, &PictureBox::pointerMoved);
    QSignalSpy pressed(&box, &PictureBox::pointerPressed);
    QTest::mouseMove(&box, QPoint(200, 50));
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    QTest::mouseClick(&box, Qt::RightButton, Qt::NoModifier, QPoint(120, 100));
    ASSERT_GE(moved.count(), 1);
    EXPECT_NEAR(moved.at(0).at(0).toDouble(), 0.5 + 0.55 * 200 / 400, 1e-9);
    EXPECT_NEAR(moved.at(0).at(1).toDouble(), -0.05 + 0.55 * 50 / 200, 1e-9);
    ASSERT_EQ(pressed.count(), 1);
    EXPECT_NEAR(pressed.at(0).at(0).toDouble(), 0.5 + 0.55 * 100 / 400, 1e-9);
}

TEST_F(PictureBoxTest, TheWheelZoomsAroundThePointer) {
    show();
    QSignalSpy changed(&box, &PictureBox::scaleChanged);
    QSignalSpy redraw(&box, &PictureBox::redrawNeeded);
    const QPointF before = box.toScale({100, 50});
    turnWheel(box, {100, 50}, 240);
    EXPECT_LT(box.scale().width(), 0.7);
    EXPECT_NEAR((box.toScale({100, 50}) - before).manhattanLength(), 0, 1e-9);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(redraw.count(), 1);
}

TEST_F(PictureBoxTest, ZoomingHasLimitsAndKeepsTheShape) {
    box.setScale(Rectangle::at(0, 0, 1, 0.2));
    for (int i = 0; i < 200; ++i)
        turnWheel(box, {100, 50}, 600);
    EXPECT_GE(box.scale().height(), 0.99e-6);
    EXPECT_NEAR(box.scale().height() / box.scale().width(), 0.2, 1e-6);
    for (int i = 0; i < 400; ++i)
        turnWheel(box, {100, 50}, -600);
    EXPECT_LE(box.scale().width(), 20.01);
    EXPECT_NEAR(box.scale().height() / box.scale().width(), 0.2, 1e-6);
}

TEST_F(PictureBoxTest, KeepsItsScaleWhereItMayNotBeZoomed) {
    box.setZoomable(false);
    show();
    QSignalSpy redraw(&box, &PictureBox::redrawNeeded);
    turnWheel(box, {100, 50}, 240);
    QTest::keyClick(&box, Qt::Key_Plus);
    QTest::keyClick(&box, Qt::Key_Left, Qt::ControlModifier);
    drag(box, Qt::RightButton, {200, 100}, {240, 80});
    EXPECT_EQ(box.scale(), Rectangle{});
    EXPECT_EQ(redraw.count(), 0);
    box.setScale(Rectangle::at(0, 0, 1, 0.2));
    EXPECT_EQ(box.scale().height(), 0.2);
}

TEST_F(PictureBoxTest, DraggingMovesTheScale) {
    show();
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        box.setScale(Rectangle::at(0, 0, 1, 1));
        drag(box, button, {200, 100}, {240, 80});
        EXPECT_NEAR(box.scale().x.from, -0.1, 1e-9);
        EXPECT_NEAR(box.scale().y.from, 0.1, 1e-9);
        EXPECT_DOUBLE_EQ(box.scale().width(), 1);
    }
}

TEST_F(PictureBoxTest, SettingTheScaleDoesNotAskForARedraw) {
    show();
    QSignalSpy changed(&box, &PictureBox::scaleChanged);
    QSignalSpy redraw(&box, &PictureBox::redrawNeeded);
    box.setScale(Rectangle::at(0.7, -0.05, 0.35, 1.1));
    box.setScale(Rectangle::at(0.7, -0.05, 0.35, 1.1));
    box.setScale(Rectangle::at(0, 0, 0, 1));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(redraw.count(), 0);
    EXPECT_EQ(box.scale(), (Rectangle::at(0.7, -0.05, 0.35, 1.1)));
}

TEST_F(PictureBoxTest, WhatIsDrawnBeforeTheFirstShowIsKept) {
    box.drawLine(0.5, 0, 0.5, 1, kRed);
    show();
    EXPECT_EQ(at(grab(), 0.5, 0.5), paletteColour(kRed));
}

TEST_F(PictureBoxTest, PrintsWhatItShowsAtThePapersResolution) {
    show();
    const auto draw = [&] {
        box.clear();
        box.setPenWidth(4);
        box.drawLine(0.25, 0, 0.25, 1, kBlue);
        box.refresh();
    };
    QObject::connect(&box, &PictureBox::redrawNeeded, &box, draw);
    draw();
    const QImage before = grab();
    QImage paper = whitePaper({1200, 600}, 300);
    paper.fill(Qt::red);
    QPainter painter(&paper);
    box.print(painter, QRectF(100, 50, 1000, 500));
    painter.end();
    EXPECT_EQ(paper.pixelColor(350, 300), paletteColour(kBlue));
    EXPECT_EQ(paper.pixelColor(600, 300), paletteColour(kBrightWhite));
    EXPECT_EQ(paper.pixelColor(50, 300), paletteColour(kLightRed));
    EXPECT_EQ(count(paper, kBlue) + count(paper, kBrightWhite), 1000 * 500) << "nothing is blurred";
    EXPECT_EQ(grab(), before);
}

TEST_F(PictureBoxTest, KeysOfTheOwnerAreLeftToTheParent) {
    for (const auto key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&box, &press);
        EXPECT_FALSE(press.isAccepted()) << key;
    }
}

TEST_F(PictureBoxTest, DataFarAwayIsClippedNotDrawn) {
    show();
    box.setScale(Rectangle::at(0.5, 0.5, 1e-6, 1e-6));
    box.drawLine(-1e9, 0.5000005, 1e9, 0.5000005, kRed);
    box.fillRectangle(-5, 0.5000007, 5, 9, kGreen);
    const QImage image = grab();
    EXPECT_EQ(at(image, 0.5000005, 0.5000009), paletteColour(kGreen));
    EXPECT_GT(count(image, kRed), 300);
}

}  // namespace tessel
