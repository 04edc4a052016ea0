// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

#include <memory>
#include <string>

namespace tessel {

class frmMain;

/// The whole program but its event loop: the main window with every menu item joined to what it opens.
/// Requires an application object and a session whose AppDir and DataDir are set. The work is kept in the
/// folder `stateFolder` in case the program is ended; nowhere if that is empty.
std::unique_ptr<frmMain> createProgram(const std::string& stateFolder = {});

/// Opens a file, or begins the import that fits it, as if it had been dropped on the window of a program.
/// What is wrong with it is told.
void openFile(frmMain& window, const std::string& path);

/// The program's icon, drawn for every usual size from 16 to 512 pixels.
QIcon programIcon();

}  // namespace tessel
