// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

class QAction;
class QWidget;

namespace tessel {

// What the menu items about editor and printer do.

/// What the messages below add from now on: items of the settings file that were refused when the program
/// began, a sentence each.
void setRefusedSettings(std::vector<std::string> sentences);

/// Checks the item of the resolution in force; none, where a settings file has set another.
void showResolution(QAction& dpi300, QAction& dpi600, QAction& dpi1200);

/// Opens the error log of the last import in the text editor. Throws RunTimeError when there is none or the
/// editor cannot be started.
void mnuEL_Click();

/// Asks for another text editor, in force until the program ends; the settings file is not written. Throws
/// RunTimeError, with the editor as it was, when a file is chosen that may not be executed.
void mnusetDTE_Click(QWidget* parent);

/// Sets the session's PrintScale to 1.0, 2.0 or 4.0 and says so.
void mnuDPI300_Click(QWidget* parent);
void mnuDPI600_Click(QWidget* parent);
void mnuDPI1200_Click(QWidget* parent);

}  // namespace tessel
