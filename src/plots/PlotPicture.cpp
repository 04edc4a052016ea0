// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/PlotPicture.h"

#include "base/whole_numbers.h"
#include "desktop/Guarded.h"
#include "desktop/Windows.h"
#include "drawing/SvgDevice.h"
#include "plots/Chart2D.h"
#include "plots/frmPicture.h"

#include <QBuffer>
#include <QClipboard>
#include <QFontInfo>
#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QScopeGuard>

#include <algorithm>
#include <new>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kCopyScale = 2;

// A read-out belongs to the pointer and not to the plot.
void printChart(Chart2D& chart, QPainter& painter, const QRectF& target) {
    const QString readout = chart.footerText();
    const auto back = qScopeGuard([&] { chart.setFooterText(readout); });
    chart.setFooterText({});
    chart.print(painter, target);
}

void printLabel(const QLabel& label, QPainter& painter, const QRectF& target) {
    QFont font = label.font();
    font.setPixelSize(QFontInfo(font).pixelSize());
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / label.width(), target.height() / label.height());
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(label.rect(), static_cast<int>(label.alignment().toInt()), label.text());
    painter.restore();
}

void printPart(QWidget& part, QPainter& painter, const QRectF& target) {
    if (auto* const chart = qobject_cast<Chart2D*>(&part)) return printChart(*chart, painter, target);
    if (auto* const surface = qobject_cast<Surface*>(&part)) return surface->print(painter, target);
    if (auto* const label = qobject_cast<QLabel*>(&part)) printLabel(*label, painter, target);
}

QRect placeOf(const QWidget& part) {
    return {part.mapTo(part.window(), QPoint(0, 0)), part.size()};
}

}  // namespace

PlotPicture::PlotPicture(const QList<QWidget*>& parts) {
    for (QWidget* const part : parts) {
        if (!part->isVisible()) continue;
        parts_ << part;
        place_ |= placeOf(*part);
    }
}

void PlotPicture::draw(QPainter& painter, const QRectF& target) const {
    const double scale = target.width() / place_.width();
    painter.fillRect(target, Qt::white);
    for (const QPointer<QWidget>& part : parts_) {
        if (!part) continue;
        const QRect place = placeOf(*part).translated(-place_.topLeft());
        printPart(*part, painter, QRectF(QPointF(place.topLeft()) * scale, QSizeF(place.size()) * scale));
    }
}

QImage PlotPicture::image(int width) const {
    const double scale = 1.0 * width / place_.width();
    QImage image(width, std::max(1, nearestInt(place_.height() * scale)), QImage::Format_RGB32);
    if (image.isNull()) throw std::bad_alloc();
    const int dotsPerMetre = nearestInt(scale * Surface::kSheetDotsPerInch / 0.0254);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    image.fill(Qt::white);
    QPainter painter(&image);
    draw(painter, QRectF(image.rect()));
    return image;
}

QByteArray PlotPicture::png(int width) const {
    QByteArray file;
    QBuffer buffer(&file);
    if (!image(width).save(&buffer, "PNG")) throw std::bad_alloc();
    return file;
}

QByteArray PlotPicture::svg() const {
    SvgDevice device(size());
    QPainter painter(&device);
    draw(painter, QRectF({}, QSizeF(size())));
    painter.end();
    return device.file();
}

QByteArray PlotPicture::pdf() const {
    constexpr int kDotsPerInch = 288;
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator(u"VARN-Tessel"_s);
    writer.setResolution(kDotsPerInch);
    writer.setPageSize(
        QPageSize(QSizeF(size()) / Surface::kSheetDotsPerInch, QPageSize::Inch, {}, QPageSize::ExactMatch));
    writer.setPageMargins({});
    QPainter painter(&writer);
    // Without it pictures are compressed like a photograph.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    draw(painter, QRectF({}, QSizeF(size()) * kDotsPerInch / Surface::kSheetDotsPerInch));
    painter.end();
    return file;
}

QList<QWidget*> surfacesIn(const QWidget& widget) {
    QList<QWidget*> surfaces;
    for (Surface* const surface : widget.findChildren<Surface*>())
        surfaces << surface;
    return surfaces;
}

void copyPlot(const PlotPicture& picture) {
    if (!picture.isEmpty())
        QGuiApplication::clipboard()->setImage(picture.image(picture.size().width() * kCopyScale));
}

void savePlot(QWidget* parent, const PlotPicture& picture) {
    if (!picture.isEmpty()) showModal(new frmPicture(parent, picture));
}

void offerPicture(Surface& surface, const QList<QWidget*>& parts) {
    QObject::connect(&surface, &Surface::copyWanted, &surface,
                     guarded(&surface, [parts] { copyPlot(PlotPicture(parts)); }));
    QObject::connect(&surface, &Surface::pictureWanted, &surface, guarded(&surface, [&surface, parts] {
        savePlot(surface.window(), PlotPicture(parts));
    }));
}

}  // namespace tessel
