#include "app/PictureBox.h"
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "support/UserDriver.h"

#include <QLabel>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

struct Zone {
    const char16_t* item;
    double left, top, width, height;
};
constexpr Zone kFull = {u"", -0.05, -0.05, 1.1, 1.1};
const std::vector<Zone> kZones = {
    {u"mnuZnorth", -0.05, -0.05, 1.1, 0.2}, {u"mnuZeast", 0.85, -0.05, 0.2, 1.1},
    {u"mnuZse", 0.5, 0.5, 0.55, 0.55},      {u"mnuZw13", -0.05, -0.05, 0.35, 1.1},
    {u"mnuZc13h", -0.05, 0.3, 1.1, 0.4},
};

}  // namespace

struct RandomSession::Map {
    QWidget& window;
    PictureBox& box;
    double xMin = 0, xMax = 1, yMin = 0, yMax = 1;
    Zone zone = kFull;
    std::vector<bool> masks = {};
    long deleted = 0;

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
    if (map.xMax == map.xMin) widen(map.xMin, map.xMax, 1);
    if (map.yMax == map.yMin) widen(map.yMin, map.yMax, 1);
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
    if (chance(30)) pickItem(window, u"comboRow"_s, below(survey_.rows + 1));
    for (int round = 1 + below(3); round > 0; --round) {
        if (chance(30)) {
            map.zone = oneOf(kZones);
            chooseItem(window, QString::fromUtf16(map.zone.item));
        }
        clip(map);
        decideOnMasked(map);
        compareMap(map);
    }
    leaveMap(map);
}

void RandomSession::clip(Map& map) {
    clickOn(map.window, u"cmdClipOn"_s);
    for (int rectangles = below(3) + 1; rectangles > 0; --rectangles) {
        drawRectangle(map);
        compareMap(map);
    }
    clickOn(map.window, u"cmdClipOff"_s);
}

// Drawn only where no site is so near an edge that rounding would decide.
bool RandomSession::drawRectangle(Map& map) {
    QPoint from(1 + below(map.box.width() - 1), 1 + below(map.box.height() - 1));
    QPoint to(1 + below(map.box.width() - 1), 1 + below(map.box.height() - 1));
    if (chance(8)) from = QPoint(1, 1), to = QPoint(map.box.width() - 1, map.box.height() - 1);
    const double xa = map.surveyX(std::min(from.x(), to.x())), xb = map.surveyX(std::max(from.x(), to.x()));
    const double north = map.surveyY(std::min(from.y(), to.y())),
                 south = map.surveyY(std::max(from.y(), to.y()));
    const double tiny = 1e-9 * (map.xMax - map.xMin + map.yMax - map.yMin);
    for (const PlainSite& site : survey_.sites)
        for (const double distance : {site.x - xa, site.x - xb, site.y - north, site.y - south})
            if (std::abs(distance) < tiny) return false;
    movePointer(map.box, from);
    QTest::mouseClick(&map.box, Qt::LeftButton, Qt::NoModifier, from);
    movePointer(map.box, to);
    // The corner is where the pointer moved last, not where the button is pressed.
    QTest::mouseClick(&map.box, Qt::LeftButton, Qt::NoModifier, chance(50) ? to : from);
    for (std::size_t i = 0; i < survey_.sites.size(); ++i) {
        const PlainSite& site = survey_.sites[i];
        if (xa < site.x && site.x < xb && south < site.y && site.y < north) map.masks[i] = true;
    }
    return true;
}

void RandomSession::decideOnMasked(Map& map) {
    if (map.masked() == 0 || chance(25)) return;
    const bool yes = chance(80);
    if (chance(25)) {
        expectQuestion(yes,
                       u"This action will restore (i.e., unmask) all currently masked site.\n"
                       u"Are you sure you wish to restore these sites?"_s);
        if (yes) expect(u"All masked sites have been recovered."_s);
        chooseItem(map.window, u"mnuRecover"_s);
        if (yes) std::fill(map.masks.begin(), map.masks.end(), false);
        return;
    }
    expectQuestion(yes,
                   u"This action will permanently delete all currently masked site.\n"
                   u"Are you sure you wish to delete these sites?"_s);
    if (yes) expect(u"All masked sites have been deleted."_s);
    clickOn(map.window, u"cmdDelete"_s);
    if (!yes) return;
    map.deleted += map.masked();
    deleteMarkedPlainSites(survey_, map.masks);
    map.masks.assign(survey_.sites.size(), false);
    plotsHidden();
}

void RandomSession::checkRowsAfterMap(Map& map) {
    if (map.deleted == 0) return;
    if (survey_.empty()) {
        survey_.rows = survey_.rowIndex = 0;
        return noSitesLeft();
    }
    counted_ = true;
    if (validatePlainRows(survey_)) return;
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
        chooseItem(map.window, u"mnuDone"_s);
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
