// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The same for tests of windows.
#include "support/compute_tests.h"

#include <QtPrintSupport/QtPrintSupport>
#include <QtTest/QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;
