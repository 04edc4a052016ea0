// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/row_turns.h"
#include "ui_frmTurns.h"

#include <QDialog>

#include <optional>

namespace tessel {

/// Finds the rows of a logger that never stopped, by the turns between them. While values are typed or
/// dragged it says what would come out and has it shown; the survey changes with OK only.
class frmTurns : public QDialog, public Ui::frmTurns {
    Q_OBJECT

  public:
    /// With the values that the survey proposes. Requires a survey with sites.
    explicit frmTurns(QWidget* parent = nullptr);

    /// Looks again, with the values that stand here: the survey has changed beside this window. Requires
    /// sites.
    void search();

  Q_SIGNALS:
    /// Rows that the survey could hold; valid during the call.
    void rowsFound(const RowTurns& found);
    /// There are no such rows with these values, or nothing more is to be shown of them.
    void previewEnded();
    /// The rows have been put into the survey.
    void surveyChanged();
    /// After surveyChanged().
    void rowsRecalculated();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    struct Input {
        QLineEdit* box;
        QSlider* slider;
        double unit;  ///< what one step of the slider is
    };

    void showProposal();
    void joinInput(const Input& input);
    /// What stands in the widgets; nothing, with the reason in `fault`, where a value cannot be taken.
    std::optional<TurnParameters> entries(QString& fault) const;
    void showFound();
    void refuse(const QString& reason);
    void cmdOk_Click();

    TurnParameters proposed_;
    TurnParameters searchedWith_;  ///< gave `found_`
    QList<Input> inputs_;
    RowTurns found_;
};

}  // namespace tessel
