// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextPicture.h"

#include "richtext/RichTextFormats.h"
#include "richtext/rich_text_tokens.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>

namespace tessel {

void RichTextPicture::begin() {
    const auto room = roomLeft_;
    *this = {};
    roomLeft_ = room;
}

void RichTextPicture::addHexadecimal(std::string_view digits) {
    for (const char c : digits) {
        const int digit = hexDigit(c);
        if (!known_ || digit < 0) continue;
        if (pendingDigit_ >= 0) bytes_ += static_cast<char>(pendingDigit_ * 16 + digit);
        pendingDigit_ = pendingDigit_ >= 0 ? -1 : digit;
    }
}

void RichTextPicture::addBytes(std::string_view bytes) {
    if (known_) bytes_.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

QImage RichTextPicture::decoded() {
    if (!known_ || bytes_.isEmpty()) return {};
    QBuffer buffer(&bytes_);
    QImageReader reader(&buffer);
    const auto format = reader.format();
    if (format != "png" && format != "jpeg") return {};
    // A small file may unfold into a huge picture, so the size is looked at before.
    const QSize size = reader.size();
    const qint64 points = qint64{size.width()} * size.height();
    if (size.isEmpty() || points > roomLeft_) return {};
    roomLeft_ -= points;
    return reader.read();
}

QSizeF RichTextPicture::shownSize(const QImage& image) const {
    constexpr double kPage = 620;
    constexpr double kTallest = 4000;
    const auto scaled = [](int twips, int own, int percent) {
        const double length = twips > 0 ? pixels(twips) : own;
        return std::max(1.0, length * std::clamp(percent, 1, 1000) / 100);
    };
    QSizeF size(scaled(width_, image.width(), widthScale_), scaled(height_, image.height(), heightScale_));
    const QSizeF page(kPage, kTallest);
    if (size.width() > kPage || size.height() > kTallest) size.scale(page, Qt::KeepAspectRatio);
    return size;
}

}  // namespace tessel
