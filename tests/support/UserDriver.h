// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>

#include <stdexcept>

namespace tessel {

class frmMain;

/// Acts on the real windows as a user does: by the names of menu items and controls, never around what is
/// disabled or hidden. Whatever a user could not do throws DriverError with the name in question.
class DriverError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Chooses a menu item of the main window, or of another window with a menu bar. Every menu on the way to it
/// must be enabled too.
void chooseItem(QWidget& window, const QString& item);

/// The visible window of this name; waits for it a little.
QWidget& shownWindow(const QString& name);
/// Whether such a window is visible now.
bool isShown(const QString& name);
/// Waits until no window of this name is visible.
void waitUntilClosed(const QString& name);

/// Lets windows come and go that are due to.
void letWindowsGo();

/// The visible control of this name in a window.
QWidget& control(QWidget& window, const QString& name);
template <typename Widget>
Widget& controlAs(QWidget& window, const QString& name) {
    if (auto* const found = qobject_cast<Widget*>(&control(window, name))) return *found;
    throw DriverError("of another kind: " + name.toStdString());
}

/// Clicks the middle of a control (an option button or a check box on its mark).
void clickOn(QWidget& window, const QString& name);
/// Clicks as a mouse does: through the windowing system, which a modal window bars.
void clickThroughTheDesktop(QWidget& button);
/// Opens a combo box and chooses an item by its index, also the one that is chosen already.
void pickItem(QWidget& window, const QString& name, int index);
/// Replaces what stands in a box by typing.
void typeInto(QWidget& window, const QString& name, const QString& text);

}  // namespace tessel
