// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/menu_items.h"

#include <algorithm>
#include <array>

namespace tessel {

namespace {

using Name = std::string_view;

// The items that need a survey, and export, which an import without a site leaves as it was.
constexpr std::array<Name, 19> kAllItems = {"mnuSigCorr",     "mnuHist",     "mnuClear",     "mnuData",
                                            "mnuInvokeIDE",   "mnuIDEW",     "mnuDistance",  "mnuGrid",
                                            "mnuStat",        "mnuRow",      "mnuAdjust",    "mnuEL",
                                            "mnuGridReading", "mnuRecord",   "mnuSaveTable", "mnuCoordinates",
                                            "mnuTurns",       "mnuSuspects", "mnuSave"};
constexpr std::span<const Name> kSurveyItems = std::span(kAllItems).first<18>();
constexpr std::span<const Name> kExport = std::span(kAllItems).last<1>();
constexpr std::array<Name, 5> kRowItems = {"mnuRow", "mnuStat", "mnuDistance", "mnuGrid", "mnuGridReading"};
constexpr std::array<Name, 6> kTwoRowItems = {"mnuRow",         "mnuDistance", "mnuGrid",
                                              "mnuGridReading", "mnuData",     "mnuStat"};
constexpr std::array<Name, 17> kSiteItems = {
    "mnuTurns",     "mnuSuspects", "mnuCoordinates", "mnuSave",  "mnuRecord",     "mnuSaveTable",
    "mnuInvokeIDE", "mnuIDEW",     "mnuRow",         "mnuData",  "mnuStat",       "mnuDistance",
    "mnuGrid",      "mnuSigCorr",  "mnuHist",        "mnuClear", "mnuGridReading"};
constexpr std::array<Name, 1> kRowDialog = {"mnuData"};

constexpr std::array<Name, 12> kNeedSites = {"mnuTurns", "mnuSuspects", "mnuCoordinates", "mnuSaveTable",
                                             "mnuIDEW",  "mnuData",     "mnuAdjust",      "mnuTrue_Dis",
                                             "mnuX_Dis", "mnuY_Dis",    "mnuSigCorr",     "mnuHist"};
constexpr std::array<Name, 6> kNeedUsableRows = {"mnuX",    "mnuY",       "mnuStat",
                                                 "mnuGrid", "mnuGridEM1", "mnuGridEM2"};

constexpr std::array<MenuChange, 1> kStartUp = {{{false, kSurveyItems}}};
constexpr std::array<MenuChange, 2> kSitesImported = {{{true, kSurveyItems}, {true, kExport}}};
constexpr std::array<MenuChange, 2> kImportRefused = {{{false, kSurveyItems}, {false, kExport}}};
constexpr std::array<MenuChange, 1> kRowsRecalculated = {{{true, kRowItems}}};
constexpr std::array<MenuChange, 1> kFewerThanTwoRows = {{{false, kTwoRowItems}}};
constexpr std::array<MenuChange, 1> kRowsLost = {{{true, kTwoRowItems}}};
constexpr std::array<MenuChange, 1> kNoSitesLeft = {{{false, kSiteItems}}};
constexpr std::array<MenuChange, 1> kRowEditorFinished = {{{true, kRowDialog}}};

}  // namespace

std::span<const MenuChange> menuChanges(MenuEvent event) {
    switch (event) {
        case MenuEvent::kStartUp:
        case MenuEvent::kNothingImported:
            return kStartUp;
        case MenuEvent::kSitesImported:
            return kSitesImported;
        case MenuEvent::kImportRefused:
            return kImportRefused;
        case MenuEvent::kRowsRecalculated:
            return kRowsRecalculated;
        case MenuEvent::kFewerThanTwoRows:
            return kFewerThanTwoRows;
        case MenuEvent::kRowsLost:
            return kRowsLost;
        case MenuEvent::kNoSitesLeft:
            return kNoSitesLeft;
        case MenuEvent::kRowEditorFinished:
            return kRowEditorFinished;
    }
    return {};
}

std::span<const std::string_view> followingItems() {
    return kAllItems;
}

MenuState bitOf(std::string_view item) {
    return MenuState{1} << (std::ranges::find(kAllItems, item) - kAllItems.begin());
}

MenuState menusOfToday(MenuState menus, std::span<const std::string> names) {
    MenuState today = 0, bit = 1;
    for (const Name name : kAllItems) {
        const auto place = static_cast<std::size_t>(std::ranges::find(names, name) - names.begin());
        const bool isCounted = place < names.size() && place < 32;
        if (isCounted ? (menus >> place & 1) != 0 : menus != 0) today |= bit;
        bit <<= 1;
    }
    return today;
}

MenuNeed menuNeed(std::string_view item) {
    const auto isIn = [item](const auto& items) { return std::ranges::find(items, item) != items.end(); };
    return isIn(kNeedSites)        ? MenuNeed::kSites
           : isIn(kNeedUsableRows) ? MenuNeed::kUsableRows
                                   : MenuNeed::kNone;
}

}  // namespace tessel
