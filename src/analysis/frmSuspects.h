// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/SuspectSearch.h"
#include "analysis/SuspectsModel.h"
#include "ui_frmSuspects.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <exception>
#include <memory>
#include <optional>

namespace tessel {

/// Sites that rules find suspicious: how many, where on the map, and each in a table. The user takes ticks
/// away and deletes the others. It looks at a copy of the survey, in a thread of its own where that takes
/// longer than a moment; deletion is an act on the survey as it is.
class frmSuspects : public QWidget, public Ui::frmSuspects {
    Q_OBJECT

  public:
    /// With the values that the survey proposes and no rule. Requires a survey with sites.
    explicit frmSuspects(QWidget* parent = nullptr);

    /// The survey has changed beside this window. Requires sites.
    void followSurvey();

    bool isSearching() const { return search_.isRunning(); }

  Q_SIGNALS:
    /// Sites have been deleted.
    void surveyChanged();
    /// Before surveyChanged(): rows were lost, and all sites are one row.
    void rowsLost();
    /// After surveyChanged(); the user has been told.
    void noSitesLeft();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// What a box may hold.
    struct Allowed;

    void joinRules();
    void joinTable();
    void offerSorting(QPoint place);
    void showSortMenu(QPoint place);
    void sortBy(int column);
    void showProposal();
    void offerReadings();
    double numberIn(const QCheckBox* rule, const QLineEdit* box, const Allowed& allowed,
                    QString& fault) const;
    /// What stands in the widgets; nothing, with the reason in `fault`, where a value cannot be taken.
    std::optional<SuspectParameters> entries(QString& fault) const;

    void search();
    void refuse(const QString& reason);
    void showProgress();
    void endProgress();
    void cmdCancel_Click();
    void searchEnded(const Suspects& suspects);
    void searchFailed(const std::exception_ptr& failure);
    void showResult(const Suspects& suspects);
    void showFlagged(const Suspects& suspects);
    void showCounts();
    void tellStatus(const QString& text, bool isWarning);
    QString status() const;

    // The map (frmSuspectsMap.cpp).
    void joinMap();
    void drawMap();
    void colourMap();
    void drawFlagged();
    void showOnMap(const QModelIndex& line);
    void readOut(QPoint pixel);
    void pickOnMap(QPoint pixel);
    /// The site that the pointer means; -1 for none.
    SiteIndex siteUnder(QPoint pixel) const;
    QString textOf(SiteIndex site) const;

    void cmdDeleteSuspects_Click();
    void deleteTicked();

    std::shared_ptr<const Survey> survey_;  ///< a copy of the survey as it is, which is looked at
    SuspectParameters parameters_;          ///< of what is shown
    SuspectsModel* const model_;
    SuspectSearch search_;
    QTimer progress_;
    QElapsedTimer sinceStart_;
};

}  // namespace tessel
