#include "app/MessageBox.h"

#include <QApplication>
#include <QMessageBox>

#include <utility>

namespace {

MessageResponder& currentResponder() {
    static MessageResponder responder;
    return responder;
}

int beeps = 0;

bool showOnScreen(QWidget* parent, const MessageBox& message) {
    const auto icon = message.question ? QMessageBox::Question : QMessageBox::Information;
    QMessageBox box(icon, message.title, message.text, QMessageBox::NoButton, parent);
    // Plain, because a path or a line of a file may hold what looks like markup.
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setObjectName(QStringLiteral("MessageBox"));
    if (message.question) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
    } else {
        box.setStandardButtons(QMessageBox::Ok);
    }
    return box.exec() != QMessageBox::No;
}

bool respond(QWidget* parent, const MessageBox& message) {
    return currentResponder() ? currentResponder()(message) : showOnScreen(parent, message);
}

}  // namespace

void tell(QWidget* parent, const QString& text, const QString& title) {
    respond(parent, {title, text, false});
}

bool ask(QWidget* parent, const QString& text, const QString& title) {
    return respond(parent, {title, text, true});
}

void beep() {
    ++beeps;
    QApplication::beep();
}

void setMessageResponder(MessageResponder responder) {
    currentResponder() = std::move(responder);
}

int beepCount() {
    return beeps;
}
