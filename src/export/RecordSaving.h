// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/processing_record.h"

#include <QString>

#include <functional>
#include <string>

class QWidget;

namespace tessel {

/// Asks for a file and writes the processing record into it; gives its path, or nothing when the user has
/// cancelled. `proposed` is the path that is offered. Throws RunTimeError when it cannot be written; a file
/// of that name stays as it was then.
std::string saveRecord(QWidget* parent, const QString& proposed,
                       const std::function<ProcessingRecord()>& record);

}  // namespace tessel
