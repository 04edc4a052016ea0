// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAbstractButton;
class QWidget;

namespace tessel {

/// Opens the help document of this number (help_documents.h) in the help viewer, of which there is one, or
/// says over the window `from` that the document's file is missing. The viewer comes up beside that window,
/// or over the main one. Throws RunTimeError with path and reason when the file is there but cannot be read.
void openHelp(QWidget* from, int document);

/// From now on the help key opens this document while the window is active, and so does its help button if it
/// has one.
void offerHelp(QWidget& window, int document, QAbstractButton* button = nullptr);

}  // namespace tessel
