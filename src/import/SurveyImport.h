// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/import_result.h"
#include "import/table_reader.h"
#include "import/trimble_reader.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace tessel {

class frmGeneric;
class frmTable;
struct GenericOptions;

/// All imports: the windows that ask what to read and how, then one way for every reader: a new survey is
/// read, what came of it is reported, and it takes the place of the one in memory. When a window is cancelled
/// or reading fails, the survey in memory keeps its sites, distances and rows.
///
/// What the windows of the Trimble/EM-38 import ask for travels from one to the next. The parameters of the
/// first (cut-off, minimum distance, conversions) are in the survey in memory from its accept button on,
/// refused and cancelled ones too; of the measure of distance and the layout nothing is, before the last
/// window has been accepted.
class SurveyImport : public QObject {
    Q_OBJECT

  public:
    /// `parent` is the window above all those of the imports; `layers` reads files with layers of points.
    explicit SurveyImport(QWidget& parent, const LayerReader* layers = nullptr);

    void mnuOpen_Click();
    void mnuOpen2_Click();
    void mnuImportTable_Click();
    /// Begins the import that fits a file, with its name filled in. Throws RunTimeError when it cannot be
    /// read.
    void importFile(const QString& path);
    /// The same for a file with layers of points, whose columns the user chooses.
    void importLayer(const QString& path);
    /// Asks for the file unless the options name it, and goes on with where its fields stand.
    void OpenSensorFile(TrimbleOptions options);
    /// Imports a fixed-column file. Throws RunTimeError when reading fails.
    void Import(const TrimbleOptions& options);
    /// Imports what the window is asked to import, and closes it when that has succeeded.
    void serve(frmGeneric& window);
    void serve(frmTable& window);

  Q_SIGNALS:
    /// The survey in memory is another one. What its rows are worth has not been told yet.
    void imported(const ImportSummary& summary, ImportedRows rows);
    /// After imported(): there are more rows than the system holds, and the user has been told.
    void tooManyRows();

  private:
    struct Reader {
        std::function<ImportResult()> read;
        std::string (*report)(std::int64_t valid, std::int64_t rejected);
        QString title;
    };

    void askForControl(const QString& path);
    frmGeneric& openGeneric();
    frmTable& openTable();
    void GetInputData(frmGeneric& window, GenericOptions options, bool& succeeded);
    ImportedRows run(QWidget& window, const Reader& reader);
    void putInPlace(ImportResult& result);

    QWidget& parent_;
    const LayerReader* layers_;
    KnownTables tables_;                        // what was chosen for tables
    std::optional<TrimbleOptions> lastLayout_;  // where the fields were in the file accepted last
};

}  // namespace tessel
