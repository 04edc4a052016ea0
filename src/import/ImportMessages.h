#pragma once

#include <QString>

#include <string>

class QWidget;

/// What both file dialogs of the imports offer.
inline const QString kAllFiles = QStringLiteral("All Files (*.*)|*");

/// Says that an import went on without an error log, if it did: `problem` is path and reason, or empty.
void tellLogProblem(QWidget* parent, const std::string& problem);
