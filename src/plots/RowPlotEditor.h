// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PlotArea.h"
#include "plots/Chart2D.h"
#include "plots/PlotView.h"
#include "plots/plot_limits.h"
#include "rows/row_selection.h"
#include "rows/row_sites.h"
#include "ui_Frame1.h"

#include <QGroupBox>

#include <functional>

namespace tessel {

/// The row plot editor: walks through the survey row by row, shows each row's profile (Chart2D3) and its
/// sites in plan (Chart2D4, above it), and deletes the sites that are picked on either. It is Frame1, the
/// frame of its controls, at the side of the main window's charts.
///
/// It ends with its button, and when the plots are hidden (closeEditor).
class RowPlotEditor : public QGroupBox, public Ui::Frame1, public PlotView {
    Q_OBJECT

  public:
    /// Puts its charts and itself into the area, hidden, which owns them from then on.
    explicit RowPlotEditor(PlotArea& area);

    /// Open the editor at row 1, rows running along X or along Y. Require sites and usable rows; with more
    /// rows than NumPoints holds they throw subscriptOutOfRange and show nothing.
    void mnuX_Click();
    void mnuY_Click();

    /// Ends the work that was hidden, with the button "Finished" or without; nothing where none was begun.
    void closeEditor(bool finished = false);

    bool isShown() const override { return !isHidden(); }
    /// Draws the row shown, or the last row where there are fewer now; the selection is empty afterwards.
    /// Requires sites and usable rows to be drawn.
    bool redraw() override;

    /// The row shown; behind the last row when that row has just been emptied.
    int CurrentRow = 0;
    bool PlotByX = false;
    bool PlotByY = false;
    bool EditorStarted = false;
    const RowSelection& selection() const { return selection_; }

    /// What the last pointer event found: series and point of the nearest point of the data and its distance
    /// in pixels; -1 without one.
    int PickSeries = -1;
    qsizetype PickPoint = -1;
    int PickDistance = -1;

    Chart2D* const Chart2D4;
    Chart2D* const Chart2D3;

    /// One page: row number, file name and date, below them the row map as it is shown, below it the profile.
    /// `page` and `unit`, which is 1/300 inch, are in the painter's units.
    void drawPage(QPainter& painter, const QSizeF& page, double unit) const;

  Q_SIGNALS:
    /// Sites have been deleted, and rows with them when they were emptied. The editor's own charts show the
    /// survey as it is now; whatever else shows sites or rows has become stale.
    void surveyChanged();
    /// The row shown has been divided; no site has moved or gone.
    void rowSplit();
    /// The last act on the survey is to be taken back, or done again, wherever the keyboard is.
    void undoWanted();
    void redoWanted();
    /// The work has ended, with the button "Finished" or because the plots were hidden.
    void closed(bool finished);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void openAtRowOne(bool byX);
    void Row_Plot();
    void Draw_Row_Map();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void cmdSplit_Click();
    void Option1_Click();
    void Option2_Click();
    void Text1_Change();

    void joinControls();
    void joinChart(Chart2D* chart);
    void showRow(int row);
    void redrawRow();
    void enableSteps(bool back, bool forward);
    void fillProfile();
    void drawHighlights();
    void locateSelection();
    void showHeader();
    void showEmptiedRow();
    void showShortenedRow();
    void showCharts();
    void followDeletion();
    bool canSplit() const;

    bool pick(const Chart2D& chart, QPoint pixel);
    void rowWanted(int row);
    void pointWanted(Chart2D* chart, QPoint pixel);
    void boxWanted(Chart2D* chart, const QRectF& box, bool taking);
    void press(Chart2D* chart, QPoint pixel);
    void readOut(Chart2D* chart, QPoint pixel);
    void clearReadOut(Chart2D* chart);
    QString readoutOf(const Chart2D* chart, qsizetype point) const;
    void toggle(qsizetype point);
    void takeBox(Chart2D* chart, const QRectF& box, bool taking);
    void showSelection(const QString& notice);
    void showNotice(const QString& notice);
    void goToRow(int row);

    /// What a key does, nothing for a key of others.
    std::function<void()> editorKey(int key, Qt::KeyboardModifiers modifiers);
    std::function<void()> chartKey(int key);
    std::function<void()> finishKey(int key);
    void moveCursor(int step);
    void toggleAtCursor();
    void showCursor();
    void hideCursor();

    IndexRange sites() const;
    std::span<const double> along() const;
    std::span<const double> across() const;

    PlotArea& area_;
    RowSelection selection_;
    bool rowEmptied_ = false;  ///< the row shown has just lost its last site
    SiteIndex cursor_ = 0;     ///< point of the row that the arrow keys have come to, 0 for none
    bool cursorShown_ = false;
};

}  // namespace tessel
