// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace tessel {

// The one way in which the program shows a message, and the one seam at which a test answers it.

inline constexpr const char16_t* kProgramTitle = u"VARN-Tessel";

/// A modal box as its reader sees it.
struct MessageBox {
    QString title;
    QString text;
    bool question = false;  ///< Yes and No instead of OK
};

/// Shows a box with an OK button and returns when it has been closed. Lines are separated by line feeds.
void tell(QWidget* parent, const QString& text, const QString& title = QString::fromUtf16(kProgramTitle));

/// Asks with Yes and No; true only for Yes. Escape and the title bar's close button mean No.
bool ask(QWidget* parent, const QString& text, const QString& title = QString::fromUtf16(kProgramTitle));

/// Sounds the system's beep.
void beep();

/// Takes the place of the box on the screen: gives true for Yes or OK. An empty one puts the real box back.
using MessageResponder = std::function<bool(const MessageBox&)>;
void setMessageResponder(MessageResponder responder);

/// How often beep() has been called since the program began.
int beepCount();

}  // namespace tessel
