// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmHistForm.h"

#include "app/HelpOpener.h"
#include "base/bounded.h"
#include "base/numbers.h"
#include "base/palette16.h"
#include "base/run_time_error.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Printing.h"
#include "desktop/Windows.h"
#include "drawing/Pixels.h"
#include "journal/journal.h"
#include "plots/PlotPicture.h"

#include <QPainter>
#include <QPrinter>
#include <QShortcut>

#include <new>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 116;
constexpr double kTwipsPerInch = 1440;
constexpr QPoint kLoadOffset(1000, 500);  // twips
constexpr double kBarWidth = 4;           // pixels

void showFigures(const std::array<QLabel*, 4>& labels, const HistogramStatistics& statistics) {
    for (std::size_t k = 0; k < labels.size(); ++k)
        labels[k]->setText(QString::fromStdString(pictureFormat(statistics[k], 2)));
}

int numberOfCurrentException() {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return error.number();
    } catch (const std::bad_alloc&) {
        return RunTimeError::kOutOfMemory;
    }
}

// Draws at positions in twips, counted from the corner of the printable area.
class TwipPage {
  public:
    TwipPage(QPainter& painter, const QPrinter& printer) : painter_(painter), unit_(unitsPerTwip(printer)) {
        const QRectF page = printer.pageRect(QPrinter::DevicePixel);
        width_ = page.width() / unit_;
        QFont font = painter.font();
        font.setBold(true);
        painter.setFont(font);
        // Without it bars are compressed like a photograph.
        painter.setRenderHint(QPainter::LosslessImageRendering);
    }

    double width() const { return width_; }

    // The position is the upper left corner of the text.
    void text(double x, double y, const QString& text) {
        const QPointF corner = QPointF(x, y) * unit_;
        painter_.drawText(corner + QPointF(0, QFontMetricsF(painter_.font(), painter_.device()).ascent()),
                          text);
    }

    void picture(const QRectF& place, PictureBox& box) {
        const QRectF target(place.topLeft() * unit_, place.size() * unit_);
        box.print(painter_, target);
        painter_.setPen(QPen(Qt::black, 0));
        painter_.drawRect(target);
    }

  private:
    QPainter& painter_;
    double unit_;
    double width_;
};

struct PrintedBlock {
    const QLabel* title;
    PictureBox* box;
    const QLabel* minimum;
    const QLabel* maximum;
    double top;  // twips
};

void printBlock(TwipPage& page, const PrintedBlock& block) {
    constexpr double kLeft = 500;
    const double half = page.width() / 2;
    page.text(kLeft, block.top, block.title->text());
    page.picture({kLeft, block.top + 300, half, 4000}, *block.box);
    page.text(kLeft, block.top + 4400, block.minimum->text());
    page.text(half, block.top + 4400, block.maximum->text());
}

}  // namespace

frmHistForm::frmHistForm(QWidget* parent) : QMainWindow(parent) {
    setupUi(this);
    resizeOnScreen(*this, {680, 640});
    const QPointF inches = QPointF(kLoadOffset) / kTwipsPerInch;
    const QPointF offset(inches.x() * logicalDpiX(), inches.y() * logicalDpiY());
    if (parent) move(parent->window()->pos() + nearestPixel(offset));
    picture1_ = {Label1, HG1, {lblH1_0, lblH1_1, lblH1_2, lblH1_3}, kBlue, kLightBlue};
    picture2_ = {Label2, HG2, {lblH2_0, lblH2_1, lblH2_2, lblH2_3}, kGreen, kLightGreen};
    clear();
    // A histogram is whole or it is none, on the screen as on paper.
    for (const Picture* picture : {&picture1_, &picture2_}) {
        picture->box->setZoomable(false);
        picture->box->setFocusPolicy(Qt::NoFocus);
        offerPicture(*picture->box, {picture->title, picture->box});
        connect(picture->box, &PictureBox::pointerMoved, this,
                [this, picture](double px, double) { readOut(*picture, px); });
        connect(picture->box, &PictureBox::pointerLeft, lblBar, &QLabel::clear);
        connect(picture->box, &PictureBox::redrawNeeded, this, [picture] { drawPicture(*picture); });
    }
    connect(mnuPlot, &QAction::triggered, this, guarded(this, [this] { mnuPlot_Click(); }));
    connect(mnuPrint, &QAction::triggered, this, guarded(this, [this] { mnuPrint_Click(); }));
    connect(mnuSavePicture, &QAction::triggered, this, guarded(this, [this] { mnuSavePicture_Click(); }));
    connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this,
            guarded(this, [this] { copyPlot(wholePicture()); }));
    connect(mnuHisthelp, &QAction::triggered, this, guarded(this, [this] { openHelp(this, kHelpDocument); }));
    connect(mnuDone, &QAction::triggered, this, guarded(this, [this] { close(); }));
}

void frmHistForm::mnuPlot_Click() {
    int error = 0;
    clear();
    try {
        plot();
    } catch (...) {
        error = numberOfCurrentException();
    }
    if (error == 0) return;
    tell(this, u"Unexpected error: request terminated."_s);
    tell(this, QString::number(error));
}

void frmHistForm::redraw() {
    if (frameHG->isHidden()) return;
    try {
        plot();
    } catch (const RunTimeError&) {
        clear();
    }
}

// As the window opened: nothing of an earlier survey stands beside what a plot that fails halfway has shown.
void frmHistForm::clear() {
    for (Picture* picture : {&picture1_, &picture2_}) {
        for (QLabel* label : picture->figures)
            label->clear();
        showPicture(*picture, {});
    }
    frameHG->hide();
    lblBar->clear();
    lblHint->show();
}

void frmHistForm::plot() {
    const Hourglass hourglass(this);
    const bool two = theSurvey().TwoEMColumns;
    CalcStats();
    DetermineHGD1();
    if (two) DetermineHGD2();
    em1_.meanMark = meanMark(em1_.statistics);
    if (two) em2_.meanMark = meanMark(em2_.statistics);
    lblHint->hide();
    showPicture(picture1_, em1_);
    // An earlier survey's second reading must not stand beside this one's first.
    showPicture(picture2_, two ? std::optional(em2_) : std::nullopt);
    frameHG->show();
}

void frmHistForm::CalcStats() {
    const Survey& survey = theSurvey();
    em1_.statistics = histogramStatistics(survey, kEM1);
    if (survey.TwoEMColumns) em2_.statistics = histogramStatistics(survey, kEM2);
    showFigures(picture1_.figures, em1_.statistics);
    if (survey.TwoEMColumns) return showFigures(picture2_.figures, em2_.statistics);
    for (QLabel* label : picture2_.figures)
        label->setText(u"n/a"_s);
}

void frmHistForm::DetermineHGD1() {
    em1_.counts = countBins(theSurvey(), kEM1, em1_.statistics);
    em1_.frequencies = barTops(em1_.counts);
}

void frmHistForm::DetermineHGD2() {
    em2_.counts = countBins(theSurvey(), kEM2, em2_.statistics);
    em2_.frequencies = barTops(em2_.counts);
}

void frmHistForm::showPicture(Picture& picture, const std::optional<Histogram>& histogram) {
    picture.plotted = histogram;
    picture.title->setVisible(histogram.has_value());
    picture.box->setVisible(histogram.has_value());
    drawPicture(picture);
}

void frmHistForm::drawPicture(const Picture& picture) {
    picture.box->clear();
    if (!picture.plotted) return;
    picture.box->setPenWidth(kBarWidth);
    for (int i = 1; i <= kHistogramBins; ++i) {
        const double top = picture.plotted->frequencies[static_cast<std::size_t>(i - 1)];
        const double x = i / (kHistogramBins + 1.0);
        const int colour = picture.plotted->meanMark < i ? picture.dark : picture.light;
        if (top < 1) picture.box->drawLine(x, 1, x, top, colour);
    }
}

// Bar i stands at i / 51 of the width.
void frmHistForm::readOut(const Picture& picture, double px) {
    const int bin = nearestInt(px * (kHistogramBins + 1));
    if (!picture.plotted || bin < 1 || bin > kHistogramBins) return lblBar->clear();
    const Interval readings = binInterval(bin, picture.plotted->statistics);
    const auto text = [](double value) { return QString::fromStdString(pictureFormat(bounded(value), 2)); };
    const std::int64_t count = picture.plotted->counts[static_cast<std::size_t>(bin - 1)];
    lblBar->setText((count == 1 ? tr("%1 to %2 mS/m: %3 site") : tr("%1 to %2 mS/m: %3 sites"))
                        .arg(text(readings.from), text(readings.to))
                        .arg(count));
}

// Histograms with the titles and statistics beside them.
PlotPicture frmHistForm::wholePicture() const {
    QList<QWidget*> parts = {HG1, HG2};
    for (QLabel* const label : findChildren<QLabel*>())
        if (label != lblHint && label != lblBar) parts << label;
    return PlotPicture(parts);
}

void frmHistForm::mnuSavePicture_Click() {
    if (!picture1_.plotted) mnuPlot_Click();
    if (picture1_.plotted) savePlot(this, wholePicture());
}

void frmHistForm::mnuPrint_Click() {
    if (!picture1_.plotted) mnuPlot_Click();
    if (!picture1_.plotted) return;  // and the user has been told why
    const Hourglass hourglass(this);
    printPage(this, windowTitle(),
              [this](QPainter& painter, const QPrinter& printer) { printHistograms(painter, printer); });
}

// Both blocks, whatever the survey has.
void frmHistForm::printHistograms(QPainter& painter, const QPrinter& printer) {
    TwipPage page(painter, printer);
    printBlock(page, {Label1, HG1, lblH1_2, lblH1_3, 200});
    printBlock(page, {Label2, HG2, lblH2_2, lblH2_3, 5200});
}

}  // namespace tessel
