// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/SvgDevice.h"

#include "base/whole_numbers.h"
#include "drawing/Pixels.h"

#include <QBuffer>
#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>
#include <QPolygonF>

#include <climits>
#include <new>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kDotsPerInch = 96;
constexpr double kMillimetresPerInch = 25.4;

QByteArray number(double value) {
    return QByteArray::number(value, 'g', 7);
}

QByteArray place(double x, double y) {
    return number(x) + ',' + number(y);
}

QByteArray paint(const QByteArray& kind, const QColor& colour) {
    QByteArray text = ' ' + kind + "=\"" + colour.name().toLatin1() + '"';
    if (colour.alpha() < 255) text += ' ' + kind + "-opacity=\"" + number(colour.alphaF()) + '"';
    return text;
}

QByteArray capOf(Qt::PenCapStyle cap) {
    return cap == Qt::RoundCap ? "round" : cap == Qt::SquareCap ? "square" : "butt";
}

QByteArray joinOf(Qt::PenJoinStyle join) {
    return join == Qt::RoundJoin ? "round" : join == Qt::BevelJoin ? "bevel" : "miter";
}

QByteArray strokeOf(const QPen& pen) {
    if (pen.style() == Qt::NoPen) return " stroke=\"none\"";
    QByteArray text = paint("stroke", pen.color()) + " stroke-width=\"" + number(pen.widthF()) +
                      "\" stroke-linecap=\"" + capOf(pen.capStyle()) + "\" stroke-linejoin=\"" +
                      joinOf(pen.joinStyle()) + '"';
    if (pen.isCosmetic()) text += " vector-effect=\"non-scaling-stroke\"";
    if (pen.style() == Qt::SolidLine) return text;
    text += " stroke-dasharray=\"";
    for (const double part : pen.dashPattern())
        text += number(part * pen.widthF()) + ' ';
    return text + '"';
}

QByteArray fillOf(const QBrush& brush) {
    return brush.style() == Qt::NoBrush ? " fill=\"none\"" : paint("fill", brush.color());
}

QByteArray dataOf(const QPainterPath& path) {
    QByteArray data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element& e = path.elementAt(i);
        data += e.isMoveTo() ? 'M' : e.isLineTo() ? 'L' : e.isCurveTo() ? 'C' : ' ';
        data += place(e.x, e.y);
    }
    return data;
}

}  // namespace

class SvgDevice::Engine : public QPaintEngine {
  public:
    Engine() : QPaintEngine(AllFeatures & ~PaintEngineFeatures(PatternBrush | PerspectiveTransform)) {}

    const QByteArray& body() const { return body_; }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState& changed) override {
        const DirtyFlags dirty = changed.state();
        if (dirty & DirtyPen) pen_ = strokeOf(changed.pen());
        if (dirty & DirtyBrush) brush_ = fillOf(changed.brush());
        if (dirty & DirtyTransform) transform_ = transformOf(changed.transform());
    }

    void drawPath(const QPainterPath& path) override {
        const QByteArray rule = path.fillRule() == Qt::OddEvenFill ? " fill-rule=\"evenodd\"" : "";
        body_ += "<path" + transform_ + pen_ + brush_ + rule + " d=\"" + dataOf(path) + "\"/>\n";
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        QPainterPath path(points[0]);
        for (int i = 1; i < count; ++i)
            path.lineTo(points[i]);
        if (mode != PolylineMode) path.closeSubpath();
        if (mode != OddEvenMode) path.setFillRule(Qt::WindingFill);
        const QByteArray brush = brush_;
        if (mode == PolylineMode) brush_ = fillOf(Qt::NoBrush);
        drawPath(path);
        brush_ = brush;
    }

    void drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                   Qt::ImageConversionFlags) override {
        QByteArray png;
        QBuffer buffer(&png);
        if (!image.copy(pixelsAround(source)).save(&buffer, "PNG")) throw std::bad_alloc();
        body_ += "<image" + transform_ + " x=\"" + number(target.x()) + "\" y=\"" + number(target.y()) +
                 "\" width=\"" + number(target.width()) + "\" height=\"" + number(target.height()) +
                 "\" preserveAspectRatio=\"none\" xlink:href=\"data:image/png;base64," + png.toBase64() +
                 "\"/>\n";
    }

    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override {
        drawImage(target, pixmap.toImage(), source, Qt::AutoColor);
    }

  private:
    static QByteArray transformOf(const QTransform& t) {
        if (t.isIdentity()) return {};
        return " transform=\"matrix(" + place(t.m11(), t.m12()) + ',' + place(t.m21(), t.m22()) + ',' +
               place(t.dx(), t.dy()) + ")\"";
    }

    QByteArray body_, pen_, brush_, transform_;
};

SvgDevice::SvgDevice(const QSize& size) : size_(size), engine_(std::make_unique<Engine>()) {}

SvgDevice::~SvgDevice() = default;

QByteArray SvgDevice::file() const {
    const QByteArray width = QByteArray::number(size_.width());
    const QByteArray height = QByteArray::number(size_.height());
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"" +
           width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + ' ' + height + "\">\n" +
           engine_->body() + "</svg>\n";
}

QPaintEngine* SvgDevice::paintEngine() const {
    return engine_.get();
}

int SvgDevice::metric(PaintDeviceMetric metric) const {
    const auto millimetres = [](int dots) { return nearestInt(dots * kMillimetresPerInch / kDotsPerInch); };
    switch (metric) {
        case PdmWidth:
            return size_.width();
        case PdmHeight:
            return size_.height();
        case PdmWidthMM:
            return millimetres(size_.width());
        case PdmHeightMM:
            return millimetres(size_.height());
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return kDotsPerInch;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return intWithin(devicePixelRatioFScale());
        case PdmDepth:
            return 32;
        case PdmNumColors:
            return INT_MAX;
        default:
            return QPaintDevice::metric(metric);
    }
}

}  // namespace tessel
