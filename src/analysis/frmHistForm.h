// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/histogram.h"
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
    /// One signal's figures: the frequencies are drawing heights.
    struct Signal {
        HistogramStatistics statistics{};
        BarTops frequencies{};
    };
    /// A histogram as it stands in its picture box: bars up to the mark are light, the others dark.
    struct Plotted {
        BarTops tops{};
        int meanMark = 0;
    };

    void mnuPlot_Click();
    void plot();
    void clear();
    void CalcStats();
    void DetermineHGD1();
    void DetermineHGD2();
    void showEM1(int meanMark);
    void showEM2(int meanMark);
    void hideEM2();
    void drawEM1();
    void drawEM2();
    void mnuPrint_Click();
    void printHistograms(QPainter& painter, const QPrinter& printer);
    std::array<QLabel*, 4> lblH1() const;
    std::array<QLabel*, 4> lblH2() const;

    Signal em1_, em2_;
    std::optional<Plotted> plotted1_, plotted2_;
};

}  // namespace tessel
