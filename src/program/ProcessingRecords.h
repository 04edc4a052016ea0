// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "program/record_keeper.h"

#include <QObject>
#include <QString>

namespace tessel {

class frmMain;
class frmOutput;
class frmSaveTable;

/// Remembers imports and exports, and writes the processing record: alone, or beside an export.
class ProcessingRecords : public QObject {
    Q_OBJECT

  public:
    explicit ProcessingRecords(frmMain& main);

    /// The act done last was an import, and this is what it found.
    void noteImport(const ImportSummary& summary);
    /// What the import found from which a survey comes; null where it comes from none.
    const ImportSummary* importOf(const Survey& survey) const { return keeper_.importOf(survey); }
    /// A free name beside the file from which the survey comes (freeNameBeside), to be offered; empty where
    /// it comes from none.
    QString nameBesideSource(const std::string& suffix) const;

    /// Has the window write the record beside the file, and notes what it has written.
    void serve(frmOutput& window);
    /// Notes the table that the window has written, and says so in the main window.
    void serve(frmSaveTable& window);
    void mnuRecord_Click();

    /// All that is known beside the journal, digests too, to be saved with it; and another's in its place.
    const SavedRecords& completeRecords();
    void become(SavedRecords records) { keeper_.become(std::move(records)); }
    const SavedRecords& records() const { return keeper_.records(); }

  Q_SIGNALS:
    /// An import or an export has been noted.
    void noted();

  private:
    void identifyFilesSoon();
    void tellSaved(const QString& what, const std::string& path);

    frmMain& main_;
    RecordKeeper keeper_;
};

}  // namespace tessel
