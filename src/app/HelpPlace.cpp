// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HelpPlace.h"

#include <algorithm>

namespace tessel {

std::optional<QRect> placedBeside(const QRect& other, const QSize& size, int narrowest,
                                  const QRect& wholeScreen) {
    constexpr int kGap = 12;  // between the two, frames included
    const QRect screen = wholeScreen.marginsRemoved(QMargins(8, 32, 8, 8));
    const int onTheRight = screen.right() - other.right() - kGap;
    const int onTheLeft = other.left() - kGap - screen.left();
    // The right is where one reads on; the left has to offer what the right lacks.
    const bool right = onTheRight >= std::min(size.width(), std::max(onTheLeft, narrowest));
    const int room = right ? onTheRight : onTheLeft;
    if (room < narrowest) return std::nullopt;
    QRect place(QPoint(), QSize(std::min(size.width(), room), std::min(size.height(), screen.height())));
    place.moveLeft(right ? other.right() + 1 + kGap : other.left() - kGap - place.width());
    place.moveTop(std::clamp(other.top(), screen.top(), screen.bottom() - place.height() + 1));
    return place;
}

}  // namespace tessel
