#include "app/Windows.h"

#include "app/OptionButtons.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace {

// Where a message and the window beneath it close at once, some window managers leave the focus nowhere, and
// the keyboard is dead until a click. A window that has come up since keeps the focus that it is given.
void returnFocus(QWidget* owner) {
    const auto children = owner->findChildren<QWidget*>();
    const bool hasWindow = std::any_of(children.begin(), children.end(), [](const QWidget* child) {
        return child->isWindow() && child->isVisible();
    });
    if (!hasWindow && !QApplication::activeWindow()) owner->activateWindow();
}

}  // namespace

void showModal(QWidget* window) {
    window->setWindowModality(Qt::WindowModal);
    showBeside(window);
}

void showBeside(QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    tabToChosenOptions(*window);
    // Later, when an owner that is being destroyed together with the window is no more.
    if (QWidget* const owner = window->parentWidget())
        QObject::connect(
            window, &QObject::destroyed, owner, [owner] { returnFocus(owner->window()); },
            Qt::QueuedConnection);
    window->show();
    window->raise();
    window->activateWindow();
}
