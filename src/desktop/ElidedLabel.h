// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

namespace tessel {

/// One line of plain text that is shortened where it has not the room that it would like; its tool tip then
/// is the whole.
class ElidedLabel : public QLabel {
  public:
    ElidedLabel(const QString& text, Qt::TextElideMode mode, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void shorten();
    QSize sizeOf(const QString& text) const;

    const QString whole_;
    const Qt::TextElideMode mode_;
};

}  // namespace tessel
