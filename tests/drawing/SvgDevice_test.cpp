// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/SvgDevice.h"

#include "drawing/PaperStrokes.h"

namespace tessel {

namespace {

struct Element {
    QString name;
    QXmlStreamAttributes attributes;
    QString operator[](const char* key) const {
        return attributes.value(QString::fromLatin1(key)).toString();
    }
};

// The elements of the file in their order, the whole one first.
QList<Element> painted(const std::function<void(QPainter&)>& paint) {
    SvgDevice device(QSize(200, 100));
    QPainter painter(&device);
    paint(painter);
    painter.end();
    QList<Element> elements;
    QXmlStreamReader xml(device.file());
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement)
            elements << Element{xml.name().toString(), xml.attributes()};
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return elements;
}

}  // namespace

TEST(SvgDevice, IsAsLargeAsItIsMade) {
    const QList<Element> file = painted([](QPainter& painter) {
        EXPECT_EQ(painter.device()->logicalDpiX(), 96);
        EXPECT_EQ(painter.window(), QRect(0, 0, 200, 100));
    });
    ASSERT_EQ(file.size(), 1);
    EXPECT_EQ(file[0].name, u"svg"_s);
    EXPECT_EQ(file[0]["width"], u"200"_s);
    EXPECT_EQ(file[0]["viewBox"], u"0 0 200 100"_s);
}

TEST(SvgDevice, KeepsALineWithItsPen) {
    const QList<Element> file = painted([](QPainter& painter) {
        painter.setPen(QPen(QColor(0x12, 0x34, 0x56), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::BevelJoin));
        painter.drawLine(QPointF(1.25, 2), QPointF(30, 40.5));
    });
    ASSERT_EQ(file.size(), 2);
    EXPECT_EQ(file[1].name, u"path"_s);
    EXPECT_EQ(file[1]["d"], u"M1.25,2L30,40.5"_s);
    EXPECT_EQ(file[1]["stroke"], u"#123456"_s);
    EXPECT_EQ(file[1]["stroke-width"], u"1.5"_s);
    EXPECT_EQ(file[1]["stroke-linecap"], u"round"_s);
    EXPECT_EQ(file[1]["stroke-linejoin"], u"bevel"_s);
    EXPECT_EQ(file[1]["fill"], u"none"_s);
}

TEST(SvgDevice, KeepsWhereThePainterHasMovedAndTurned) {
    const QList<Element> file = painted([](QPainter& painter) {
        painter.translate(10, 20);
        painter.rotate(90);
        painter.drawLine(QPointF(0, 0), QPointF(5, 0));
    });
    ASSERT_EQ(file.size(), 2);
    EXPECT_TRUE(file[1]["transform"].startsWith(u"matrix(") && file[1]["transform"].endsWith(u",10,20)"));
}

TEST(SvgDevice, KeepsAreasWithTheirBrush) {
    const QList<Element> file = painted([](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 0, 0, 128));
        painter.drawEllipse(QRectF(10, 10, 20, 20));
        painter.fillRect(QRectF(1, 2, 3, 4), Qt::white);
    });
    ASSERT_EQ(file.size(), 3);
    EXPECT_EQ(file[1]["fill"], u"#ff0000"_s);
    EXPECT_NEAR(file[1]["fill-opacity"].toDouble(), 0.5, 0.01);
    EXPECT_EQ(file[1]["stroke"], u"none"_s);
    EXPECT_TRUE(file[1]["d"].contains(u'C'));
    EXPECT_EQ(file[2]["fill"], u"#ffffff"_s);
}

TEST(SvgDevice, KeepsLettersAsOutlines) {
    const QList<Element> file =
        painted([](QPainter& painter) { painter.drawText(QPointF(10, 50), u"EM1"_s); });
    ASSERT_GE(file.size(), 2);
    for (qsizetype i = 1; i < file.size(); ++i)
        EXPECT_EQ(file[i].name, u"path"_s);
}

TEST(SvgDevice, KeepsAPictureAsItIs) {
    QImage picture(3, 2, QImage::Format_ARGB32);
    picture.fill(QColor(10, 200, 30));
    picture.setPixelColor(2, 1, QColor(1, 2, 3));
    const QList<Element> file =
        painted([&](QPainter& painter) { painter.drawImage(QRectF(5, 6, 30, 20), picture); });
    ASSERT_EQ(file.size(), 2);
    EXPECT_EQ(file[1].name, u"image"_s);
    EXPECT_EQ(file[1]["width"], u"30"_s);
    const QString data = file[1]["xlink:href"];
    const QString kind = u"data:image/png;base64,"_s;
    ASSERT_TRUE(data.startsWith(kind));
    const QImage kept = QImage::fromData(QByteArray::fromBase64(data.mid(kind.size()).toLatin1()));
    EXPECT_EQ(kept.convertToFormat(QImage::Format_ARGB32), picture);
}

TEST(PictureAmongStrokes, HasFewerPixelsWhereItIsLarge) {
    EXPECT_EQ(pictureResolution(3, {400, 400}), 3);
    EXPECT_NEAR(pictureResolution(3, {2000, 1500}), 1, 1e-12);
    EXPECT_EQ(pictureResolution(3, {0, 0}), 3);
}

}  // namespace tessel
