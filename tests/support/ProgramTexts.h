// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// The texts that the program can show, from its sources in `folder` and below: what stands in the string
/// literals of C++ and in the forms. A text is cut at its line ends, where a value goes into it (%1), and
/// behind the arrow of a reason or the number of a rule; mnemonics and blanks at its ends are taken away.
QSet<QString> programTexts(const QString& folder);

}  // namespace tessel
