// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string_view>

namespace tessel {

/// A help document: helpdocs/hdoc101.rtf and so on, and its title. In the order of their numbers.
struct HelpDocumentTitle {
    int number;
    std::string_view title;
};

inline constexpr auto kHelpDocuments = std::to_array<HelpDocumentTitle>({
    {101, "What is VARN-Tessel"},
    {102, "Navigating the Main Menu"},
    {103, "Frequently asked questions"},
    {104, "Import control parameters"},
    {105, "Import format display"},
    {106, "Using the Generic Sensor File Import window"},
    {107, "Exporting the transect file"},
    {108, "How to use the GDR window"},
    {109, "Navigating the GDR menu bar"},
    {110, "Using the on-screen GDR controls"},
    {111, "Info (about each plot)"},
    {112, "Row editing and re-numbering"},
    {113, "Adjusting EM data"},
    {114, "The row plot editor"},
    {115, "Creating and printing a correlation plot"},
    {116, "Creating and printing histogram plots"},
    {117, "Taking back what was done"},
    {118, "Finding rows by turns"},
    {119, "Finding suspicious sites"},
    {120, "Tables out and in"},
    {121, "What positions are"},
    {122, "Saving a survey and opening it again"},
});

}  // namespace tessel
