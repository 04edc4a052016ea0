// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>

#include <string_view>

namespace tessel {

/// A picture as it stands in rich text: its bytes, mostly written in hexadecimal, and the size at which it
/// is shown. PNG and JPEG are known.
class RichTextPicture {
  public:
    /// Forgets the picture before, but not how much room pictures have taken.
    void begin();
    void setKnown() { known_ = true; }
    void setWidth(int twips) { width_ = twips; }
    void setHeight(int twips) { height_ = twips; }
    void setWidthScale(int percent) { widthScale_ = percent; }
    void setHeightScale(int percent) { heightScale_ = percent; }
    void addHexadecimal(std::string_view digits);
    void addBytes(std::string_view bytes);

    /// The picture, null when it is of another kind, damaged, or larger than all pictures of a document
    /// together may be.
    QImage decoded();
    /// Where it is shown, in pixels at 96 an inch; never wider than a page. Requires a decoded picture.
    QSizeF shownSize(const QImage& image) const;

  private:
    bool known_ = false;
    int width_ = 0, height_ = 0;
    int widthScale_ = 100, heightScale_ = 100;
    int pendingDigit_ = -1;
    QByteArray bytes_;
    qint64 roomLeft_ = qint64{32} << 20;  // picture points that a document's pictures may still take
};

}  // namespace tessel
