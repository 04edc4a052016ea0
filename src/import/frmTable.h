// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/table_reader.h"
#include "ui_frmTable.h"

#include <QDialog>
#include <QTimer>

#include <string>

namespace tessel {

class TablePreviewModel;

/// Asks for a table and what its columns hold: a click on a column's head opens a menu with what it can be.
/// The separator, the decimal sign and the header are recognised and can be changed; of a file with layers
/// the user chooses one instead.
class frmTable : public QDialog, public Ui::frmTable {
    Q_OBJECT

  public:
    /// Begins with what was chosen for a table of the same header, and adds to it what is chosen now.
    /// `layers` reads files with layers; without it there are none.
    frmTable(QWidget* parent, KnownTables& known, const LayerReader* layers = nullptr);

  Q_SIGNALS:
    /// The table is to be imported. The window stays until whoever imports it closes it; where the error log
    /// lies is left to them.
    void inputChosen(const TableOptions& options);

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    TableShape shape() const;
    TableShape shapeOfText() const;
    TableOptions entries() const;
    void connectControls();
    void prepareTable();
    void cmdBrowse_Click();
    void cmdImport_Click();
    bool refuse(QWidget& box, const QString& message);
    bool entriesAreValid();
    void readBeginning();
    void readFile(const std::string& path);
    void readLayer();
    void layerPicked();
    bool hasLayers() const { return !layers_.empty(); }
    void showShape(const TableShape& shape);
    void showParameters(const TableOptions& options);
    void shapeChanged();
    void headClicked(int column);
    void columnClicked(int column);
    void columnPicked();
    void rolePicked();
    void setRole(int column, TableRole role);
    void showRole(int column, TableRole role);
    void showPreview();
    void showColumns();
    void showNotices();
    QString whatIsWrong() const;

    KnownTables& known_;
    const LayerReader* layerReader_;
    std::vector<PointLayer> layers_;  // of the file; none of a text
    TablePreviewModel* model_ = nullptr;
    QTimer typing_;     // runs from a change of the file's name until its beginning is read
    std::string text_;  // the file's beginning, decoded
    bool cutOff_ = false;
    QString problem_;  // why there is nothing to show, or empty
    TablePreview preview_;
    std::vector<TableRole> roles_;
    std::vector<TableRole> rolesBefore_;  // when the column in the box was chosen
};

}  // namespace tessel
