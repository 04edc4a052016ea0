// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/OptionButtons.h"

#include <QRadioButton>

#include <algorithm>

namespace tessel {

namespace {

// Buttons of one parent exclude each other. The library does this only once one of them has had the focus,
// and arrow keys only choose when they start from the chosen one.
void followChoice(const QRadioButton& one) {
    const auto group = one.parentWidget()->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly);
    const bool isChosen =
        std::any_of(group.begin(), group.end(), [](auto* button) { return button->isChecked(); });
    for (QRadioButton* const button : group)
        button->setFocusPolicy(button->isChecked() || !isChosen ? Qt::StrongFocus : Qt::ClickFocus);
}

}  // namespace

void tabToChosenOptions(QWidget& window) {
    for (QRadioButton* const button : window.findChildren<QRadioButton*>()) {
        followChoice(*button);
        QObject::connect(button, &QRadioButton::toggled, button, [button] { followChoice(*button); });
    }
}

}  // namespace tessel
