// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QSize>

#include <memory>

namespace tessel {

/// What is painted on it becomes a picture in SVG: strokes and areas as paths, letters as their outlines (so
/// that they look alike where their font is missing), pictures as they are. 96 units to an inch. A painter's
/// clip is not kept.
class SvgDevice : public QPaintDevice {
  public:
    explicit SvgDevice(const QSize& size);
    ~SvgDevice() override;

    /// The whole file. Requires that no painter is at work.
    QByteArray file() const;

    QPaintEngine* paintEngine() const override;

  protected:
    int metric(PaintDeviceMetric metric) const override;

  private:
    class Engine;
    QSize size_;
    std::unique_ptr<Engine> engine_;
};

}  // namespace tessel
