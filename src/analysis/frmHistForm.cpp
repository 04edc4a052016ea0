// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmHistForm.h"

#include "app/HelpOpener.h"
#include "base/numbers.h"
#include "base/palette16.h"
#include "base/run_time_error.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Printing.h"
#include "desktop/Windows.h"
#include "drawing/Pixels.h"

#include <QPainter>
#include <QPrinter>

#include <new>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 116;
constexpr double kTwipsPerInch = 1440;
constexpr QPoint kLoadOffset(1000, 500);  // twips
constexpr double kBarWidth = 4;           // pixels

struct BarColours {
    int dark, light;
};

void drawBars(PictureBox& box, const BarTops& tops, int meanMark, const BarColours& colours) {
    box.clear();
    box.setPenWidth(kBarWidth);
    for (int i = 1; i <= kHistogramBins; ++i) {
        const double top = tops[static_cast<std::size_t>(i - 1)];
        const double x = i / (kHistogramBins + 1.0);
        if (top < 1) box.drawLine(x, 1, x, top, meanMark < i ? colours.dark : colours.light);
    }
}

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
    clear();
    // A histogram is whole or it is none, on the screen as on paper.
    for (PictureBox* box : {HG1, HG2}) {
        box->setZoomable(false);
        box->setFocusPolicy(Qt::NoFocus);
    }
    connect(HG1, &PictureBox::redrawNeeded, this, &frmHistForm::drawEM1);
    connect(HG2, &PictureBox::redrawNeeded, this, &frmHistForm::drawEM2);
    connect(mnuPlot, &QAction::triggered, this, guarded(this, [this] { mnuPlot_Click(); }));
    connect(mnuPrint, &QAction::triggered, this, guarded(this, [this] { mnuPrint_Click(); }));
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
    plotted1_.reset();
    plotted2_.reset();
    for (const auto& labels : {lblH1(), lblH2()})
        for (QLabel* label : labels)
            label->clear();
    for (QWidget* widget : QList<QWidget*>{Label1, Label2, HG1, HG2, frameHG})
        widget->hide();
    drawEM1();
    drawEM2();
    lblHint->show();
}

void frmHistForm::plot() {
    const Hourglass hourglass(this);
    const bool two = theSurvey().TwoEMColumns;
    CalcStats();
    DetermineHGD1();
    if (two) DetermineHGD2();
    const int mark1 = meanMark(em1_.statistics);
    const int mark2 = two ? meanMark(em2_.statistics) : 0;
    showEM1(mark1);
    if (two)
        showEM2(mark2);
    else
        hideEM2();
    frameHG->show();
}

void frmHistForm::CalcStats() {
    const Survey& survey = theSurvey();
    em1_.statistics = histogramStatistics(survey, kEM1);
    if (survey.TwoEMColumns) em2_.statistics = histogramStatistics(survey, kEM2);
    showFigures(lblH1(), em1_.statistics);
    if (survey.TwoEMColumns) return showFigures(lblH2(), em2_.statistics);
    for (QLabel* label : lblH2())
        label->setText(u"n/a"_s);
}

void frmHistForm::DetermineHGD1() {
    em1_.frequencies = barTops(countBins(theSurvey(), kEM1, em1_.statistics));
}

void frmHistForm::DetermineHGD2() {
    em2_.frequencies = barTops(countBins(theSurvey(), kEM2, em2_.statistics));
}

void frmHistForm::showEM1(int meanMark) {
    plotted1_ = {em1_.frequencies, meanMark};
    lblHint->hide();
    Label1->show();
    HG1->show();
    drawEM1();
}

void frmHistForm::showEM2(int meanMark) {
    plotted2_ = {em2_.frequencies, meanMark};
    Label2->show();
    HG2->show();
    drawEM2();
}

// An earlier survey's second reading must not stand beside this one's first.
void frmHistForm::hideEM2() {
    plotted2_.reset();
    Label2->hide();
    HG2->hide();
}

void frmHistForm::drawEM1() {
    if (plotted1_)
        drawBars(*HG1, plotted1_->tops, plotted1_->meanMark, {kBlue, kLightBlue});
    else
        HG1->clear();
}

void frmHistForm::drawEM2() {
    if (plotted2_)
        drawBars(*HG2, plotted2_->tops, plotted2_->meanMark, {kGreen, kLightGreen});
    else
        HG2->clear();
}

void frmHistForm::mnuPrint_Click() {
    if (!plotted1_) mnuPlot_Click();
    if (!plotted1_) return;  // and the user has been told why
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

std::array<QLabel*, 4> frmHistForm::lblH1() const {
    return {lblH1_0, lblH1_1, lblH1_2, lblH1_3};
}

std::array<QLabel*, 4> frmHistForm::lblH2() const {
    return {lblH2_0, lblH2_1, lblH2_2, lblH2_3};
}

}  // namespace tessel
