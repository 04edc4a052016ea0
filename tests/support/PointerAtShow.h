// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"

namespace tessel {

/// Notices which pointer a window has at the moment at which another widget appears: that of an action in the
/// midst of its work.
class PointerAtShow : public QObject {
  public:
    PointerAtShow(QWidget& window, QWidget& appearing) : window_(window) {
        appearing.installEventFilter(this);
    }

    /// Qt::BlankCursor as long as nothing has appeared.
    Qt::CursorShape shape() const { return shape_; }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show) shape_ = window_.cursor().shape();
        return false;
    }

  private:
    QWidget& window_;
    Qt::CursorShape shape_ = Qt::BlankCursor;
};

/// The pointer that a window has while its print command, without a printer, asks for a file; then cancels.
inline Qt::CursorShape pointerWhilePrinting(QWidget& window, QAction& print) {
    Qt::CursorShape shape = Qt::BlankCursor;
    setDefaultPrinterName([] { return QString(); });
    setFileResponder([&](const FileQuestion&) {
        shape = window.cursor().shape();
        return QString();
    });
    print.trigger();
    setFileResponder({});
    setDefaultPrinterName({});
    return shape;
}

}  // namespace tessel
