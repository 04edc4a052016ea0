// SPDX-License-Identifier: GPL-3.0-or-later
// What the monkey does. Events are only put into the queue here: what they lead to happens behind.
#include "journeys/monkey/EventMonkey.h"

#include <qpa/qplatformdrag.h>
#include <qpa/qwindowsysteminterface.h>

namespace tessel {

namespace {

using Desktop = QWindowSystemInterface;

constexpr std::array kKeys = {
    Qt::Key_Return, Qt::Key_Return, Qt::Key_Enter,     Qt::Key_Escape, Qt::Key_Escape, Qt::Key_Space,
    Qt::Key_Tab,    Qt::Key_Tab,    Qt::Key_Backtab,   Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Left,
    Qt::Key_Right,  Qt::Key_Home,   Qt::Key_End,       Qt::Key_PageUp, Qt::Key_Menu,   Qt::Key_PageDown,
    Qt::Key_Delete, Qt::Key_Insert, Qt::Key_Backspace, Qt::Key_F1,     Qt::Key_F2,     Qt::Key_F10};

struct Shortcut {
    int key;
    Qt::KeyboardModifiers modifiers;
};
const std::array kShortcuts = {
    Shortcut{Qt::Key_O, Qt::ControlModifier},   Shortcut{Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier},
    Shortcut{Qt::Key_S, Qt::ControlModifier},   Shortcut{Qt::Key_P, Qt::ControlModifier},
    Shortcut{Qt::Key_C, Qt::ControlModifier},   Shortcut{Qt::Key_V, Qt::ControlModifier},
    Shortcut{Qt::Key_A, Qt::ControlModifier},   Shortcut{Qt::Key_Z, Qt::ControlModifier},
    Shortcut{Qt::Key_F, Qt::ControlModifier},   Shortcut{Qt::Key_W, Qt::ControlModifier},
    Shortcut{Qt::Key_Tab, Qt::ControlModifier}, Shortcut{Qt::Key_Left, Qt::ShiftModifier},
    Shortcut{Qt::Key_0, Qt::ControlModifier},   Shortcut{Qt::Key_Plus, Qt::ControlModifier}};

// The letters behind the marks of all texts of a window, or of the menu.
QString mnemonicsOf(const QWidget& window) {
    QString letters;
    const auto add = [&letters](const QString& text) {
        const qsizetype mark = text.indexOf(u'&');
        if (mark >= 0 && mark + 1 < text.size()) letters += text[mark + 1].toUpper();
    };
    for (const QAction* action : window.actions())
        add(action->text());
    for (const QWidget* child : window.findChildren<QWidget*>()) {
        if (!child->isVisible() || child->window() != &window) continue;
        add(child->property("text").toString());
        add(child->property("title").toString());
        for (const QAction* action : child->actions())
            if (qobject_cast<const QMenuBar*>(child)) add(action->text());
    }
    return letters;
}

}  // namespace

const std::vector<EventMonkey::Choice>& EventMonkey::choices() {
    using M = EventMonkey;
    static const std::vector<Choice> all = {{190, "mnemonic", &M::mnemonic},
                                            {190, "key", &M::key},
                                            {20, "shortcut", &M::shortcut},
                                            {150, "type", &M::type},
                                            {250, "click", &M::click},
                                            {30, "button", &M::pressOrRelease},
                                            {20, "context menu", &M::contextMenu},
                                            {50, "drag", &M::drag},
                                            {40, "wheel", &M::wheel},
                                            {10, "resize", &M::resize},
                                            {15, "drop", &M::drop},
                                            {12, "close", &M::close},
                                            {12, "focus", &M::focus},
                                            {3, "minimise", &M::minimise},
                                            {8, "leave", &M::leave}};
    return all;
}

void EventMonkey::sendKey(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    Desktop::handleKeyEvent(window_, QEvent::KeyPress, key, modifiers, text);
    Desktop::handleKeyEvent(window_, QEvent::KeyRelease, key, modifiers, text);
    sent_ += 2;
}

void EventMonkey::sendMouse(QEvent::Type type, Qt::MouseButton button, QPoint place) {
    if (type == QEvent::MouseButtonPress) buttons_ |= button;
    if (type == QEvent::MouseButtonRelease) buttons_ &= ~Qt::MouseButtons(button);
    Desktop::handleMouseEvent(window_, place, global(place), buttons_, button, type);
    ++sent_;
}

void EventMonkey::mnemonic() {
    const QWidget* const widget = widgetOf(window_);
    const QString letters = widget ? mnemonicsOf(*widget) : QString();
    if (letters.isEmpty()) return key();
    const QChar letter = letters[below(static_cast<int>(letters.size()))];
    note("mnemonic", letter);
    const bool inMenu = widget->inherits("QMenu");
    sendKey(letter.unicode(), inMenu ? Qt::NoModifier : Qt::AltModifier, letter.toLower());
}

void EventMonkey::key() {
    const Qt::Key key = kKeys[static_cast<std::size_t>(below(static_cast<int>(kKeys.size())))];
    note("key", QKeySequence(key).toString());
    const bool enters = key == Qt::Key_Return || key == Qt::Key_Enter;
    sendKey(key, oneIn(12) ? Qt::ShiftModifier : Qt::NoModifier,
            enters                 ? u"\r"_s
            : key == Qt::Key_Space ? u" "_s
                                   : QString());
}

void EventMonkey::shortcut() {
    const Shortcut& chosen = kShortcuts[static_cast<std::size_t>(below(static_cast<int>(kShortcuts.size())))];
    note("shortcut", QKeySequence(static_cast<int>(chosen.modifiers) | chosen.key).toString());
    sendKey(chosen.key, chosen.modifiers);
}

// No path: what is typed into a file dialog stays in its folder.
void EventMonkey::type() {
    const bool inFileDialog = qobject_cast<QFileDialog*>(widgetOf(window_)) != nullptr;
    const QString letters = inFileDialog ? u"abodtx0123456789"_s : u"000112233445566789.-,eE abcxyz"_s;
    const QChar letter = letters[below(static_cast<int>(letters.size()))];
    note("type", letter);
    sendKey(letter.toUpper().unicode(), Qt::NoModifier, letter);
}

void EventMonkey::click() {
    const QPoint place = choosePlace();
    const Qt::MouseButton button = oneIn(12) ? Qt::RightButton : Qt::LeftButton;
    note(button == Qt::LeftButton ? "click" : "right click", u"%1,%2"_s.arg(place.x()).arg(place.y()));
    const int times = oneIn(10) ? 2 : 1;
    for (int i = 0; i < times; ++i) {
        sendMouse(QEvent::MouseButtonPress, button, place);
        sendMouse(QEvent::MouseButtonRelease, button, place);
    }
}

void EventMonkey::pressOrRelease() {
    const bool press = !(buttons_ & Qt::LeftButton);
    sendMouse(press ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, Qt::LeftButton, choosePlace());
}

void EventMonkey::contextMenu() {
    const QPoint place = choosePlace();
    QWindowSystemInterface::handleContextMenuEvent(window_, oneIn(2), place, global(place), Qt::NoModifier);
    ++sent_;
}

void EventMonkey::drag() {
    sendMouse(QEvent::MouseButtonPress, Qt::LeftButton, choosePlace());
    for (int i = below(5); i >= 0; --i)
        sendMouse(QEvent::MouseMove, Qt::NoButton, choosePlace());
    if (!oneIn(10)) sendMouse(QEvent::MouseButtonRelease, Qt::LeftButton, choosePlace());
}

void EventMonkey::wheel() {
    const QPoint place = choosePlace();
    const auto modifiers = oneIn(3) ? Qt::ControlModifier : Qt::NoModifier;
    Desktop::handleWheelEvent(window_, place, global(place), {}, {0, oneIn(2) ? 120 : -120}, modifiers);
    ++sent_;
}

void EventMonkey::resize() {
    const QPoint corner(below(600), below(400));
    Desktop::handleGeometryChange(window_, QRect(corner, QSize(1 + below(1400), 1 + below(1000))));
    ++sent_;
}

// Later, because a drop is delivered at once and may open a box that the next act has to meet.
void EventMonkey::drop() {
    const QString name = u"odd%1.txt"_s.arg(below(12));
    note("drop", name);
    dropped_.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder_ / name.toStdString()))});
    const auto deliver = [this, window = window_, place = choosePlace()] {
        if (!window) return;
        Desktop::handleDrag(window, &dropped_, place, Qt::CopyAction, Qt::LeftButton, {});
        if (window) Desktop::handleDrop(window, &dropped_, place, Qt::CopyAction, Qt::LeftButton, {});
    };
    QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
    sent_ += 2;
}

void EventMonkey::close() {
    Desktop::handleCloseEvent(window_);
    ++sent_;
}

void EventMonkey::focus() {
    Desktop::handleWindowActivated(oneIn(6) ? nullptr : window_.data(), Qt::ActiveWindowFocusReason);
    ++sent_;
}

void EventMonkey::minimise() {
    Desktop::handleWindowStateChanged(window_, oneIn(3) ? Qt::WindowMinimized : Qt::WindowNoState);
    ++sent_;
}

void EventMonkey::leave() {
    if (oneIn(2))
        Desktop::handleLeaveEvent(window_);
    else
        Desktop::handleEnterEvent(window_, choosePlace(), global(choosePlace()));
    ++sent_;
}

}  // namespace tessel
