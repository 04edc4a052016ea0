// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Guarded.h"
#include "drawing/Pixels.h"
#include "plots/RowPlotEditor.h"

#include <QKeyEvent>

namespace tessel {

// The keyboard's way through the editor. Its keys are taken before the main window's shortcuts see them.

bool RowPlotEditor::eventFilter(QObject* watched, QEvent* event) {
    const bool asked = event->type() == QEvent::ShortcutOverride;
    if (isHidden() || (!asked && event->type() != QEvent::KeyPress)) return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
    auto action = editorKey(key->key(), modifiers);
    if (!action && modifiers == Qt::NoModifier && (watched == Chart2D3 || watched == Chart2D4))
        action = chartKey(key->key());
    if (!action && modifiers == Qt::NoModifier && watched == Command4) action = finishKey(key->key());
    if (!action) return false;
    event->accept();
    if (!asked) runGuarded(this, action);
    return true;
}

// A button that is disabled does nothing, whichever way it is pressed.
std::function<void()> RowPlotEditor::editorKey(int key, Qt::KeyboardModifiers modifiers) {
    const auto press = [](QPushButton* button) { return [button] { button->click(); }; };
    if (modifiers == Qt::ControlModifier && key == Qt::Key_P) return press(Command6);
    if (modifiers == Qt::ControlModifier && key == Qt::Key_Z) return [this] { Q_EMIT undoWanted(); };
    if (modifiers == Qt::ControlModifier && key == Qt::Key_Y) return [this] { Q_EMIT redoWanted(); };
    if (modifiers == (Qt::ControlModifier | Qt::ShiftModifier) && key == Qt::Key_Z)
        return [this] { Q_EMIT redoWanted(); };
    if (modifiers != Qt::NoModifier) return {};
    if (key == Qt::Key_PageUp) return press(Command1);
    if (key == Qt::Key_PageDown) return press(Command2);
    if (key == Qt::Key_F1) return press(cmdHelp);
    return {};
}

std::function<void()> RowPlotEditor::chartKey(int key) {
    switch (key) {
        case Qt::Key_Right:
        case Qt::Key_Up:
            return [this] { moveCursor(1); };
        case Qt::Key_Left:
        case Qt::Key_Down:
            return [this] { moveCursor(-1); };
        case Qt::Key_Space:
            return [this] { toggleAtCursor(); };
        case Qt::Key_Delete:
            return [this] { Command5->click(); };
        default:
            return {};
    }
}

// The space bar selects, and never ends the work by mistake: "Finished" has Enter.
std::function<void()> RowPlotEditor::finishKey(int key) {
    if (key == Qt::Key_Return || key == Qt::Key_Enter) return [this] { Command4->click(); };
    if (key != Qt::Key_Space) return {};
    return [this] {
        Chart2D3->setFocus();
        toggleAtCursor();
    };
}

void RowPlotEditor::moveCursor(int step) {
    cursor_ = pointBeside(cursor_, step, along());
    if (cursor_ > 0) showCursor();
}

void RowPlotEditor::toggleAtCursor() {
    if (cursor_ > 0) toggle(cursor_);
}

void RowPlotEditor::hideCursor() {
    cursorShown_ = false;
    Chart2D3->hideCross();
    Chart2D4->hideCross();
}

void RowPlotEditor::showCursor() {
    cursorShown_ = true;
    for (Chart2D* const chart : {Chart2D3, Chart2D4}) {
        const Chart2D::Point at = chart->point(Chart2D::kData, 1, cursor_);
        const QPoint pixel = nearestPixel(chart->dataToPixel(at.x, at.y));
        if (!chart->pixelToData(pixel).inPlotArea) chart->resetView();
        chart->showCross(at.x, at.y);
        chart->setFooterText(readoutOf(chart, cursor_));
    }
}

}  // namespace tessel
