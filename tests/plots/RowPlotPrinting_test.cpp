// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"
#include "support/Pixels.h"
#include "support/RowPlots.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

// A sheet, of A4 unless another size is said, with so many dots an inch, drawn as on paper.
QImage printedPage(const RowPlotEditor& editor, int dotsPerInch, QSizeF inches = {8.27, 11.69}) {
    QImage page = whitePaper((inches * dotsPerInch).toSize(), dotsPerInch);
    QPainter painter(&page);
    editor.drawPage(painter, page.size(), dotsPerInch / 300.0);
    return page;
}

// The part of the page that is not white, in inches.
QRectF inked(const QImage& page, const QRectF& inches, int dotsPerInch) {
    const QRect part = QRectF(inches.topLeft() * dotsPerInch, inches.size() * dotsPerInch).toRect();
    QRect ink;
    for (int y = part.top(); y <= std::min(part.bottom(), page.height() - 1); ++y)
        for (int x = part.left(); x <= std::min(part.right(), page.width() - 1); ++x)
            if (qGray(page.pixel(x, y)) < 128) ink |= QRect(x, y, 1, 1);
    return QRectF(QPointF(ink.topLeft()) / dotsPerInch, QSizeF(ink.size()) / dotsPerInch);
}

}  // namespace

TEST_F(OpenRowPlots, PrintTheMapAboveTheProfileOnOnePage) {
    theSession().InputFileName = "/surveys/north field.dat";
    const QImage page = printedPage(editor, 100);
    const QRectF title = inked(page, {0, 0, 8.27, 0.2}, 100);
    EXPECT_GT(title.width(), 7);
    const QRectF mapInk = inked(page, {0, 0.37, 8.27, 4.5}, 100);
    const QRectF profileInk = inked(page, {0, 5.07, 8.27, 4.5}, 100);
    for (const QRectF& ink : {mapInk, profileInk}) {
        EXPECT_GT(ink.width(), 6);
        EXPECT_GT(ink.height(), 3.5);
    }
    EXPECT_TRUE(inked(page, {0, 9.7, 8.27, 1.9}, 100).size().isEmpty() ||
                inked(page, {0, 9.7, 8.27, 1.9}, 100).height() <= 0.01);
}

TEST_F(OpenRowPlots, PrintAtTheSameSizeAtEveryResolution) {
    const QRectF whole(0, 0, 8.27, 11.69);
    const QRectF coarse = inked(printedPage(editor, 150), whole, 150);
    const QRectF fine = inked(printedPage(editor, 300), whole, 300);
    for (const auto side : {&QRectF::left, &QRectF::top, &QRectF::right, &QRectF::bottom})
        EXPECT_NEAR((coarse.*side)(), (fine.*side)(), 0.03);
}

TEST_F(OpenRowPlots, PrintOnSmallerPaperWithoutCuttingAnything) {
    const QRectF ink = inked(printedPage(editor, 100, {4, 3}), {0, 0, 4, 3}, 100);
    EXPECT_LT(ink.bottom(), 2.99);
    EXPECT_GT(ink.bottom(), 2.5);
}

TEST_F(OpenRowPlots, PrintWithoutTheReadoutOfThePointer) {
    const QImage before = printedPage(editor, 100);
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4));
    EXPECT_TRUE(printedPage(editor, 100) == before);
    EXPECT_EQ(map.footerText(), u"UTM X = 130.00, UTM Y = 12.00"_s);
}

TEST_F(OpenRowPlots, PrintIntoAPdfFileWhereNoPrinterIsInstalled) {
    const TemporaryFolder folder;
    setDefaultPrinterName([] { return QString(); });
    QString path;
    setFileResponder([&](const FileQuestion& question) {
        EXPECT_TRUE(question.toSave);
        return path;
    });
    for (const double scale : {1.0, 2.0, 4.0}) {
        theSession().PrintScale = scale;
        path = fromPath(folder / ("row" + std::to_string(scale) + ".pdf"));
        QTest::keyClick(&profile, Qt::Key_P, Qt::ControlModifier);
        const QByteArray content = QByteArray::fromStdString(readFile(path.toStdString()));
        EXPECT_TRUE(content.startsWith("%PDF"));
        EXPECT_GT(content.size(), 5000);
        EXPECT_LT(content.size(), 200000);
        EXPECT_EQ(content.count("/Type /Page\n"), 1);
    }
    theSession().PrintScale = 1;
    path.clear();
    click("Command6");
}

}  // namespace tessel
