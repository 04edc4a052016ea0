#pragma once

#include <QColor>

class QAbstractButton;
class QWidget;

/// A colour of the basic palette, in a shade that can be read on the window's ground: light blue (9) darkens
/// on a light theme and brightens on a dark one; black (0) is the theme's own text colour.
QColor captionColour(int paletteColour, const QWidget& onGround);

/// Shows a caption in a colour of the basic palette.
void colourCaption(QWidget& widget, int paletteColour);

/// Keeps the caption of an option button or check box light blue (9) while it is checked and black (0) while
/// it is not.
void colourWhileChecked(QAbstractButton& button);
