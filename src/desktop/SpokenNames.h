// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QLineEdit;

namespace tessel {

/// From now on a screen reader says of a plain label that has an accessible name both: "EM1 mean: 31.25". By
/// itself Qt says the name in the place of the text, and nobody hears the value. To be called before there is
/// any label.
void speakLabelledValues();

/// Gives the button by which a box is cleared, which is Qt's own and has no name, one for a screen reader.
void nameClearButton(const QLineEdit& box);

}  // namespace tessel
