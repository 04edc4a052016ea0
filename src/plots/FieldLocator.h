// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <QImage>
#include <QWidget>

#include <optional>
#include <vector>

namespace tessel {

/// A small map of the whole survey in grey, north at the top, that shows where one of its rows lies and which
/// of its sites are selected. It shows nothing where it has hardly any room.
class FieldLocator : public QWidget {
    Q_OBJECT

  public:
    explicit FieldLocator(QWidget* parent = nullptr);

    /// The sites have changed. All of them are drawn by the next paint event, and then kept as a picture.
    void followSurvey();
    /// Shows these sites, which are a row, in a colour of the 16-colour palette; nothing is selected then.
    /// Requires sites of the survey as it is.
    void showRow(const IndexRange& sites, int colour);
    /// Rings around these sites of the survey.
    void showSelected(std::vector<SiteIndex> sites);

    QSize sizeHint() const override;

  Q_SIGNALS:
    /// A site of this row has been clicked, as the survey counts its rows.
    void rowClicked(int row);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool hasRoom() const;
    QRectF paper() const;
    PixelMap fieldMap(double scale);
    void drawField();
    void drawRow();
    void stamp(const IndexRange& sites, double pixels, std::uint32_t colour);

    std::optional<Rectangle> extent_;  ///< of all sites; none: to be found
    QImage field_;                     ///< all sites; null: to be drawn
    QImage picture_;                   ///< with the row; null: to be drawn
    IndexRange row_;
    int colour_ = 0;
    std::vector<SiteIndex> selected_;
};

}  // namespace tessel
