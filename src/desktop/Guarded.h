// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/session.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

#include <exception>
#include <utility>

namespace tessel {

/// Shows the description of the exception under way in a box; where memory ran out, also whether the survey
/// has been changed since there were `changesBefore` (session.h). Call it in a catch block only.
void reportRunTimeError(QWidget* parent, std::uint64_t changesBefore);

/// The edge of an event: what `action` throws is reported with its description and the action is abandoned.
template <typename Action>
void runGuarded(QWidget* window, Action&& action) {
    const QPointer<QWidget> where(window);  // the action may destroy the window
    const std::uint64_t changesBefore = surveyChanges();
    try {
        std::forward<Action>(action)();
    } catch (...) {
        reportRunTimeError(where, changesBefore);
    }
}

/// The same as a slot. Wrap every slot that does something in it:
///     connect(cmdCompute, &QPushButton::clicked, this, guarded(this, [this] { cmdCompute_Click(); }));
template <typename Action>
auto guarded(QWidget* window, Action action) {
    return [where = QPointer<QWidget>(window), run = std::move(action)]() mutable {
        runGuarded(where.data(), run);
    };
}

/// The hourglass on a window for as long as the object lives, however it ends.
class Hourglass {
  public:
    explicit Hourglass(QWidget* window) : window_(window) { window->setCursor(Qt::WaitCursor); }
    ~Hourglass() {
        if (window_) window_->unsetCursor();
    }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    QPointer<QWidget> window_;
};

/// The application: an exception that leaves an event handler is reported like those in guarded slots, so
/// that no event can end the program. A file that outgrows the process's limit is an error of writing like a
/// full disk, not its end.
class Application : public QApplication {
    Q_OBJECT

  public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace tessel
