// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ChartPlot.h"

#include "base/palette16.h"
#include "drawing/Pixels.h"
#include "plots/ChartSymbols.h"

#include <QPicture>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

constexpr int kTickLength = 5;
constexpr int kLabelPadding = 4;
constexpr int kTitlePadding = 5;
constexpr int kOuterMargin = 6;
constexpr int kCrossArm = 11;

/// The room for labels of this width in whole steps of some letters, so that the plot does not jump each
/// time that labels grow or shrink by one while it is being moved.
int steadyWidth(double width, const QFontMetricsF& metrics) {
    const double step = 4 * metrics.averageCharWidth();
    return intAbove(std::ceil(width / step) * step);
}

double widthOf(const std::string& label, const QFontMetricsF& metrics) {
    return metrics.horizontalAdvance(QString::fromStdString(label));
}

int lineHeight(const QCPAxis& axis) {
    return intAbove(QFontMetricsF(axis.tickLabelFont()).height());
}

}  // namespace

/// Ticks where they were laid out.
class ChartPlot::Ticker : public QCPAxisTicker {
  public:
    void choose(const TickStep& ticks) { ticks_ = ticks; }

  protected:
    double getTickStep(const QCPRange&) override { return ticks_.step; }
    QVector<double> createTickVector(double step, const QCPRange& range) override {
        if (!ticks_.endsOnly) return QCPAxisTicker::createTickVector(step, range);
        const auto [first, last] = tickEnds(range.lower, range.upper, step);
        return {first, last};
    }
    int getSubTickCount(double) override { return 0; }
    QString getTickLabel(double tick, const QLocale&, QChar, int) override {
        return QString::fromStdString(tickLabel(tick, ticks_));
    }

  private:
    TickStep ticks_;
};

ChartPlot::ChartPlot(const std::vector<ChartSeries>& dataSeries,
                     const std::vector<ChartSeries>& highlightSeries, QWidget* parent)
    : QCustomPlot(parent), xTicker_(new Ticker), yTicker_(new Ticker), y2Ticker_(new Ticker) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setAutoAddPlottableToLegend(false);
    setPlottingHints(QCP::phNone);
    axisRect()->setAutoMargins(QCP::msNone);
    axisRect()->setMinimumSize(1, 1);
    plotLayout()->setRowSpacing(0);
    styleAxes();
    data_ = new SymbolPlottable(xAxis, yAxis, dataSeries);
    highlight_ = new SymbolPlottable(xAxis, yAxis2, highlightSeries);
    // The library has queued a first drawing of its own, which would find ticks that nobody has chosen: as
    // many as there are whole numbers on an axis. Only paint events draw.
    mReplotting = true;
}

void ChartPlot::styleAxes() {
    xAxis->setTicker(xTicker_);
    yAxis->setTicker(yTicker_);
    yAxis2->setTicker(y2Ticker_);
    const QPen pen(chartInk(), 1);
    for (QCPAxis* axis : {xAxis, yAxis, xAxis2, yAxis2}) {
        axis->setVisible(true);
        axis->setBasePen(pen);
        axis->setTickPen(pen);
        axis->setSubTicks(false);
        axis->setTickLength(0, kTickLength);
        axis->setTickLabelPadding(kLabelPadding);
        axis->setLabelPadding(kTitlePadding);
        axis->setLabelColor(chartInk());
        axis->setTickLabelColor(chartInk());
        axis->grid()->setPen(QPen(QColor(0xE4, 0xE4, 0xE4), 1));
        axis->grid()->setZeroLinePen(Qt::NoPen);
    }
    for (QCPAxis* axis : {xAxis2, yAxis2}) {
        axis->setTicks(false);
        axis->setTickLabels(false);
        axis->grid()->setVisible(false);
    }
}

void ChartPlot::setViews(const AxisView& x, const AxisView& y, const AxisView& y2) {
    const auto set = [](QCPAxis* axis, const AxisView& view) {
        axis->setRange(view.lower, view.upper);
        axis->setRangeReversed(view.reversed);
    };
    set(xAxis, x);
    set(yAxis, y);
    set(yAxis2, y2);
    markStale();
}

void ChartPlot::setTitle(QCPAxis* axis, const QString& text) {
    axis->setLabel(text);
    markStale();
}

void ChartPlot::setTextFont(const QFont& font) {
    for (QCPAxis* axis : {xAxis, yAxis, yAxis2}) {
        axis->setLabelFont(font);
        axis->setTickLabelFont(font);
    }
    markStale();
}

void ChartPlot::alignSides(ChartPlot& other) {
    companion_ = &other;
    other.companion_ = this;
    markStale();
    other.markStale();
}

void ChartPlot::markStale() {
    stale_ = layoutStale_ = true;
    if (!held_) update();
}

void ChartPlot::hold(bool on) {
    held_ = on;
    if (!on && stale_) update();
}

PixelMap ChartPlot::map(bool highlight) {
    if (layoutStale_) {
        setViewport(rect());
        layOut(size(), companion_ ? companion_->size() : QSize());
        updateLayout();
        layoutStale_ = false;
    }
    return (highlight ? highlight_ : data_)->map();
}

void ChartPlot::setCross(std::optional<QPointF> place) {
    if (cross_) update(crossRect());
    cross_ = place;
    if (cross_) update(crossRect());
}

void ChartPlot::setLevel(std::optional<double> y) {
    if (level_ == y) return;
    level_ = y;
    update();
}

void ChartPlot::print(QPainter& painter, const QSize& size) {
    // The plot can only be drawn by a painter of its own kind; a picture hands its strokes over to ours.
    QPicture picture;
    QCPPainter recorder(&picture);
    recorder.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    layOut(size, size);
    toPainter(&recorder, size.width(), size.height());
    recorder.end();
    layoutStale_ = true;
    // Playing a picture makes it larger by the ratio of resolutions; its size here is in the painter's units.
    painter.save();
    painter.scale(double(picture.logicalDpiX()) / painter.device()->logicalDpiX(),
                  double(picture.logicalDpiY()) / painter.device()->logicalDpiY());
    painter.drawPicture(0, 0, picture);
    painter.restore();
}

void ChartPlot::paintEvent(QPaintEvent* event) {
    if (stale_ && !held_) {
        layoutStale_ = true;
        map(false);
        stale_ = false;
        mReplotting = false;
        replot(QCustomPlot::rpQueuedRefresh);
        mReplotting = true;
    }
    QCustomPlot::paintEvent(event);
    if (level_) drawLevel();
    if (cross_) drawCross();
}

void ChartPlot::resizeEvent(QResizeEvent*) {
    markStale();
}

bool ChartPlot::showsSecondScale() const {
    return !yAxis2->label().isEmpty() || yAxis2->range() != yAxis->range() ||
           yAxis2->rangeReversed() != yAxis->rangeReversed();
}

int ChartPlot::titleRoom(const QCPAxis& axis) const {
    if (axis.label().isEmpty()) return 0;
    return kTitlePadding + intAbove(QFontMetricsF(axis.labelFont()).height());
}

int ChartPlot::topMargin() const {
    return lineHeight(*xAxis) / 2 + 2;
}

int ChartPlot::bottomMargin() const {
    return kTickLength + kLabelPadding + lineHeight(*xAxis) + titleRoom(*xAxis) + kOuterMargin;
}

int ChartPlot::plotHeight(const QSize& size) const {
    return std::max(1, size.height() - topMargin() - bottomMargin());
}

void ChartPlot::layOut(const QSize& size, const QSize& companionSize) {
    const Sides own = ownSides(size);
    Sides sides = own;
    if (companion_) {
        const Sides others = companion_->ownSides(companionSize);
        sides = {std::max(own.left, others.left), std::max(own.right, others.right)};
        if (!(own == sides_)) companion_->markStale();
    }
    sides_ = own;
    const bool second = showsSecondScale();
    yAxis2->setTicks(second);
    yAxis2->setTickLabels(second);
    const int height = plotHeight(size);
    xTicker_->choose(horizontalTicks(std::max(1, size.width() - sides.left - sides.right)));
    yTicker_->choose(verticalTicks(*yAxis, height));
    y2Ticker_->choose(verticalTicks(*yAxis2, height));
    axisRect()->setMargins(QMargins(sides.left, topMargin(), sides.right, bottomMargin()));
}

ChartPlot::Sides ChartPlot::ownSides(const QSize& size) const {
    const int height = plotHeight(size);
    const int left = labelRoom(*yAxis, height);
    const int right = showsSecondScale() ? labelRoom(*yAxis2, height) : kOuterMargin;
    const int over = overhang(std::max(1, size.width() - left - right));
    return {std::max(left, over), std::max(right, over)};
}

TickStep ChartPlot::verticalTicks(const QCPAxis& axis, int height) const {
    const QFontMetricsF metrics(axis.tickLabelFont());
    const auto extent = [&](const std::string&) { return metrics.height(); };
    return chooseTickStep(axis.range().lower, axis.range().upper,
                          {double(height), 44, metrics.height() * 0.4, extent});
}

TickStep ChartPlot::horizontalTicks(int width) const {
    const QFontMetricsF metrics(xAxis->tickLabelFont());
    const auto extent = [&](const std::string& label) { return widthOf(label, metrics); };
    return chooseTickStep(xAxis->range().lower, xAxis->range().upper,
                          {double(width), 90, metrics.averageCharWidth() * 2, extent});
}

/// The room beside a vertical axis of this height.
int ChartPlot::labelRoom(const QCPAxis& axis, int height) const {
    const QFontMetricsF metrics(axis.tickLabelFont());
    const QCPRange range = axis.range();
    const TickStep ticks = verticalTicks(axis, height);
    double widest = 0;
    for (double tick = std::ceil(range.lower / ticks.step); tick <= std::floor(range.upper / ticks.step);
         ++tick)
        widest = std::max(widest, widthOf(tickLabel(tick * ticks.step, ticks), metrics));
    return kTickLength + kLabelPadding + steadyWidth(widest, metrics) + titleRoom(axis) + kOuterMargin;
}

/// How far a label at the end of a horizontal axis of this width can stand over.
int ChartPlot::overhang(int width) const {
    const QFontMetricsF metrics(xAxis->tickLabelFont());
    const TickStep ticks = horizontalTicks(width);
    const QCPRange range = xAxis->range();
    const double widest = std::max(widthOf(tickLabel(range.lower, ticks), metrics),
                                   widthOf(tickLabel(range.upper, ticks), metrics));
    return steadyWidth(widest / 2, metrics) + kOuterMargin;
}

QRect ChartPlot::crossRect() {
    const PixelMap pixels = map(false);
    const double x = pixels.pixelX(cross_->x());
    const double y = pixels.pixelY(cross_->y());
    if (!pixels.area.contains(x, y)) return {};
    return pixelsAround(QRectF(x - kCrossArm - 2, y - kCrossArm - 2, 2 * kCrossArm + 4, 2 * kCrossArm + 4));
}

void ChartPlot::drawLevel() {
    const PixelMap pixels = map(false);
    const double y = pixels.pixelY(*level_);
    if (!(y >= pixels.area.top && y <= pixels.area.bottom)) return;
    QPainter painter(this);
    painter.setPen(QPen(lineColour(kRed), 1, Qt::DashLine));
    painter.drawLine(QPointF(pixels.area.left, y), QPointF(pixels.area.right, y));
}

void ChartPlot::drawCross() {
    const QRect box = crossRect();
    if (box.isEmpty()) return;
    const QPointF centre = QRectF(box).center();
    QPainter painter(this);
    for (const QPen& pen : {QPen(Qt::white, 3), QPen(chartInk(), 1)}) {
        painter.setPen(pen);
        for (const int side : {-1, 1}) {
            painter.drawLine(centre + QPointF(side * 4, 0), centre + QPointF(side * kCrossArm, 0));
            painter.drawLine(centre + QPointF(0, side * 4), centre + QPointF(0, side * kCrossArm));
        }
    }
}

}  // namespace tessel
