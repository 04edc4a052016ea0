// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/CaptionColour.h"

#include <QAbstractButton>
#include <QApplication>

namespace tessel {

QColor captionColour(int paletteColour, const QWidget& onGround) {
    const QPalette palette = QApplication::palette(&onGround);
    if (paletteColour == kBlack) return palette.color(QPalette::WindowText);
    const QColor colour(QRgb{kBasicPalette.at(static_cast<std::size_t>(paletteColour))});
    const bool darkGround = palette.color(QPalette::Window).lightness() < 128;
    if (darkGround) return QColor::fromHsl(colour.hslHue(), 255, 205);
    return colour.lightness() > 110 ? QColor::fromHsl(colour.hslHue(), 255, 110) : colour;
}

void colourCaption(QWidget& widget, int paletteColour) {
    QPalette palette = widget.palette();
    const QColor colour = captionColour(paletteColour, widget);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
        palette.setColor(QPalette::Active, role, colour);
        palette.setColor(QPalette::Inactive, role, colour);
    }
    widget.setPalette(palette);
}

void colourNotice(QWidget& notice, bool warns) {
    colourCaption(notice, warns ? kWarningColour : kBlack);
}

void colourWhileChecked(QAbstractButton& button) {
    const auto colour = [&button] { colourCaption(button, button.isChecked() ? kLightBlue : kBlack); };
    QObject::connect(&button, &QAbstractButton::toggled, &button, colour);
    colour();
}

}  // namespace tessel
