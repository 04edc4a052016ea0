// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/MessageBox.h"

#include "desktop/FileNames.h"
#include "desktop/MessageKind.h"
#include "desktop/OpenBox.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace tessel {

namespace {

MessageResponder& currentResponder() {
    static MessageResponder responder;
    return responder;
}

int beeps = 0;

// Messages have lines of their own, which the box would break anew at half their length. Only those that the
// screen has no room for are broken, at blanks; and a box of few words leaves room for its title.
void keepLines(QMessageBox& box) {
    auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (label == nullptr) return;
    const QFontMetrics metrics = label->fontMetrics();
    const int title = metrics.horizontalAdvance(box.windowTitle()) * 3 / 2;
    const int wanted = std::max(title, metrics.size(0, box.text()).width());
    label->setMinimumWidth(std::min(wanted, box.screen()->availableSize().width() * 2 / 3));
}

QMessageBox::Icon iconOf(const MessageBox& message) {
    switch (messageKind(message.text, message.question)) {
        case MessageKind::kQuestion:
            return QMessageBox::Question;
        case MessageKind::kWarning:
            return QMessageBox::Warning;
        case MessageKind::kError:
            return QMessageBox::Critical;
        case MessageKind::kInformation:
            break;
    }
    return QMessageBox::Information;
}

// On the heap, because its parent owns it.
QMessageBox* makeBox(QWidget* parent, const MessageBox& message) {
    auto* const made =
        new QMessageBox(iconOf(message), message.title, message.text, QMessageBox::NoButton, parent);
    QMessageBox& box = *made;
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
    keepLines(box);
    return made;
}

// A question that ends without an answer, because the program does, is answered with No.
bool showOnScreen(QWidget* parent, const MessageBox& message) {
    const OpenBox open(parent);
    const QPointer<QMessageBox> box = makeBox(parent, message);
    const int answer = box->exec();
    delete box;
    return !message.question || answer == QMessageBox::Yes;
}

bool respond(QWidget* parent, const MessageBox& message) {
    return currentResponder() ? currentResponder()(message) : showOnScreen(parent, message);
}

}  // namespace

void tell(QWidget* parent, const QString& text, const QString& title) {
    respond(parent, {title, legible(text), false});
}

bool ask(QWidget* parent, const QString& text, const QString& title) {
    return respond(parent, {title, legible(text), true});
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

}  // namespace tessel
