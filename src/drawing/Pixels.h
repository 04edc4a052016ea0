// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/whole_numbers.h"
#include "drawing/point_raster.h"

#include <QImage>
#include <QPoint>
#include <QRect>

namespace tessel {

// From places on a widget to its pixels. Unlike Qt's own conversions these take a place anywhere, also one
// that a zoomed view has moved beyond the range of an int.

/// The pixel that a place lies in.
inline QPoint pixelAt(const QPointF& place) {
    return {intBelow(place.x()), intBelow(place.y())};
}

/// The pixel corner nearest to a place.
inline QPoint nearestPixel(const QPointF& place) {
    return {nearestInt(place.x()), nearestInt(place.y())};
}

/// The size in whole pixels nearest to another.
inline QSize nearestSize(const QSizeF& size) {
    return {nearestInt(size.width()), nearestInt(size.height())};
}

/// The smallest rectangle of whole pixels around another. Requires one that has been cut off at a widget.
inline QRect pixelsAround(const QRectF& box) {
    const QPoint corner = pixelAt(box.topLeft());
    return {corner, QSize(intAbove(box.right()) - corner.x(), intAbove(box.bottom()) - corner.y())};
}

/// The pixels of a picture of 32 bits a pixel, which they are written into.
inline Raster rasterOf(QImage& picture) {
    return {reinterpret_cast<std::uint32_t*>(picture.bits()), picture.width(), picture.height(),
            picture.bytesPerLine() / 4};
}

}  // namespace tessel
