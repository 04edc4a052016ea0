// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <string>

class QWidget;

namespace tessel {

/// What both file dialogs of the imports offer.
inline const QString kAllFiles = QStringLiteral("All Files (*.*)|*");

/// Says that an import went on without an error log, if it did: `problem` is path and reason, or empty.
void tellLogProblem(QWidget* parent, const std::string& problem);

}  // namespace tessel
