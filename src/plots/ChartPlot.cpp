#include "plots/ChartPlot.h"

#include "plots/axis_ticks.h"

#include <QPicture>

#include <algorithm>
#include <cmath>

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
    return int(std::ceil(std::ceil(width / step) * step));
}

}  // namespace

/// Ticks where they were laid out.
class ChartPlot::Ticker : public QCPAxisTicker {
  public:
    void choose(const QCPRange& range, const TickRoom& room) {
        ticks_ = chooseTickStep(range.lower, range.upper, room);
    }
    QString label(double tick) const { return QString::fromStdString(tickLabel(tick, ticks_)); }
    double step() const { return ticks_.step; }

  protected:
    double getTickStep(const QCPRange&) override { return ticks_.step; }
    int getSubTickCount(double) override { return 0; }
    QString getTickLabel(double tick, const QLocale&, QChar, int) override { return label(tick); }

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
        layOut(size());
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

void ChartPlot::print(QPainter& painter, const QSize& size) {
    // The plot can only be drawn by a painter of its own kind; a picture hands its strokes over to ours.
    QPicture picture;
    QCPPainter recorder(&picture);
    recorder.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    layOut(size);
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
        replot(QCustomPlot::rpQueuedRefresh);
    }
    QCustomPlot::paintEvent(event);
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
    return kTitlePadding + int(std::ceil(QFontMetricsF(axis.labelFont()).height()));
}

void ChartPlot::layOut(const QSize& size) {
    const bool second = showsSecondScale();
    yAxis2->setTicks(second);
    yAxis2->setTickLabels(second);
    const int lineHeight = int(std::ceil(QFontMetricsF(xAxis->tickLabelFont()).height()));
    const int top = lineHeight / 2 + 2;
    const int bottom = kTickLength + kLabelPadding + lineHeight + titleRoom(*xAxis) + kOuterMargin;
    const int height = std::max(1, size.height() - top - bottom);
    const int left = layOutVertical(*yAxis, *yTicker_, height);
    const int right = second ? layOutVertical(*yAxis2, *y2Ticker_, height) : kOuterMargin;
    const int overhang = layOutHorizontal(std::max(1, size.width() - left - right));
    axisRect()->setMargins(QMargins(std::max(left, overhang), top, std::max(right, overhang), bottom));
}

int ChartPlot::layOutVertical(QCPAxis& axis, Ticker& ticker, int height) {
    const QFontMetricsF metrics(axis.tickLabelFont());
    const QCPRange range = axis.range();
    ticker.choose(range, {double(height), 44, metrics.height() * 0.4,
                          [&](const std::string&) { return metrics.height(); }});
    double widest = 0;
    const double step = ticker.step();
    for (double tick = std::ceil(range.lower / step); tick <= std::floor(range.upper / step); ++tick)
        widest = std::max(widest, metrics.horizontalAdvance(ticker.label(tick * step)));
    return kTickLength + kLabelPadding + steadyWidth(widest, metrics) + titleRoom(axis) + kOuterMargin;
}

/// Returns how far a label at the end of the axis can stand over.
int ChartPlot::layOutHorizontal(int width) {
    const QFontMetricsF metrics(xAxis->tickLabelFont());
    const auto extent = [&](const std::string& label) {
        return metrics.horizontalAdvance(QString::fromStdString(label));
    };
    const QCPRange range = xAxis->range();
    xTicker_->choose(range, {double(width), 90, metrics.averageCharWidth() * 2, extent});
    const double widest = std::max(metrics.horizontalAdvance(xTicker_->label(range.lower)),
                                   metrics.horizontalAdvance(xTicker_->label(range.upper)));
    return steadyWidth(widest / 2, metrics) + kOuterMargin;
}

QRect ChartPlot::crossRect() {
    const PixelMap pixels = map(false);
    const double x = pixels.pixelX(cross_->x());
    const double y = pixels.pixelY(cross_->y());
    if (!pixels.area.contains(x, y)) return {};
    return QRectF(x - kCrossArm - 2, y - kCrossArm - 2, 2 * kCrossArm + 4, 2 * kCrossArm + 4).toAlignedRect();
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
