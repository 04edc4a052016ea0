// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/FieldLocator.h"

#include "base/palette16.h"
#include "base/whole_numbers.h"
#include "drawing/Pixels.h"
#include "journal/journal.h"
#include "plots/ChartSymbols.h"
#include "plots/plot_limits.h"
#include "plots/site_finder.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <span>
#include <utility>

namespace tessel {

namespace {

constexpr int kLeast = 56;
constexpr double kMargin = 6;  // inside the frame, for rings
constexpr double kFieldPen = 2;
constexpr double kRowPen = 3;
constexpr double kOutlinePen = 5;
constexpr double kRing = 4;   // radius
constexpr double kReach = 6;  // of a click
constexpr std::uint32_t kFieldGrey = 0xCDCDCD;

std::span<const double> column(SiteColumn which) {
    const Survey& survey = theSurvey();
    return {survey.SiteData.column(which), static_cast<std::size_t>(survey.NumSites)};
}

}  // namespace

FieldLocator::FieldLocator(QWidget* parent) : QWidget(parent) {
    QSizePolicy room(QSizePolicy::Ignored, QSizePolicy::Expanding);
    room.setVerticalStretch(1);  // before all that is left free
    setSizePolicy(room);
    setCursor(Qt::PointingHandCursor);
}

QSize FieldLocator::sizeHint() const {
    return {160, 160};
}

bool FieldLocator::hasRoom() const {
    const SiteIndex sites = theSurvey().NumSites;
    return std::min(width(), height()) >= kLeast && sites > 0 && row_.last <= sites;
}

QRectF FieldLocator::paper() const {
    return QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
}

void FieldLocator::followSurvey() {
    extent_.reset();
    field_ = QImage();
    showRow({}, 0);
}

void FieldLocator::showRow(const IndexRange& sites, int colour) {
    row_ = sites;
    colour_ = colour;
    picture_ = QImage();
    showSelected({});
}

void FieldLocator::showSelected(std::vector<SiteIndex> sites) {
    selected_ = std::move(sites);
    update();
}

// Of a picture with so many dots to a pixel of the widget.
PixelMap FieldLocator::fieldMap(double scale) {
    if (!extent_) extent_ = siteExtent(theSurvey());
    const QRectF inner = paper().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    return fittedMap(Rectangle::at(inner.left() * scale, inner.top() * scale, inner.width() * scale,
                                   inner.height() * scale),
                     *extent_);
}

void FieldLocator::drawField() {
    const double scale = devicePixelRatioF();
    picture_ = QImage(nearestSize(QSizeF(size()) * scale), QImage::Format_RGB32);
    picture_.setDevicePixelRatio(scale);
    picture_.fill(Qt::white);
    stamp({0, theSurvey().NumSites}, kFieldPen, kFieldGrey);
    field_ = std::exchange(picture_, QImage());
}

void FieldLocator::drawRow() {
    picture_ = field_;
    if (needsOutline(colour_)) stamp(row_, kOutlinePen, chartInk().rgb() & 0xFFFFFF);
    stamp(row_, kRowPen, kBasicPalette[static_cast<std::size_t>(colour_ & 15)]);
}

void FieldLocator::stamp(const IndexRange& sites, double pixels, std::uint32_t colour) {
    const double scale = picture_.devicePixelRatio();
    const SiteTable& table = theSurvey().SiteData;
    PixelMap map = fieldMap(scale);
    map.area = Rectangle::at(0, 0, picture_.width(), picture_.height());
    stampPoints(rasterOf(picture_), map, penStamp(nearestInt(pixels * scale), colour),
                table.column(kX) + sites.first, table.column(kY) + sites.first, nullptr,
                static_cast<std::size_t>(sites.count()), nullptr);
}

void FieldLocator::paintEvent(QPaintEvent*) {
    if (!hasRoom()) return;
    const bool fits = field_.devicePixelRatio() == devicePixelRatioF() &&
                      field_.size() == nearestSize(QSizeF(size()) * devicePixelRatioF());
    if (!fits) {
        drawField();
        picture_ = QImage();
    }
    if (picture_.isNull()) drawRow();
    QPainter painter(this);
    painter.drawImage(QPoint(0, 0), picture_);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.drawRect(paper());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(paletteColour(kLightRed), 1.5));
    const PixelMap map = fieldMap(1);
    for (const SiteIndex site : selected_)
        painter.drawEllipse(
            QPointF(map.pixelX(theSurvey().SiteData(kX, site)), map.pixelY(theSurvey().SiteData(kY, site))),
            kRing, kRing);
}

void FieldLocator::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !hasRoom()) return;
    const QPointF at = event->position();
    const SiteIndex site = nearestSite(column(kX), column(kY), fieldMap(1), at.x(), at.y(), kReach);
    if (site >= 0) Q_EMIT rowClicked(intWithin(theSurvey().SiteData(kRow, site)));
}

}  // namespace tessel
