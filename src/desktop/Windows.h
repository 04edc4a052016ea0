// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>

#include <optional>

class QWidget;

namespace tessel {

// How windows come up. Both show the window, raise it, and delete it when it is closed, but never beneath a
// box that is open; the keyboard then goes on in the window above it.

/// For windows that edit the survey or depend on its staying as it is: blocks the main window's hierarchy,
/// while the help viewer, which has no parent, can be read and used. The window needs the main window, or a
/// window above it, as parent.
void showModal(QWidget* window);

/// For windows that only show: the main window stays usable.
void showBeside(QWidget* window);

/// Closes such a window without asking it; null is none.
void takeAway(QWidget* window);

/// Where a window of that size lies over the middle of another: moved and cut so that it, with its frame,
/// stays on the screen.
QRect placedOver(const QRect& other, const QSize& size, const QRect& wholeScreen);
/// Where it lies at the right of another, hiding no more of that one than the screen makes it.
QRect placedAtRight(const QRect& other, const QSize& size, const QRect& wholeScreen);

/// Where a window of that size lies beside another, whose rectangle includes its frame: to the right of it or
/// else to the left, made narrower where it must, but not below `narrowest`. It stays on the screen with its
/// frame. Nothing where the screen has no room on either side.
std::optional<QRect> placedBeside(const QRect& other, const QSize& size, int narrowest,
                                  const QRect& wholeScreen);

/// Gives a window this size, or as much of it as its screen has room for.
void resizeOnScreen(QWidget& window, const QSize& wanted);

/// From now on a widget that is hidden leaves its place free, so that what is around it stands still.
void keepRoomWhenHidden(QWidget& widget);

}  // namespace tessel
