// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tessel {

// Which menu items are enabled when. Items are enabled and disabled by what happens to the survey; this table
// is the only place that says so.

/// What happens to the survey, as far as menu items follow it.
enum class MenuEvent {
    kStartUp,           ///< nothing has been imported yet
    kSitesImported,     ///< an import gave at least one site
    kNothingImported,   ///< an import gave no site
    kImportRefused,     ///< an import was read but its row numbers are of no use
    kRowsRecalculated,  ///< the rows were found anew, at most 250 of them
    kFewerThanTwoRows,  ///< deleting sites on a row plot left fewer than two rows
    kRowsLost,          ///< deleting sites on the map emptied rows: all sites are one row, to be divided anew
    kNoSitesLeft,       ///< the last site was deleted
    kRowEditorFinished,  ///< the row plot editor was closed with its button
};

/// Items that one event enables, or disables.
struct MenuChange {
    bool enable;
    std::span<const std::string_view> items;  ///< object names
};

/// What an event does to the menus; all items not named stay as they are.
std::span<const MenuChange> menuChanges(MenuEvent event);

/// The items that follow events, and which of them are enabled: a bit an item, in this order.
std::span<const std::string_view> followingItems();
using MenuState = std::uint32_t;
/// Requires one of them.
MenuState bitOf(std::string_view item);
/// The state of the items of today for a state that counts items of these names, as another version of the
/// program may have. Of an item that it does not count nothing is known: it is enabled if any is.
MenuState menusOfToday(MenuState menus, std::span<const std::string> names);

/// What an item has nothing to open without. Items stay enabled when the last site goes with the row plots or
/// the row dialog, and where there are too many rows: whoever chooses one then is told why.
enum class MenuNeed { kNone, kSites, kUsableRows };
MenuNeed menuNeed(std::string_view item);

}  // namespace tessel
