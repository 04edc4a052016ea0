// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

namespace tessel {

/// The program's icon, drawn for every usual size from 16 to 512 pixels.
QIcon programIcon();

}  // namespace tessel
