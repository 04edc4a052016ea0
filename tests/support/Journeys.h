// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <functional>
#include <string>

class QWidget;

namespace tessel {

class frmMain;

// The acts of a typical run, each through the real windows.

/// The first and the last column of a field, from 1; both 0 when it is not in the file.
using FieldPositions = std::array<int, 2>;

/// What a user chooses and types in the windows of the Trimble/EM-38 import.
struct TrimbleEntries {
    std::string file;
    QString minDistance;
    FieldPositions siteNumber{}, x{}, y{}, em1{}, em2{};
};

/// A sensor file's lines, CR LF at their ends: X in columns 1 to 7, Y in 9 to 15, EM1 in 17 to 24; and then
/// lines without a number.
std::string sensorLines(int sites, int rejected = 0);
/// What a user types for such a file.
TrimbleEntries sensorEntries(const std::string& path);

/// Called with each window when it has been filled in, before it is accepted.
using BeforeAccepting = std::function<void(QWidget& window)>;

/// Answers every file dialog with one file, as long as it lives.
class ChosenFile {
  public:
    explicit ChosenFile(const std::string& path);
    ~ChosenFile();
    ChosenFile(const ChosenFile&) = delete;
    ChosenFile& operator=(const ChosenFile&) = delete;
};

/// Types positions into a field's two boxes.
void typePositions(QWidget& window, const QString& boxes, const FieldPositions& positions);

/// Runs the import up to its report; the caller expects the message boxes.
void importTrimbleFile(frmMain& main, const TrimbleEntries& entries, const BeforeAccepting& look = {});

/// Exports the survey to the file, with the row numbers beginning at `firstRow`.
void exportTransectFile(frmMain& main, const std::string& path, const QString& firstRow = QStringLiteral("1"),
                        const BeforeAccepting& look = {});

}  // namespace tessel
