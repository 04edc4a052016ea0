// SPDX-License-Identifier: GPL-3.0-or-later
#include "journeys/random/Reached.h"

namespace tessel {

namespace {

// The window's own controls; dialogs are children of the main window too.
bool belongsTo(const QWidget& window, const QWidget& control) {
    return control.window() == &window;
}
bool belongsTo(const QWidget& window, const QAction& item) {
    return item.parent() == &window && item.menu() == nullptr;
}

bool canBeUsed(const QLineEdit& box) {
    return !box.isReadOnly();
}
template <typename Control>
bool canBeUsed(const Control&) {
    return true;
}

}  // namespace

Reached::Reached(const std::set<std::string>& others) : others_(others) {
    qApp->installEventFilter(this);
}

bool Reached::eventFilter(QObject* watched, QEvent* event) {
    auto* const widget = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::Show || widget == nullptr || !widget->isWindow()) return false;
    if (widget->objectName().startsWith(QLatin1String("frm")) && !widget->property("watched").isValid()) {
        widget->setProperty("watched", true);
        watch(*widget);
    }
    return false;
}

void Reached::watch(QWidget& window) {
    watchAll<QAction>(window, &QAction::triggered);
    watchAll<QAbstractButton>(window, &QAbstractButton::clicked);
    watchAll<QLineEdit>(window, &QLineEdit::textEdited);
    watchAll<QComboBox>(window, &QComboBox::activated);
}

template <typename Control, typename Signal>
void Reached::watchAll(QWidget& window, Signal signal) {
    for (Control* const control : window.findChildren<Control*>()) {
        const std::string name = control->objectName().toStdString();
        if (name.empty() || name.starts_with("qt_") || others_.contains(name) ||
            !belongsTo(window, *control) || !canBeUsed(*control))
            continue;
        const std::string path = window.objectName().toStdString() + "." + name;
        want(path);
        connect(control, signal, this, [this, path] { note(path); });
    }
}

std::vector<std::string> Reached::missing() const {
    std::vector<std::string> missing;
    std::set_difference(wanted_.begin(), wanted_.end(), used_.begin(), used_.end(),
                        std::back_inserter(missing));
    return missing;
}

}  // namespace tessel
