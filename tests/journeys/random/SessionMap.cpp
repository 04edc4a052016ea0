// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "drawing/PictureBox.h"
#include "journeys/random/RandomSession.h"
#include "support/Pixels.h"
#include "support/PlotWindow.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

struct Zone {
    const char16_t* item;
    double left, top, width, height;
};
constexpr Zone kFull = {u"", -0.05, -0.05, 1.1, 1.1};
const std::vector<Zone> kZones = {
    {u"mnuZnorth", -0.05, -0.05, 1.1, 0.2}, {u"mnuZsouth", -0.05, 0.85, 1.1, 0.2},
    {u"mnuZwest", -0.05, -0.05, 0.2, 1.1},  {u"mnuZeast", 0.85, -0.05, 0.2, 1.1},
    {u"mnuZnw", -0.05, -0.05, 0.55, 0.55},  {u"mnuZne", 0.5, -0.05, 0.55, 0.55},
    {u"mnuZsw", -0.05, 0.5, 0.55, 0.55},    {u"mnuZse", 0.5, 0.5, 0.55, 0.55},
    {u"mnuZw13", -0.05, -0.05, 0.35, 1.1},  {u"mnuZc13v", 0.3, -0.05, 0.4, 1.1},
    {u"mnuZe13", 0.7, -0.05, 0.35, 1.1},    {u"mnuZn13", -0.05, -0.05, 1.1, 0.35},
    {u"mnuZc13h", -0.05, 0.3, 1.1, 0.4},    {u"mnuZs13", -0.05, 0.7, 1.1, 0.35},
};

// How far an arrow key moves the cross, and with Shift (pixels).
constexpr int kCrossStep = 10;
constexpr int kCrossFineStep = 1;

}  // namespace

struct RandomSession::MapStep {
    std::vector<bool> masks;
    long deleted = 0;
    PlainSurvey survey;
    std::map<std::string, bool> menus;
};

struct RandomSession::Map {
    QWidget& window;
    PictureBox& box;
    double xMin = 0, xMax = 1, yMin = 0, yMax = 1;
    Zone zone = kFull;
    std::vector<bool> masks = {};
    long deleted = 0;
    bool canRestore = false, canDelete = false;
    bool fiveDecimals = false;
    struct Step {
        MapStep before, after;
        bool deletes;
    };
    std::vector<Step> steps = {};
    std::size_t done = 0;  ///< steps that have not been taken back

    long masked() const { return std::count(masks.begin(), masks.end(), true); }
    double surveyX(int pixel) const {
        return (zone.left + zone.width * pixel / box.width()) * (xMax - xMin) + xMin;
    }
    double surveyY(int pixel) const {
        return (1 - (zone.top + zone.height * pixel / box.height())) * (yMax - yMin) + yMin;
    }
};

namespace {

// The extent of all sites; the true one is as wide as high around the same centre.
template <typename Map>
void setScale(Map& map, const PlainSurvey& survey, bool trueScale) {
    if (survey.empty()) return;
    const auto x = std::minmax_element(survey.sites.begin(), survey.sites.end(),
                                       [](const PlainSite& a, const PlainSite& b) { return a.x < b.x; });
    const auto y = std::minmax_element(survey.sites.begin(), survey.sites.end(),
                                       [](const PlainSite& a, const PlainSite& b) { return a.y < b.y; });
    map.xMin = x.first->x, map.xMax = x.second->x, map.yMin = y.first->y, map.yMax = y.second->y;
    const auto widen = [](double& low, double& high, double to) {
        const double centre = low + (high - low) / 2;
        low = centre - to / 2;
        high = centre + to / 2;
    };
    const double dx = map.xMax - map.xMin, dy = map.yMax - map.yMin;
    if (trueScale && dx <= dy)
        widen(map.xMin, map.xMax, dy);
    else if (trueScale)
        widen(map.yMin, map.yMax, dx);
    // One unit, or eight of the steps in which numbers of that size come.
    const auto least = [](double place) { return std::max(1.0, 8 * 0x1p-52 * std::abs(place)); };
    if (map.xMax == map.xMin) widen(map.xMin, map.xMax, least(map.xMin));
    if (map.yMax == map.yMin) widen(map.yMin, map.yMax, least(map.yMin));
}

}  // namespace

void RandomSession::editOnMap() {
    if (!choose(u"mnuIDEW"_s, false)) return;
    QWidget& window = shownWindow(u"frmClip"_s);
    if (chance(5)) return chooseItem(window, u"mnuDone"_s);
    const bool trueScale = chance(50);
    chooseItem(window, trueScale ? u"mnuFullMapTrue"_s : u"mnuFullMapMax"_s);
    QCoreApplication::processEvents();
    Map map{window, controlAs<PictureBox>(window, u"picMapZoom"_s)};
    setScale(map, survey_, trueScale);
    map.masks.resize(survey_.sites.size());
    compareMapControls(map, false);
    for (int round = 1 + below(3); round > 0; --round) {
        if (chance(50)) chooseZone(map);
        if (chance(20)) lookCloser(map);
        clip(map);
        decideOnMasked(map);
        takeBackOnMap(map, false);
        compareMap(map);
        compareMapControls(map, false);
    }
    leaveMap(map);
}

void RandomSession::chooseZone(Map& map) {
    map.zone = oneOf(kZones);
    chooseItem(map.window, QString::fromUtf16(map.zone.item));
    comparePicture(map);
}

// Changes which part of the unit square is shown, and nothing else.
void RandomSession::lookCloser(Map& map) {
    const QPoint pixel(map.box.width() / 4 + below(map.box.width() / 2), map.box.height() / 4);
    const int way = below(4);
    if (way == 0) turnWheel(map.box, pixel, chance(60) ? 120 * (1 + below(3)) : -120);
    if (way == 1) drag(map.box, pixel, pixel + QPoint(below(41) - 20, below(41) - 20));
    if (way == 2) pressKey(map.box, chance(50) ? Qt::Key_Plus : Qt::Key_Minus);
    for (int keys = way == 3 ? 3 : 0; keys > 0; --keys)
        pressKey(map.box, oneOf(std::vector<Qt::Key>{Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}),
                 Qt::ControlModifier);
    const Rectangle& shown = map.box.scale();
    map.zone = {u"", shown.x.from, shown.y.from, shown.width(), shown.height()};
    map.fiveDecimals = chance(50);
    clickOn(map.window, map.fiveDecimals ? u"optLL"_s : u"optUTM"_s);
    pointAt(map.box, pixel);
    compareReadout(map, pixel);
}

void RandomSession::clip(Map& map) {
    clickOn(map.window, u"cmdClipOn"_s);
    map.canRestore = map.canDelete = false;
    compareMapControls(map, true);
    for (int rectangles = below(3) + 1; rectangles > 0; --rectangles) {
        const MapStep before = stateOfMap(map);
        drawRectangle(map);
        noteMapStep(map, before, false);
        compareMap(map);
        takeBackOnMap(map, true);
    }
    clickOn(map.window, u"cmdClipOff"_s);
    map.canRestore = map.canDelete = map.masked() > 0;
}

// Moves the cross from somewhere in the middle of the map; gives where it has come to.
QPoint RandomSession::walkOverMap(Map& map) {
    QPoint at(map.box.width() / 4 + below(map.box.width() / 2),
              map.box.height() / 4 + below(map.box.height() / 2));
    pointAt(map.box, at);
    for (int keys = 1 + below(6); keys > 0; --keys) {
        static constexpr Qt::Key kArrows[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
        static constexpr QPoint kWays[] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
        const int way = below(4);
        const bool fine = chance(40);
        at += kWays[way] * (fine ? kCrossFineStep : kCrossStep);
        pressKey(map.box, kArrows[way], fine ? Qt::ShiftModifier : Qt::NoModifier);
        compareReadout(map, at);
    }
    return at;
}

// A rectangle on whose edge a site lies is given up, so that rounding never decides.
void RandomSession::drawRectangle(Map& map) {
    QPoint from(1 + below(map.box.width() - 1), 1 + below(map.box.height() - 1));
    QPoint to(1 + below(map.box.width() - 1), 1 + below(map.box.height() - 1));
    if (chance(8)) from = QPoint(1, 1), to = QPoint(map.box.width() - 1, map.box.height() - 1);
    if (chance(25)) {
        from = walkOverMap(map);
        pressKey(map.box, Qt::Key_Return);
    } else if (chance(30)) {
        if (touchesSite(map, from, to)) return;
        reached_.note("a rectangle dragged");
        pointAt(map.box, from);
        drag(map.box, from, to, Qt::LeftButton);
        // A press that hardly moves is a click.
        const QPoint by = to - from;
        if (std::hypot(by.x(), by.y()) > 10) return maskInside(map, from, to);
    } else {
        pointAt(map.box, from);
        compareReadout(map, from);
        QTest::mouseClick(&map.box, Qt::LeftButton, Qt::NoModifier, from);
    }
    same("enabled cmdClipOff", control(map.window, u"cmdClipOff"_s).isEnabled(), false);
    const bool byKeys = chance(25);
    if (byKeys)
        to = walkOverMap(map);
    else
        pointAt(map.box, to);
    if (chance(5) || touchesSite(map, from, to)) {
        pressKey(map.window, Qt::Key_Escape);
        return same("enabled cmdClipOff", control(map.window, u"cmdClipOff"_s).isEnabled(), true);
    }
    // The corner is where the pointer moved last, not where the button is pressed.
    if (byKeys)
        pressKey(map.box, Qt::Key_Return);
    else
        QTest::mouseClick(&map.box, Qt::LeftButton, Qt::NoModifier, chance(50) ? to : from);
    maskInside(map, from, to);
}

bool RandomSession::touchesSite(const Map& map, const QPoint& from, const QPoint& to) const {
    const double tiny = 1e-9 * (map.xMax - map.xMin + map.yMax - map.yMin);
    return std::any_of(survey_.sites.begin(), survey_.sites.end(), [&](const PlainSite& site) {
        return std::abs(site.x - map.surveyX(from.x())) < tiny ||
               std::abs(site.x - map.surveyX(to.x())) < tiny ||
               std::abs(site.y - map.surveyY(from.y())) < tiny ||
               std::abs(site.y - map.surveyY(to.y())) < tiny;
    });
}

void RandomSession::maskInside(Map& map, const QPoint& from, const QPoint& to) {
    const double west = map.surveyX(std::min(from.x(), to.x())),
                 east = map.surveyX(std::max(from.x(), to.x()));
    const double north = map.surveyY(std::min(from.y(), to.y())),
                 south = map.surveyY(std::max(from.y(), to.y()));
    for (std::size_t i = 0; i < survey_.sites.size(); ++i) {
        const PlainSite& site = survey_.sites[i];
        if (west < site.x && site.x < east && south < site.y && site.y < north) map.masks[i] = true;
    }
}

void RandomSession::decideOnMasked(Map& map) {
    if (map.canRestore && chance(25)) return restore(map);
    if (!map.canDelete || chance(25)) return;
    const bool yes = chance(80);
    expectQuestion(yes,
                   u"This action will permanently delete all currently masked site.\n"
                   u"Are you sure you wish to delete these sites?"_s);
    if (yes) expect(u"All masked sites have been deleted."_s);
    clickOn(map.window, u"cmdDelete"_s);
    if (yes) {
        MapStep before = stateOfMap(map);
        before.survey.minDistance = std::exchange(ownDistance_, survey_.minDistance);
        map.deleted += map.masked();
        deleteMarkedPlainSites(survey_, map.masks);
        map.masks.assign(survey_.sites.size(), false);
        map.canRestore = map.canDelete = false;
        plotsFollow();
        noteMapStep(map, before, true);
        states_.resize(std::min(states_.size(), acts_ + 1));  // another way from here on
    }
    comparePicture(map);
}

void RandomSession::restore(Map& map) {
    const bool yes = chance(80);
    expectQuestion(yes,
                   u"This action will restore (i.e., unmask) all currently masked site.\n"
                   u"Are you sure you wish to restore these sites?"_s);
    if (yes) expect(u"All masked sites have been recovered."_s);
    chooseItem(map.window, u"mnuRecover"_s);
    if (yes) {
        const MapStep before = stateOfMap(map);
        std::fill(map.masks.begin(), map.masks.end(), false);
        map.canDelete = false;
        noteMapStep(map, before, false);
    }
    comparePicture(map);
}

RandomSession::MapStep RandomSession::stateOfMap(const Map& map) const {
    return {map.masks, map.deleted, survey_, menus_};
}

void RandomSession::noteMapStep(Map& map, const MapStep& before, bool deletes) {
    const MapStep after = stateOfMap(map);
    if (!deletes && after.masks == before.masks) return;
    map.steps.resize(map.done);
    map.steps.push_back({before, after, deletes});
    map.done = map.steps.size();
}

// Steps back and forth on the map, by keys: its menu is disabled now and then.
void RandomSession::takeBackOnMap(Map& map, bool clipping) {
    while (chance(40)) {
        const bool back = map.done > 0 && (chance(60) || map.done == map.steps.size());
        if (!back && map.done == map.steps.size()) return;
        const Map::Step& step = map.steps[back ? map.done - 1 : map.done];
        const MapStep& to = back ? step.before : step.after;
        pressKey(map.box, back ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
        map.done = back ? map.done - 1 : map.done + 1;
        map.masks = to.masks;
        map.deleted = to.deleted;
        map.canRestore = map.canDelete = !clipping && map.masked() > 0;
        if (step.deletes) {
            reached_.note(back ? "a deletion on the map taken back" : "a deletion on the map done again");
            survey_ = to.survey;
            ownDistance_ = survey_.minDistance;
            plotsFollow();
            menus_ = to.menus;
            offerSingleRow();
        }
        QCoreApplication::processEvents();
        compareMap(map);
        compareMapControls(map, clipping);
        if (!difference_.empty()) return;
        comparePicture(map);
    }
}

void RandomSession::checkRowsAfterMap(Map& map) {
    if (map.deleted == 0) return;
    if (survey_.empty()) {
        survey_.rows = survey_.rowIndex = 0;
        return noSitesLeft();
    }
    counted_ = true;
    if (validatePlainRows(survey_)) return;
    reached_.note("row information lost");
    plotsFollow();
    setMenus(true, {"mnuRow", "mnuDistance", "mnuGrid", "mnuData", "mnuStat"});
    expect(
        u"Warning!  The sites which you have deleted have resulted in the complete\n"
        u"annihilation of 1 or more rows.  Due to this, all row information has been lost.\n\n"
        u"In order to fix this problem, you will need to recalculate the row numbering\n"
        u"information.  This can be done using the Delete / Join / Recalculate Rows menu\n"
        u"option (by choosing the recalculate row numbering sub-option procedure).\n\n"
        u"To avoid this problem in the future, you should avoid deleted entire rows\n"
        u"when clipping a survey grid."_s);
}

void RandomSession::leaveMap(Map& map) {
    bool leave = false;
    while (!leave) {
        leave = map.masked() == 0 || chance(60);
        if (map.masked() > 0)
            expectQuestion(leave,
                           u"Warning! You have not deleted all of the currently masked sites.\n"
                           u"Are you sure you wish to exit (and hence avoid deleting these sites)?"_s);
        checkRowsAfterMap(map);
        this->leave(map.window, u"mnuDone"_s);
        same("visible frmClip", isShown(u"frmClip"_s), !leave);
    }
}

void RandomSession::compareMap(Map& map) {
    const auto label = [&](const QString& name, long wanted) {
        sameText(name.toStdString(), controlAs<QLabel>(map.window, name).text(), QString::number(wanted));
    };
    label(u"lblMS"_s, map.masked());
    label(u"lblVS"_s, static_cast<long>(survey_.sites.size()) - map.masked());
    label(u"lblDS"_s, map.deleted);
}

// Which controls there are at each stage: browsing and clipping.
void RandomSession::compareMapControls(Map& map, bool clipping) {
    const auto enabled = [&](const QString& menu) { return map.window.findChild<QMenu*>(menu)->isEnabled(); };
    const auto shown = [&](const QString& name) { return map.window.findChild<QWidget*>(name)->isVisible(); };
    same("enabled mnuV", enabled(u"mnuV"_s), !clipping);
    same("enabled mnuZ", enabled(u"mnuZ"_s), !clipping);
    same("enabled mnuR", enabled(u"mnuR"_s), map.canRestore);
    same("visible cmdDelete", shown(u"cmdDelete"_s), map.canDelete);
    same("visible frameHLR", shown(u"frameHLR"_s), !clipping);
    same("visible frameLoc", shown(u"frameLoc"_s), true);
    same("enabled cmdClipOn", control(map.window, u"cmdClipOn"_s).isEnabled(), !clipping);
    same("enabled cmdClipOff", control(map.window, u"cmdClipOff"_s).isEnabled(), clipping);
}

void RandomSession::compareReadout(Map& map, const QPoint& pixel) {
    const int decimals = map.fiveDecimals ? 5 : 1;
    sameFigure("txtXloc", controlAs<QLineEdit>(map.window, u"txtXloc"_s).text(), map.surveyX(pixel.x()),
               decimals, map.xMax - map.xMin + std::abs(map.xMin));
    sameFigure("txtYloc", controlAs<QLineEdit>(map.window, u"txtYloc"_s).text(), map.surveyY(pixel.y()),
               decimals, map.yMax - map.yMin + std::abs(map.yMin));
}

// The dots that stand apart from all others, after the map has been drawn.
void RandomSession::comparePicture(Map& map) {
    // Places that numbers can hardly tell apart may be drawn beside it.
    const auto isFine = [](double low, double high) { return high - low > 1e-9 * std::abs(low); };
    if (!isFine(map.xMin, map.xMax) || !isFine(map.yMin, map.yMax)) return;
    // Without the cross, which hides what is beneath it.
    pointAt(map.box, QPoint(1, 1));
    const QImage picture = map.box.grab().toImage();
    const auto pixelOf = [&](const PlainSite& site) {
        return map.box.toPixel((site.x - map.xMin) / (map.xMax - map.xMin),
                               1 - (site.y - map.yMin) / (map.yMax - map.yMin));
    };
    for (std::size_t i = 0; i < survey_.sites.size() && i < 60; ++i) {
        const QPointF at = pixelOf(survey_.sites[i]);
        if (!QRectF(picture.rect()).adjusted(5, 5, -5, -5).contains(at)) continue;
        const bool alone =
            std::none_of(survey_.sites.begin(), survey_.sites.end(), [&](const PlainSite& other) {
                return &other != &survey_.sites[i] && (pixelOf(other) - at).manhattanLength() < 6;
            });
        if (!alone) continue;
        const QColor wanted = map.masks[i] ? QColor(Qt::white) : paletteColour(kBlue);
        if (picture.pixelColor(at.toPoint()) != wanted &&
            picture.pixelColor(QPoint(int(at.x()), int(at.y()))) != wanted)
            differ("the dot of site " + std::to_string(i) + " has another colour");
    }
}

}  // namespace tessel
