// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
#include <string>

class QWidget;

namespace tessel {

class ExpectedBoxes;
class frmMain;

// The acts of a typical run, each through the real windows.

/// What a user types into the windows of the Trimble/EM-38 import.
struct TrimbleEntries {
    QString file;
    QString minDistance;
    QString siteNumber[2];  ///< first and last column; both empty when the file has none
    QString x[2], y[2], em1[2];
    QString em2[2];  ///< both empty when the file has one reading
};

/// A sensor file's lines, CR LF at their ends: X in columns 1 to 7, Y in 9 to 15, EM1 in 17 to 24; and then
/// lines without a number.
std::string sensorLines(int sites, int rejected = 0);
/// What a user types for such a file.
TrimbleEntries sensorEntries(const std::string& path);

/// Called with each window when it has been filled in, before it is accepted.
using BeforeAccepting = std::function<void(QWidget& window)>;

/// The report of the Trimble/EM-38 import is to come.
void expectTrimbleReport(ExpectedBoxes& boxes, int valid, int rejected);

/// Runs the import up to its report; the caller expects the message boxes.
void importTrimbleFile(frmMain& main, const TrimbleEntries& entries, const BeforeAccepting& look = {});

/// Exports the survey to `file`, with the row numbers beginning at `firstRow`.
void exportTransectFile(frmMain& main, const QString& file, const QString& firstRow = QStringLiteral("1"),
                        const BeforeAccepting& look = {});

}  // namespace tessel
