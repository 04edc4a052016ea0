// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/UserDriver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QTest>

namespace tessel {

namespace {

constexpr int kPatience = 5000;  // milliseconds

QWidget* findShown(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == name && window->isVisible()) return window;
    return nullptr;
}

// Every menu that an item stands in must be enabled up to the menu bar.
bool canBeChosen(const QWidget& window, const QAction& item) {
    if (!item.isEnabled()) return false;
    for (const QMenu* menu : window.findChildren<QMenu*>())
        if (menu->actions().contains(&item)) return canBeChosen(window, *menu->menuAction());
    return true;
}

}  // namespace

void chooseItem(QWidget& window, const QString& item) {
    auto* const action = window.findChild<QAction*>(item);
    if (action == nullptr) throw DriverError("no such menu item: " + item.toStdString());
    if (!canBeChosen(window, *action)) throw DriverError("disabled menu item: " + item.toStdString());
    action->trigger();
}

QWidget& shownWindow(const QString& name) {
    QWidget* found = nullptr;
    if (!QTest::qWaitFor([&] { return (found = findShown(name)) != nullptr; }, kPatience))
        throw DriverError("window does not show: " + name.toStdString());
    return *found;
}

bool isShown(const QString& name) {
    return findShown(name) != nullptr;
}

void waitUntilClosed(const QString& name) {
    if (!QTest::qWaitFor([&] { return findShown(name) == nullptr; }, kPatience))
        throw DriverError("window does not close: " + name.toStdString());
}

void letWindowsGo() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

QWidget& control(QWidget& window, const QString& name) {
    auto* const found = window.findChild<QWidget*>(name);
    if (found == nullptr || !found->isVisible()) throw DriverError("no such control: " + name.toStdString());
    return *found;
}

void clickOn(QWidget& window, const QString& name) {
    QWidget& widget = control(window, name);
    if (!widget.isEnabled()) throw DriverError("disabled control: " + name.toStdString());
    const bool markAtLeft = qobject_cast<QRadioButton*>(&widget) || qobject_cast<QCheckBox*>(&widget);
    const QPoint where = markAtLeft ? QPoint(8, widget.height() / 2) : widget.rect().center();
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, where);
}

void clickThroughTheDesktop(QWidget& button) {
    QWidget* const window = button.window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      button.mapTo(window, button.rect().center()));
}

void pickItem(QWidget& window, const QString& name, int index) {
    auto& box = controlAs<QComboBox>(window, name);
    if (!box.isEnabled()) throw DriverError("disabled control: " + name.toStdString());
    if (index >= box.count()) throw DriverError("no such item: " + name.toStdString());
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(index, box.modelColumn()));
    QTest::keyClick(box.view(), Qt::Key_Return);
}

void typeInto(QWidget& window, const QString& name, const QString& text) {
    auto& box = controlAs<QLineEdit>(window, name);
    if (!box.isEnabled()) throw DriverError("disabled control: " + name.toStdString());
    box.setFocus();
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClicks(&box, text);
}

}  // namespace tessel
