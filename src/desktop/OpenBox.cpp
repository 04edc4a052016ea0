// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/OpenBox.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QSignalBlocker>
#include <QThread>

#include <algorithm>
#include <utility>

namespace tessel {

namespace {

bool isSameOrOwns(const QWidget* window, const QWidget* owned) {
    while (owned != nullptr && owned != window)
        owned = owned->parentWidget();
    return owned != nullptr;
}

const QWidget* outermostOwner(const QWidget* widget) {
    while (widget->parentWidget() != nullptr)
        widget = widget->parentWidget();
    return widget;
}

// A box blocks every window but those of its own; a modal window those that belong to its owner.
bool blocks(const QWidget* modal, const QWidget* other) {
    if (isSameOrOwns(modal, other)) return false;
    return modal->windowModality() == Qt::ApplicationModal || outermostOwner(modal) == outermostOwner(other);
}

// Stands before every object of the application while a box is open.
class Boxes : public QObject {
  public:
    explicit Boxes(QObject* parent) : QObject(parent) {}

    void opened(QWidget* owner) {
        if (owners_.isEmpty()) qApp->installEventFilter(this);
        owners_ << owner;
    }

    // An owner that is gone since, however that was done, stands in the list as none.
    void closed(QWidget* owner) {
        owners_.removeAt(owners_.lastIndexOf(owner));
        if (owners_.isEmpty()) qApp->removeEventFilter(this);
    }

    bool anyOpen() const { return !owners_.isEmpty(); }

    bool anyOver(const QWidget* window) const {
        return std::any_of(owners_.cbegin(), owners_.cend(),
                           [window](QWidget* owner) { return isSameOrOwns(window, owner); });
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Close) return false;
        const auto* const window = qobject_cast<QWidget*>(watched);
        if (window == nullptr || !anyOver(window)) return false;
        event->ignore();
        return true;
    }

  private:
    QList<QPointer<QWidget>> owners_;
};

// Stands before every object of the application. A click that comes late may find a window over its button
// that is not to see the survey change, or a box that is hidden but not at its end; its timer goes on until
// the click has been made, after the window. It may find its button hidden, because the user has gone on to
// something else, or disabled, by what was typed since; then it is lost.
class LateClicks : public QObject {
  public:
    LateClicks(QObject* parent, const Boxes& boxes) : QObject(parent), boxes_(boxes) {
        qApp->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Timer) return false;
        auto* const button = qobject_cast<QAbstractButton*>(watched);
        if (button == nullptr) return false;
        const QWidget* const modal = QApplication::activeModalWidget();
        if (modal != nullptr && blocks(modal, button)) return true;
        if (boxes_.anyOver(button->window())) return true;
        const bool mayBeClicked = button->isVisible() && button->isEnabled();
        return !mayBeClicked && lose(*button, event);
    }

  private:
    // The button ends its timer, and nobody hears of the click: it stays checked or unchecked, and so do
    // others.
    static bool lose(QAbstractButton& button, QEvent* event) {
        const QSignalBlocker quiet(button);
        const bool checked = button.isChecked();
        const bool exclusive = button.autoExclusive();
        button.setAutoExclusive(false);
        static_cast<QObject&>(button).event(event);
        button.setChecked(checked);
        button.setAutoExclusive(exclusive);
        return true;
    }

    const Boxes& boxes_;
};

// Stands before the windows that outlive boxes.
class Keeper : public QObject {
  public:
    static Keeper& ofTheApplication() {
        static QPointer<Keeper> keeper;
        if (!keeper) keeper = new Keeper;
        return *keeper;
    }

    void boxOpened(QWidget* owner) { boxes_.opened(owner); }

    void boxClosed(QWidget* owner) {
        boxes_.closed(owner);
        QMetaObject::invokeMethod(this, &Keeper::destroyWaiting, Qt::QueuedConnection);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide && !event->spontaneous()) closeMenus(watched);
        return event->type() == QEvent::DeferredDelete && waits(watched);
    }

  private:
    Keeper() : QObject(qApp) {}

    static void closeMenus(QObject* window) {
        QWidget* const menu = QApplication::activePopupWidget();
        if (menu != nullptr && isSameOrOwns(qobject_cast<QWidget*>(window), menu)) menu->close();
    }

    bool isBusy() const { return boxes_.anyOpen() || QThread::currentThread()->loopLevel() > 1; }

    bool waits(QObject* window) {
        if (!isBusy()) return false;
        waiting_ << window;
        // Loops that are not those of our boxes do not tell their end, but then the program's own waits.
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                &Keeper::destroyWaiting, Qt::UniqueConnection);
        return true;
    }

    void destroyWaiting() {
        if (isBusy() || waiting_.isEmpty()) return;
        disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
        for (const QPointer<QObject>& window : std::exchange(waiting_, {}))
            delete window;
    }

    Boxes boxes_{this};
    LateClicks lateClicks_{this, boxes_};
    QList<QPointer<QObject>> waiting_;
};

}  // namespace

OpenBox::OpenBox(QWidget* owner) : owner_(owner) {
    Keeper::ofTheApplication().boxOpened(owner);
}

OpenBox::~OpenBox() {
    Keeper::ofTheApplication().boxClosed(owner_);
}

void outliveBoxes(QWidget& window) {
    window.installEventFilter(&Keeper::ofTheApplication());
}

}  // namespace tessel
