// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/palette16.h"

#include <QColor>

class QAbstractButton;
class QWidget;

namespace tessel {

/// A colour of the basic palette, in a shade that can be read on the window's ground: light blue (9) darkens
/// on a light theme and brightens on a dark one; black (0) is the theme's own text colour.
QColor captionColour(int paletteColour, const QWidget& onGround);

/// Shows a caption in a colour of the basic palette.
void colourCaption(QWidget& widget, int paletteColour);

/// The colour of every sentence that warns, and of what it warns of, in all windows.
inline constexpr BasicColour kWarningColour = kRed;

/// Shows a notice in that colour while it warns, and in the theme's own text colour while it only tells.
void colourNotice(QWidget& notice, bool warns);

/// Keeps the caption of an option button or check box light blue (9) while it is checked and black (0) while
/// it is not.
void colourWhileChecked(QAbstractButton& button);

}  // namespace tessel
