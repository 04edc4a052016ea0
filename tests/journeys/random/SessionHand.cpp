// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

std::string nameOf(const QWidget& widget, const QKeySequence& keys) {
    std::string name = widget.window()->objectName().toStdString();
    if (!widget.isWindow()) name += "." + widget.objectName().toStdString();
    return name + " " + keys.toString().toStdString();
}

void sendMouse(QWidget& widget, QEvent::Type type, const QPoint& pixel, Qt::MouseButton button,
               Qt::MouseButtons buttons, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QMouseEvent event(type, pixel, widget.mapToGlobal(QPointF(pixel)), button, buttons, held);
    QApplication::sendEvent(&widget, &event);
}

}  // namespace

void RandomSession::drag(QWidget& widget, const QPoint& from, const QPoint& to, Qt::MouseButton button,
                         Qt::KeyboardModifiers held) {
    sendMouse(widget, QEvent::MouseButtonPress, from, button, button, held);
    sendMouse(widget, QEvent::MouseMove, to, Qt::NoButton, button, held);
    sendMouse(widget, QEvent::MouseButtonRelease, to, button, Qt::NoButton, held);
    // A drag that is hardly one asks for the menu.
    while (QWidget* const menu = QApplication::activePopupWidget())
        menu->close();
}

void RandomSession::bringToFront(QWidget& window) {
    window.activateWindow();
    // A dialog counts as active for Qt's own wait while its parent is.
    if (!QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; }))
        throw DriverError("window does not come to the front: " + window.objectName().toStdString());
}

void RandomSession::pressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers) {
    reached_.note(nameOf(widget, QKeySequence(modifiers | static_cast<Qt::Key>(key))));
    bringToFront(*widget.window());
    if (!widget.isWindow()) widget.setFocus();
    QWidget* const focus = widget.isWindow() ? widget.focusWidget() : nullptr;
    QTest::keyClick(focus != nullptr ? focus : &widget, static_cast<Qt::Key>(key), modifiers);
}

void RandomSession::use(QWidget& window, const QString& name) {
    window.findChild<QAction*>(name) != nullptr ? chooseItem(window, name) : clickOn(window, name);
}

void RandomSession::useOrPress(QWidget& window, const QString& name, int key,
                               Qt::KeyboardModifiers modifiers) {
    chance(50) ? use(window, name) : pressKey(window, key, modifiers);
}

// Keys have no names in the windows: what they are is written here.
void RandomSession::wantKeys() {
    for (const char* const key :
         {"Ctrl+I", "Ctrl+Shift+O", "Ctrl+E", "Ctrl+O", "Ctrl+S", "Ctrl+Q", "Ctrl+P", "PgUp", "PgDown"})
        reached_.want(std::string("frmMain ") + key);
    for (const char* const chart : {"Chart2D3", "Chart2D4"})
        for (const char* const key : {"Left", "Right", "Up", "Down", "Space", "Del", "Home", "+", "-",
                                      "Ctrl+Left", "Ctrl+Right", "Ctrl+Up", "Ctrl+Down"})
            reached_.want(std::string("frmMain.") + chart + " " + key);
    for (const char* const key : {"Text1 Return", "Command4 Return", "Command4 Space"})
        reached_.want(std::string("frmMain.") + key);
    for (const char* const key :
         {"Left", "Right", "Up", "Down", "Shift+Left", "Shift+Right", "Shift+Up", "Shift+Down", "Return", "+",
          "-", "Ctrl+Left", "Ctrl+Right", "Ctrl+Up", "Ctrl+Down"})
        reached_.want(std::string("frmClip.picMapZoom ") + key);
    for (const char* const window :
         {"frmDataControl", "frmIniDisplay", "frmGeneric", "frmOutput", "frmDataEdit", "frmStat", "frmClip",
          "frmAdjustData", "frmTurns", "frmSuspects", "frmHistForm", "frmSigCorrStruct"})
        reached_.want(std::string(window) + " Esc");
    for (const char* const key : {"frmHistForm Ctrl+P", "frmSigCorrStruct Ctrl+P"})
        reached_.want(key);
}

void RandomSession::wantSituations() {
    for (const char* const situation : {"a survey reopened",
                                        "too many rows from an import",
                                        "too many rows from a recalculation",
                                        "too many rows for a view",
                                        "a view of more rows than there may be",
                                        "a vast survey in an import",
                                        "a vast survey in a recalculation",
                                        "a vast survey in a view",
                                        "no sites left",
                                        "a row emptied",
                                        "row information lost",
                                        "a rectangle dragged",
                                        "a deletion on the map taken back",
                                        "a deletion on the map done again",
                                        "a point picked on a closer look",
                                        "a printer that fails",
                                        "a page that cannot be written",
                                        "a page printed",
                                        "an export that fails",
                                        "a row plot that followed",
                                        "a row dialog that has stayed open",
                                        "a distance dragged",
                                        "a dragged distance accepted",
                                        "a grid with rows not in force"})
        reached_.want(situation);
}

}  // namespace tessel
