// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tessel {

/// Holds a map: over all of the area, or as the largest square in its middle, so that a metre of a square
/// extent is as long in one direction as in the other.
class MapArea : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

    /// The map, a child of the area; it must outlive the area's last resize.
    void setMap(QWidget* map);
    void keepSquare(bool square);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void place();

    QWidget* map_ = nullptr;
    bool square_ = false;
};

}  // namespace tessel
