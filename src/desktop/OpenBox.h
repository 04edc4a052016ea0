// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>

class QWidget;

namespace tessel {

// A box or a file dialog runs an event loop of its own inside the function that shows it. What is late (a
// mnemonic clicks its button a tenth of a second after the key) and what comes from outside (the window
// manager's close) arrives there, while functions of the windows beneath are not at their end. So buttons
// beneath a box wait, a window with a box over it refuses to close, and what has been closed all the same is
// destroyed when no such loop runs any more. Late clicks wait beneath every modal window, which works on a
// survey that nobody else is to change.

/// Lives as long as a box or dialog over `owner` (null: over no window) is open. Until then the owner and the
/// windows that own it refuse to close, and clicks that are under way in any other window wait.
class OpenBox {
  public:
    explicit OpenBox(QWidget* owner);
    ~OpenBox();
    OpenBox(const OpenBox&) = delete;
    OpenBox& operator=(const OpenBox&) = delete;

  private:
    QPointer<QWidget> owner_;
};

/// From now on neither closing nor deleteLater() destroys the window while a box, dialog, menu or drag runs
/// an event loop, and its menus close when it is hidden.
void outliveBoxes(QWidget& window);

}  // namespace tessel
