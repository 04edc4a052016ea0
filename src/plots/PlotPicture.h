// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QPointer>
#include <QRect>
#include <QWidget>

class QPainter;

namespace tessel {

class Surface;

/// A picture of surfaces and labels of one window, each at its place, on white paper. Those that are hidden
/// are left out.
class PlotPicture {
  public:
    explicit PlotPicture(const QList<QWidget*>& parts);

    /// Nothing is shown.
    bool isEmpty() const { return size().isEmpty(); }
    /// In pixels of 96 to the inch.
    QSize size() const { return place_.size(); }

    // These require a picture that is not empty. Memory that cannot be had is a std::bad_alloc.

    /// In so many pixels across, 1 or more.
    QImage image(int width) const;
    // Whole files. SVG and PDF hold strokes and letters; many symbols are one picture inside.
    QByteArray png(int width) const;
    QByteArray svg() const;
    QByteArray pdf() const;

  private:
    void draw(QPainter& painter, const QRectF& target) const;

    QList<QPointer<QWidget>> parts_;
    QRect place_;
};

QList<QWidget*> surfacesIn(const QWidget& widget);

/// Copies a picture to the clipboard, twice as wide as on the screen; nothing where it is empty.
void copyPlot(const PlotPicture& picture);
/// Opens the window that asks how and where it is saved; nothing where it is empty.
void savePlot(QWidget* parent, const PlotPicture& picture);

/// From now on who copies or saves a surface's picture gets one of these parts, which the surface's window
/// owns.
void offerPicture(Surface& surface, const QList<QWidget*>& parts);

}  // namespace tessel
