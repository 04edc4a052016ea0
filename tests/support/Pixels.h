// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/palette16.h"

namespace tessel {

// What is seen in a picture, and the wheel that changes it.

inline QColor paletteColour(int number) {
    return QColor::fromRgb(kBasicPalette[static_cast<std::size_t>(number)]);
}

/// The colour of a caption or a notice.
inline QColor inkOf(const QWidget& widget) {
    return widget.palette().color(QPalette::Active, QPalette::WindowText);
}

inline int countColour(const QImage& image, const QColor& colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == colour;
    return count;
}

/// The colour at a place of a widget's picture, which may have several pixels for each of the widget's.
inline QColor colourAt(const QImage& image, const QPointF& place) {
    const QPointF pixel = place * image.devicePixelRatio();
    return image.pixelColor(static_cast<int>(pixel.x()), static_cast<int>(pixel.y()));
}

/// White paper of a resolution in dots per inch.
inline QImage whitePaper(const QSize& size, double resolution) {
    QImage paper(size, QImage::Format_RGB32);
    paper.setDotsPerMeterX(qRound(resolution / 0.0254));
    paper.setDotsPerMeterY(qRound(resolution / 0.0254));
    paper.fill(Qt::white);
    return paper;
}

/// Drags with a button held, and keys.
inline void drag(QWidget& widget, Qt::MouseButton button, QPoint from, QPoint to,
                 Qt::KeyboardModifiers held = {}) {
    // Two quick presses at one place would be a double click.
    QTest::mousePress(&widget, button, held, from, QApplication::doubleClickInterval() + 1);
    QTest::mouseMove(&widget, (from + to) / 2);
    QTest::mouseMove(&widget, to);
    QTest::mouseRelease(&widget, button, held, to);
}

/// The pointer leaves the widget.
inline void leave(QWidget& widget) {
    QEvent left(QEvent::Leave);
    QCoreApplication::sendEvent(&widget, &left);
}

/// Turns the wheel over a place: 120 is one notch.
inline void turnWheel(QWidget& widget, const QPointF& place, int angle) {
    QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

}  // namespace tessel
