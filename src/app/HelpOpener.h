// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace tessel {

/// Opens the help document of this number (101 to 116) in the help viewer, of which there is one, or says
/// over the window `from` that the document's file is missing. The viewer comes up beside that window, or
/// over the main one. Throws RunTimeError with path and reason when the file is there but cannot be read.
void openHelp(QWidget* from, int document);

}  // namespace tessel
