#pragma once

#include <QIcon>

/// The program's icon, drawn for every usual size from 16 to 512 pixels.
QIcon programIcon();
