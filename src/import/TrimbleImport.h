// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/trimble_reader.h"

#include <QObject>

#include <optional>

namespace tessel {

class frmMain;

/// The Trimble/EM-38 import from the menu item to the report: control parameters, the file, where its fields
/// stand, then reading. What the windows ask for travels from one to the next; whichever is cancelled, the
/// survey in memory keeps its sites, distances and rows. The parameters of the first window (cut-off, minimum
/// distance, conversions) are in it from that window's accept button on, refused and cancelled ones too; of
/// the measure of distance and the layout nothing is, before the last window has been accepted.
class TrimbleImport : public QObject {
    Q_OBJECT

  public:
    explicit TrimbleImport(frmMain& main);

    void mnuOpen_Click();
    /// Asks for the file and goes on with where its fields stand.
    void OpenSensorFile(TrimbleOptions options);
    /// Reads the file, reports, puts the survey in place and enables the menus. Throws RunTimeError, with
    /// sites, distances and rows as they were, when reading fails.
    void Import(const TrimbleOptions& options);

  Q_SIGNALS:
    /// The survey in memory is another one; its rows, if it has sites, have been looked for.
    void imported(const ImportSummary& summary);
    /// After imported(): more rows were found than the system holds, and the user has been told.
    void tooManyRows();

  private:
    void report(const TrimbleImportResult& result);

    frmMain& main_;
    std::optional<TrimbleOptions> lastLayout_;  // where the fields were in the file accepted last
};

}  // namespace tessel
