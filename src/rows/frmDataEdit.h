// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/row_editing.h"
#include "rows/row_entry.h"
#include "rows/row_forecast.h"
#include "ui_frmDataEdit.h"

#include <QDialog>
#include <QList>

#include <optional>
#include <string>
#include <vector>

namespace tessel {

/// Joins two rows, deletes a row, or finds all rows anew with another distance. A refused entry changes
/// nothing and empties the dialog; an operation that was done closes it, unless it found too many rows. While
/// a distance is typed the dialog says how many rows it would give.
class frmDataEdit : public QDialog, public Ui::frmDataEdit {
    Q_OBJECT

  public:
    explicit frmDataEdit(QWidget* parent = nullptr);

    /// The survey has changed, by this dialog or beside it: what is said of it is said anew, and row numbers
    /// that were entered go where they mean other rows now.
    void followSurvey();

    /// A distance (metres, not negative) has been chosen elsewhere: it stands in the box of its measure as if
    /// it had been typed. Costs one look at the survey when another operation was chosen before, else as much
    /// as a key press.
    void enterDistance(int distanceMode, double distance);

  Q_SIGNALS:
    /// Sites or rows have changed.
    void surveyChanged();
    /// Before or after surveyChanged(): nothing is left to edit, and the user has been told.
    void noSitesLeft();
    /// After surveyChanged(): all rows have been found anew.
    void rowsRecalculated();
    /// Another distance (metres) stands in the box of a measure (1 true distance, 2 along X, 3 along Y), or
    /// none that could be taken.
    void distanceTyped(int distanceMode, std::optional<double> distance);
    /// After it: the rows that this distance would give, as ranges of sites, or none.
    void rowsForeseen(const std::vector<tessel::IndexRange>& rows);
    /// The dialog has come up, or gone.
    void shownChanged(bool shown);

  protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    struct Input {
        QLabel* label;
        QLineEdit* box;
        QLabel* unit = nullptr;  ///< null for a row number
    };
    struct Entries;
    struct Operation {
        QRadioButton* option;
        QList<Input> inputs;
        void (frmDataEdit::*run)(const Entries& entered);
        int distanceMode;  ///< of the recalculations, else 0
    };
    /// What stands in the widgets.
    struct Entries {
        const Operation* operation = nullptr;  ///< the one chosen
        std::string first, second;             ///< its entries; the same where it has one

        bool isRecalculation() const { return operation != nullptr && operation->distanceMode > 0; }
    };

    static QList<QWidget*> widgetsOf(const Input& input);
    Entries entries() const;
    void Form_Load();
    void followRowLimit();
    void Option_Click(const Operation& operation);
    void lookAhead();
    void showForecast();
    void showInForce();
    void Command1_Click();
    void joinRows(const Entries& entered);
    void deleteRow(const Entries& entered);
    void recalculate(const Entries& entered);
    bool refused(EntryFault fault, bool twoNumbers);
    void tellNoSitesLeft();

    QList<Operation> operations_;
    RowForecast forecast_;  ///< of the measure chosen
    int numRows_ = 0;       ///< of the survey, when a row number may have been entered
    int importNumber_ = 0;
};

}  // namespace tessel
