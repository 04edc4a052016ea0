// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// What a label says each time that a widget (it may be the label itself) is painted.
class TextAtPaint : public QObject {
  public:
    TextAtPaint(QWidget& painted, const QLabel& label) : label_(label) { painted.installEventFilter(this); }
    QStringList texts;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) texts << label_.text();
        return false;
    }

  private:
    const QLabel& label_;
};

}  // namespace tessel
