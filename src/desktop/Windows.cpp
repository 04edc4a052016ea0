// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Windows.h"

#include "desktop/OpenBox.h"
#include "desktop/OptionButtons.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace tessel {

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

// Room for a frame, whose size is not known before the window has been shown.
constexpr QMargins kFrame(8, 32, 8, 8);

// The place, moved and cut so that it stays on the screen with the frame around it.
QRect keptOnScreen(QRect place, const QRect& wholeScreen, const QMargins& frame = kFrame) {
    const QRect screen = wholeScreen.marginsRemoved(frame);
    place.setSize(place.size().boundedTo(screen.size()));
    place.moveLeft(std::clamp(place.left(), screen.left(), screen.right() - place.width() + 1));
    place.moveTop(std::clamp(place.top(), screen.top(), screen.bottom() - place.height() + 1));
    return place;
}

// The library places dialogs, and a window may have a place of its own; others come up wherever the window
// system likes, even beyond the edge of the screen.
void placeOver(const QWidget& owner, QWidget& window) {
    if (!owner.isVisible() || window.inherits("QDialog")) return;
    const bool hasSize = window.testAttribute(Qt::WA_Resized) || !window.sizeHint().isValid();
    const QSize size = hasSize ? window.size() : window.sizeHint();
    const QRect screen = owner.screen()->availableGeometry();
    if (!window.testAttribute(Qt::WA_Moved))
        return window.setGeometry(placedOver(owner.geometry(), size, screen));
    // The corner of a window that has been moved is that of its frame, which is thin at the sides.
    const QMargins beyond(0, 0, kFrame.right(), kFrame.top() + kFrame.bottom());
    const QRect place = keptOnScreen(QRect(window.pos(), size), screen, beyond);
    window.resize(place.size());
    window.move(place.topLeft());
}

// What a window needs once, however often it is brought up.
void prepare(QWidget& window) {
    window.setAttribute(Qt::WA_DeleteOnClose);
    outliveBoxes(window);
    tabToChosenOptions(window);
    QWidget* const owner = window.parentWidget();
    if (owner == nullptr) return;
    placeOver(*owner->window(), window);
    // Later, when an owner that is being destroyed together with the window is no more.
    QObject::connect(
        &window, &QObject::destroyed, owner, [owner] { returnFocus(owner->window()); }, Qt::QueuedConnection);
}

}  // namespace

void showModal(QWidget* window) {
    window->setWindowModality(Qt::WindowModal);
    // Window systems keep only dialogs above the window that they block; a map is to be enlarged all the
    // same.
    window->setWindowFlags(window->windowFlags() | Qt::Dialog | Qt::WindowMinMaxButtonsHint);
    showBeside(window);
}

void showBeside(QWidget* window) {
    if (!window->testAttribute(Qt::WA_DeleteOnClose)) prepare(*window);
    window->show();
    window->raise();
    window->activateWindow();
}

void takeAway(QWidget* window) {
    if (window == nullptr) return;
    window->hide();
    window->deleteLater();
}

QRect placedOver(const QRect& other, const QSize& size, const QRect& wholeScreen) {
    QRect place(QPoint(), size.boundedTo(wholeScreen.size()));
    place.moveCenter(other.center());
    return keptOnScreen(place, wholeScreen);
}

QRect placedAtRight(const QRect& other, const QSize& size, const QRect& wholeScreen) {
    QRect place(QPoint(), size.boundedTo(wholeScreen.size()));
    place.moveBottomLeft(other.bottomRight() + QPoint(1, 0));
    return keptOnScreen(place, wholeScreen);
}

std::optional<QRect> placedBeside(const QRect& other, const QSize& size, int narrowest,
                                  const QRect& wholeScreen) {
    constexpr int kGap = 12;  // between the two, frames included
    const QRect screen = wholeScreen.marginsRemoved(QMargins(8, 32, 8, 8));
    const int onTheRight = screen.right() - other.right() - kGap;
    const int onTheLeft = other.left() - kGap - screen.left();
    // The right is where one reads on; the left has to offer what the right lacks.
    const bool right = onTheRight >= std::min(size.width(), std::max(onTheLeft, narrowest));
    const int room = right ? onTheRight : onTheLeft;
    if (room < narrowest) return std::nullopt;
    QRect place(QPoint(), QSize(std::min(size.width(), room), std::min(size.height(), screen.height())));
    place.moveLeft(right ? other.right() + 1 + kGap : other.left() - kGap - place.width());
    place.moveTop(std::clamp(other.top(), screen.top(), screen.bottom() - place.height() + 1));
    return place;
}

void resizeOnScreen(QWidget& window, const QSize& wanted) {
    window.resize(wanted.boundedTo(window.screen()->availableSize() * 0.92));
}

void keepRoomWhenHidden(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

}  // namespace tessel
