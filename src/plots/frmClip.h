// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/mask_history.h"
#include "plots/reading_colours.h"
#include "plots/site_finder.h"
#include "plots/site_masking.h"
#include "ui_frmClip.h"

#include <QElapsedTimer>
#include <QMainWindow>

#include <optional>

namespace tessel {

/// What the map waits for.
enum class MapState { kNotShown, kBrowsing, kFirstCorner, kSecondCorner };

/// The map of the full survey: zones of the field are looked at, sites in rectangles drawn with the mouse or
/// by keyboard are masked, and masked sites are restored or deleted for good. Three states: the map is not
/// shown yet, browsing, and clipping, within which a rectangle may be open: from its first click to its
/// second or, when the pointer is dragged, to the release of the button. Sites are blue dots, or have the
/// colours of a reading. Edits theSurvey(), which nothing else may change while the window is open.
class frmClip : public QMainWindow, public Ui::frmClip {
    Q_OBJECT

  public:
    explicit frmClip(QWidget* parent = nullptr);

    void mnuFullMapTrue_Click() { showFullMap(true); }
    void mnuFullMapMax_Click() { showFullMap(false); }
    void mnuRecover_Click();
    void cmdClipOn_Click();
    void cmdClipOff_Click();
    void cmdDelete_Click();
    void picMapZoom_MouseMove(double px, double py);
    void picMapZoom_MouseDown(double px, double py);
    void maskRectangle();
    void picMapZoom_MouseUp();
    void DisplayMap();

  Q_SIGNALS:
    /// Sites have been deleted, or the row information has been lost.
    void surveyChanged();
    /// Before surveyChanged(): rows were emptied, and all sites are one row, to be divided anew.
    void rowsLost();
    /// A deletion has been taken back or done again; the journal stood at `from` before.
    void journalMoved(std::size_t from);
    /// The window is closing, and nothing is left to edit.
    void noSitesLeft();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class Growing { kVisibly, kAtOnce };

    void Form_Load();
    bool Form_Unload();
    void nameSubmenus();
    void connectControls();
    void connectMap();
    void connectColours();
    void keepPlaces();

    void RowInfoLossMsg();

    void showFullMap(bool TrueScale);
    void showZone(const Rectangle& window);
    void drawSites(Growing growing);
    void drawSites(const IndexRange& sites, int colour);
    void colourBy(std::optional<SiteColumn> reading);
    void showScale();
    void shadeSites();
    void followReadings();
    bool isColoured() const;
    void drawShaded(const IndexRange& sites);
    void drawBlock(const IndexRange& sites);
    void highlightRow(int row);
    void redrawBeforeNextPaint();
    void showLocation(double px, double py);
    void reserveSiteLines();
    void showSite(double px, double py);
    void showCounts();
    void fillComboRow();
    void deleteSites();
    void followDeletion(SiteIndex removed);
    void checkRows();
    void mnuClipUndo_Click();
    void mnuClipRedo_Click();
    void noteStep(MaskStep step);
    void goInJournal(std::size_t acts);
    void followStep(bool surveyHasChanged, std::size_t from);
    bool canGoBack() const;
    void followSteps();
    void joinSteps();
    MapState state() const;
    QString zoneShown() const;
    void showState();
    void reserveStateLine();
    bool rectangleIsOpen() const { return ClickPhase == -1; }
    void escape();
    void abandonRectangle();
    void moveCross(double right, double down);
    void setCornerAtCross();

    MapExtent extent_;
    SiteMaskArray SiteMask;
    MaskHistory steps_;
    int ClickPhase = 1;  ///< 1 = the next click starts a rectangle, -1 = it ends the open one
    bool ClipMode = false;
    double CornerX = 0, CornerY = 0;     ///< the moving corner, on the map
    double AnchorX = 0, AnchorY = 0;     ///< the first corner
    std::optional<SiteColumn> reading_;  ///< that colours the sites
    std::vector<Shade> shades_;          ///< of every site, while one does
    SiteFinder finder_;                  ///< of all sites, once it has been asked for
    SiteIndex masked_ = 0;
    SiteIndex deleted_ = 0;  ///< since the window opened
    bool mapShown_ = false;
    bool trueScale_ = false;
    bool dragging_ = false;  ///< the button that set the first corner is still pressed
    bool redrawPending_ = false;
    bool crossShown_ = false;
    std::optional<QPointF> cross_;  ///< where pointer or cross was last, on the map
    QElapsedTimer sinceRefresh_;
};

}  // namespace tessel
