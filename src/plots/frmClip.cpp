// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/frmClip.h"

#include "app/HelpOpener.h"
#include "base/bounded.h"
#include "base/numbers.h"
#include "base/palette16.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "journal/journal.h"
#include "plots/map_zones.h"
#include "rows/row_acts.h"
#include "rows/row_editing.h"

#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr double kRectanglePen = 1;
constexpr double kDragDistance = 10;  // pixels

QSize firstSize(const QScreen* screen) {
    return QSize(980, 760).boundedTo(screen->availableSize() * 0.92);
}

// A pointer that is dragged may leave the map; what nobody sees is not masked.
void keepInSight(double& px, double& py, const Rectangle& shown) {
    px = shown.x.nearest(px);
    py = shown.y.nearest(py);
}

// The busy pointer wherever the pointer is, over the map with its cross too.
struct ScreenHourglass {
    ScreenHourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~ScreenHourglass() { QApplication::restoreOverrideCursor(); }
    ScreenHourglass(const ScreenHourglass&) = delete;
    ScreenHourglass& operator=(const ScreenHourglass&) = delete;
};

}  // namespace

frmClip::frmClip(QWidget* parent) : QMainWindow(parent) {
    setupUi(this);
    nameSubmenus();
    keepPlaces();
    reserveSiteLines();
    resize(firstSize(screen()));
    mapArea->setMap(picMapZoom);
    picMapZoom->installEventFilter(this);
    lblState->installEventFilter(this);
    colourWhileChecked(*optUTM);
    colourWhileChecked(*optLL);
    Form_Load();
    connectControls();
    connectMap();
    connectColours();
}

// A menu is enabled through its action, which Designer leaves without a name.
void frmClip::nameSubmenus() {
    for (QMenu* menu : findChildren<QMenu*>())
        menu->menuAction()->setObjectName(menu->objectName());
}

// What is hidden for a while leaves its place free, so that the map keeps its size and the buttons theirs.
void frmClip::keepPlaces() {
    for (QWidget* widget : {static_cast<QWidget*>(frameClipC), static_cast<QWidget*>(frameLoc),
                            static_cast<QWidget*>(frameHLR), static_cast<QWidget*>(cmdDelete)})
        keepRoomWhenHidden(*widget);
}

void frmClip::Form_Load() {
    SiteMask.assign(static_cast<std::size_t>(theSurvey().NumSites), 0);
    mnuZ->setEnabled(false);
    mnuR->setEnabled(false);
    for (QWidget* frame : {frameClipC, frameLoc, frameHLR})
        frame->hide();
    showCounts();
    optUTM->setChecked(true);
    cmdClipOff->setEnabled(false);
    cmdDelete->hide();
    fillComboRow();
    // White paper: neither a focus nor a scale of the user's before there is a map.
    picMapZoom->setFocusPolicy(Qt::NoFocus);
    picMapZoom->setZoomable(false);
    showState();
}

void frmClip::connectControls() {
    const auto onTrigger = [this](QAction* action, auto act) {
        connect(action, &QAction::triggered, this, guarded(this, act));
    };
    onTrigger(mnuFullMapTrue, [this] { mnuFullMapTrue_Click(); });
    onTrigger(mnuFullMapMax, [this] { mnuFullMapMax_Click(); });
    for (const MapZone& zone : kMapZones)
        onTrigger(
            findChild<QAction*>(QLatin1StringView(zone.item.data(), static_cast<int>(zone.item.size()))),
            [this, window = zone.window] { showZone(window); });
    onTrigger(mnuRecover, [this] { mnuRecover_Click(); });
    joinSteps();
    onTrigger(mnuGDRH1, [this] { openHelp(this, 108); });
    onTrigger(mnuGDRH2, [this] { openHelp(this, 109); });
    onTrigger(mnuGDRH3, [this] { openHelp(this, 110); });
    onTrigger(mnuDone, [this] { close(); });
    connect(cmdClipOn, &QPushButton::clicked, this, guarded(this, [this] { cmdClipOn_Click(); }));
    connect(cmdClipOff, &QPushButton::clicked, this, guarded(this, [this] { cmdClipOff_Click(); }));
    connect(cmdDelete, &QPushButton::clicked, this, guarded(this, [this] { cmdDelete_Click(); }));
    // Also when the row shown is chosen once more: that draws the map anew.
    connect(comboRow, &QComboBox::activated, this, guarded(this, [this] { DisplayMap(); }));
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this,
            guarded(this, [this] { escape(); }));
}

void frmClip::connectMap() {
    connect(picMapZoom, &PictureBox::pointerMoved, this, [this](double px, double py) {
        crossShown_ = false;
        picMapZoom->hideCross();
        runGuarded(this, [&] { picMapZoom_MouseMove(px, py); });
    });
    connect(picMapZoom, &PictureBox::pointerPressed, this, [this](double px, double py) {
        // (The analyzer loses whose slot it is.) NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage)
        runGuarded(this, [&] { picMapZoom_MouseDown(px, py); });
        dragging_ = rectangleIsOpen();
    });
    connect(picMapZoom, &PictureBox::pointerReleased, this, guarded(this, [this] { picMapZoom_MouseUp(); }));
    connect(picMapZoom, &PictureBox::scaleChanged, this, &frmClip::showState);
    connect(picMapZoom, &PictureBox::redrawNeeded, this, &frmClip::redrawBeforeNextPaint);
}

void frmClip::fillComboRow() {
    comboRow->clear();
    comboRow->addItem(u"none"_s);
    for (int row = 1; row <= theSurvey().NumRows; ++row)
        comboRow->addItem(QString::number(row));
}

void frmClip::showCounts() {
    lblMS->setText(QString::number(masked_));
    lblVS->setText(QString::number(theSurvey().NumSites - masked_));
    lblDS->setText(QString::number(deleted_));
}

// The pointer on the map ------------------------------------------------------------------------------------

void frmClip::picMapZoom_MouseMove(double px, double py) {
    if (picMapZoom->cursor().shape() != Qt::CrossCursor) picMapZoom->setCursor(Qt::CrossCursor);
    if (!mapShown_) return;
    if (dragging_) keepInSight(px, py, picMapZoom->scale());
    cross_ = QPointF(px, py);
    showLocation(px, py);
    if (!ClipMode || !rectangleIsOpen()) return;
    CornerX = px;
    CornerY = py;
    picMapZoom->showRubberBand(AnchorX, AnchorY, CornerX, CornerY, kGreen);
}

void frmClip::showLocation(double px, double py) {
    const int decimals = optUTM->isChecked() ? 1 : 5;
    const auto text = [=](double value) {
        return QString::fromStdString(pictureFormat(bounded(value), decimals));
    };
    txtXloc->setText(text(extent_.surveyX(px)));
    txtYloc->setText(text(extent_.surveyY(py)));
    showSite(px, py);
}

void frmClip::picMapZoom_MouseDown(double px, double py) {
    if (!ClipMode) return;
    dragging_ = false;
    if (rectangleIsOpen()) {
        picMapZoom->setPenWidth(kRectanglePen);
        picMapZoom->hideRubberBand();
        picMapZoom->fillRectangle(AnchorX, AnchorY, CornerX, CornerY, kLightYellow);
        picMapZoom->refresh();
        const ScreenHourglass busy;
        maskRectangle();
    } else {
        AnchorX = CornerX = px;
        AnchorY = CornerY = py;
    }
    ClickPhase = -ClickPhase;
    followSteps();
    cmdClipOff->setEnabled(!rectangleIsOpen());
    showState();
}

// All of it or nothing, where memory runs out.
void frmClip::maskRectangle() {
    SiteMaskArray mask = SiteMask;
    double north = AnchorY, south = CornerY;
    const SiteIndex masked = MaskSites(theSurvey(), extent_, mask, AnchorX, north, CornerX, south);
    noteStep({MaskAct::kRectangle, newlyMasked(std::move(SiteMask), mask), 0});
    SiteMask = std::move(mask);
    masked_ = masked;
    showCounts();
}

// A rectangle that has been dragged open is complete. One that is hardly larger than a shaking hand makes it
// waits for its second click.
void frmClip::picMapZoom_MouseUp() {
    if (!std::exchange(dragging_, false)) return;
    const QPointF drawn = picMapZoom->toPixel(CornerX, CornerY) - picMapZoom->toPixel(AnchorX, AnchorY);
    if (std::hypot(drawn.x(), drawn.y()) > kDragDistance) picMapZoom_MouseDown(CornerX, CornerY);
}

// Clipping, deleting, restoring -----------------------------------------------------------------------------

void frmClip::cmdClipOn_Click() {
    ClipMode = true;
    picMapZoom->setFocus();
    cmdClipOn->setEnabled(false);
    cmdClipOff->setEnabled(true);
    for (QMenu* menu : {mnuV, mnuZ, mnuR})
        menu->setEnabled(false);
    cmdDelete->hide();
    frameHLR->hide();
    showState();
}

void frmClip::cmdClipOff_Click() {
    ClipMode = false;
    picMapZoom->setFocus();
    cmdClipOn->setEnabled(true);
    cmdClipOff->setEnabled(false);
    mnuV->setEnabled(true);
    mnuZ->setEnabled(true);
    frameHLR->show();
    showState();
    if (masked_ == 0) return;
    mnuR->setEnabled(true);
    cmdDelete->show();
}

void frmClip::cmdDelete_Click() {
    if (ask(this,
            u"This action will permanently delete all currently masked site.\n"
            u"Are you sure you wish to delete these sites?"_s)) {
        deleteSites();
        tell(this, u"All masked sites have been deleted."_s);
    }
    DisplayMap();
}

void frmClip::deleteSites() {
    MaskStep step{MaskAct::kDeletion, markedRuns(SiteMask), theJournal().actsInForce()};
    finder_.clear();
    const RemovedSites removed = theJournal().perform(
        deletionOfMasked(masked_), [this](Survey& survey) { return deleteMaskedSites(survey, SiteMask); });
    // When the map is closed the rows will be lost: this deletion, or one before it, has emptied one.
    if (theSurvey().NumSites > 0 && !ValidateRowInfo(theSurvey())) theJournal().cannotRest();
    noteStep(std::move(step));
    followDeletion(removed.sites);
}

void frmClip::followDeletion(SiteIndex removed) {
    deleted_ += removed;
    masked_ = 0;
    lblSite->clear();
    showCounts();
    mnuR->setEnabled(false);
    picMapZoom->setFocus();
    cmdDelete->hide();
    if (removed > 0) Q_EMIT surveyChanged();
    followReadings();
}

void frmClip::mnuRecover_Click() {
    if (ask(this,
            u"This action will restore (i.e., unmask) all currently masked site.\n"
            u"Are you sure you wish to restore these sites?"_s)) {
        noteStep({MaskAct::kRecovery, markedRuns(SiteMask), 0});
        recoverSites(SiteMask);
        masked_ = 0;
        showCounts();
        cmdDelete->hide();
        tell(this, u"All masked sites have been recovered."_s);
    }
    DisplayMap();
}

// Closing ---------------------------------------------------------------------------------------------------

void frmClip::closeEvent(QCloseEvent* event) {
    event->setAccepted(Form_Unload());
}

bool frmClip::Form_Unload() {
    const bool leave =
        masked_ == 0 || ask(this,
                            u"Warning! You have not deleted all of the currently masked sites.\n"
                            u"Are you sure you wish to exit (and hence avoid deleting these sites)?"_s);
    if (deleted_ > 0) checkRows();
    return leave;
}

void frmClip::checkRows() {
    if (theSurvey().NumSites == 0) {
        theJournal().recount([](const Survey&, SurveyCounts& counts) { forgetRows(counts); });
        Q_EMIT noSitesLeft();
        tell(this, u"There is no more point left in the file!"_s);
        return;
    }
    if (ValidateRowInfo(theSurvey())) return;
    theJournal().perform(lossOfRows(), makeOneRow);
    steps_.forgetNext();
    followSteps();
    Q_EMIT rowsLost();
    fillComboRow();
    redrawBeforeNextPaint();
    Q_EMIT surveyChanged();
    beep();
    RowInfoLossMsg();
}

void frmClip::RowInfoLossMsg() {
    tell(this,
         u"Warning!  The sites which you have deleted have resulted in the complete\n"
         u"annihilation of 1 or more rows.  Due to this, all row information has been lost.\n\n"
         u"In order to fix this problem, you will need to recalculate the row numbering\n"
         u"information.  This can be done using the Delete / Join / Recalculate Rows menu\n"
         u"option (by choosing the recalculate row numbering sub-option procedure).\n\n"
         u"To avoid this problem in the future, you should avoid deleted entire rows\n"
         u"when clipping a survey grid."_s);
}

}  // namespace tessel
