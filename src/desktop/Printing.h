// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class QPainter;
class QPrinter;
class QWidget;

namespace tessel {

/// What is drawn on the one page of a print job. The painter works in device units: 300 x PrintScale of them
/// make an inch, so that a size multiplied by PrintScale is the same on paper at every resolution.
using PageDrawing = std::function<void(QPainter& painter, const QPrinter& printer)>;

/// Prints one page on the default printer. Where no printer is installed, asks for a PDF file instead;
/// nothing is printed when that is cancelled (false). Throws RunTimeError when the print job or the file
/// fails.
bool printPage(QWidget* parent, const QString& documentName, const PageDrawing& draw);

/// Device units of one twip (1/1440 inch) on the printer.
double unitsPerTwip(const QPrinter& printer);

/// Takes the place of "is there a default printer", for tests: an empty name means none.
void setDefaultPrinterName(std::function<QString()> name);

}  // namespace tessel
