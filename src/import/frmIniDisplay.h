// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/trimble_reader.h"
#include "ui_frmIniDisplay.h"

#include <QDialog>

#include <array>
#include <optional>

namespace tessel {

/// The last window of the Trimble/EM-38 import: shows the file's first lines below a column ruler and asks
/// where each field stands in a line. What kind of file it is stands below the lines when that matters. While
/// the cursor is in a box, dragging over characters of the lines fills both boxes of its field.
class frmIniDisplay : public QDialog, public Ui::frmIniDisplay {
    Q_OBJECT

  public:
    /// `options` hold what the import knows so far, the file's path among it; `last` where the fields were in
    /// the file before, if there was one. Throws RunTimeError when the file cannot be read.
    frmIniDisplay(QWidget* parent, const TrimbleOptions& options,
                  const std::optional<TrimbleOptions>& last = std::nullopt);

  Q_SIGNALS:
    /// The window was accepted and is closing; the options are complete.
    void formatChosen(const TrimbleOptions& options);

  private:
    // A field and where its positions are asked for.
    struct Row {
        QLineEdit* start;
        QLineEdit* end;
        QCheckBox* use;  // null for a field that every file has
        FieldColumns TrimbleOptions::*field;
        bool TrimbleOptions::*inUse = nullptr;  // where there is a choice

        bool isInUse(const TrimbleOptions& options) const { return use == nullptr || options.*inUse; }
    };

    TrimbleOptions entries() const;
    void showLayout(const TrimbleOptions& options);

    void showFirstLines();
    void showKind();
    void watchPositions();
    void Check_Click(const Row& row);
    void Position_Change(QLineEdit& box);
    void Command1_Click();
    void picPreview_Select();
    void shadeFields();

    TrimbleOptions options_;
    std::optional<TrimbleOptions> last_;
    std::array<Row, 5> rows_;
};

}  // namespace tessel
