// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>

#include <optional>

namespace tessel {

/// Where a window of that size lies beside another, whose rectangle includes its frame: to the right of it or
/// else to the left, made narrower where it must, but not below `narrowest`. It stays on the screen with its
/// frame. Nothing where the screen has no room on either side.
std::optional<QRect> placedBeside(const QRect& other, const QSize& size, int narrowest,
                                  const QRect& wholeScreen);

}  // namespace tessel
