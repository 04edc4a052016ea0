// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/histogram.h"
#include "plots/PlotPicture.h"
#include "ui_frmHistForm.h"

#include <QMainWindow>

#include <optional>

class QPainter;
class QPrinter;

namespace tessel {

/// Histograms of the readings, one picture box for each signal, with their statistics. What it has plotted
/// follows the survey.
class frmHistForm : public QMainWindow, public Ui::frmHistForm {
    Q_OBJECT

  public:
    /// Places itself beside the upper left corner of the parent's window.
    explicit frmHistForm(QWidget* parent = nullptr);

    /// Plots the survey as it is now, where histograms are shown; a survey that cannot be plotted takes them
    /// away.
    void redraw();

  private:
    /// A histogram: the frequencies are drawing heights; bars up to the mark are light, the others dark.
    struct Histogram {
        HistogramStatistics statistics{};
        BinCounts counts{};
        BarTops frequencies{};
        int meanMark = 0;
    };
    /// One signal's picture.
    struct Picture {
        QLabel* title = nullptr;
        PictureBox* box = nullptr;
        std::array<QLabel*, 4> figures{};
        int dark = 0, light = 0;
        std::optional<Histogram> plotted{};
    };

    void mnuPlot_Click();
    void plot();
    void clear();
    void CalcStats();
    void DetermineHGD1();
    void DetermineHGD2();
    static void showPicture(Picture& picture, const std::optional<Histogram>& histogram);
    static void drawPicture(const Picture& picture);
    PlotPicture wholePicture() const;
    void mnuSavePicture_Click();
    void readOut(const Picture& picture, double px);
    void mnuPrint_Click();
    void printHistograms(QPainter& painter, const QPrinter& printer);

    Histogram em1_, em2_;
    Picture picture1_, picture2_;
};

}  // namespace tessel
