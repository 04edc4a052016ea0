// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>

namespace tessel {

// Which menu items are enabled when. Items are enabled and disabled by what happens to the survey; this table
// is the only place that says so.

enum class MenuEvent {
    StartUp,            ///< nothing has been imported yet
    SitesImported,      ///< an import gave at least one site
    NothingImported,    ///< an import gave no site
    ImportRefused,      ///< an import was read but its row numbers are of no use
    RowsRecalculated,   ///< the rows were found anew, at most 250 of them
    FewerThanTwoRows,   ///< deleting sites on a row plot left fewer than two rows
    RowsLost,           ///< deleting sites on the map emptied rows: all sites are one row, to be divided anew
    NoSitesLeft,        ///< the last site was deleted
    RowEditorFinished,  ///< the row plot editor was closed with its button
};

struct MenuChange {
    bool enable;
    std::span<const std::string_view> items;  ///< object names
};

/// What an event does to the menus; all items not named stay as they are.
std::span<const MenuChange> menuChanges(MenuEvent event);

/// What an item has nothing to open without. Items stay enabled when the last site goes with the row plots or
/// the row dialog, and where there are too many rows: whoever chooses one then is told why.
enum class MenuNeed { None, Sites, UsableRows };
MenuNeed menuNeed(std::string_view item);

}  // namespace tessel
