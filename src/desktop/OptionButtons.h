// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace tessel {

/// From now on the tab key reaches each group of option buttons in a window at the chosen one, whether it was
/// chosen by hand or by the program, and arrow keys choose among them. A group without a choice is reached at
/// every button.
void tabToChosenOptions(QWidget& window);

}  // namespace tessel
