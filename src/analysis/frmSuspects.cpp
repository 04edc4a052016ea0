// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSuspects.h"

#include "analysis/suspect_deletion.h"
#include "app/HelpOpener.h"
#include "base/numbers.h"
#include "base/whole_numbers.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "journal/journal.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 119;
constexpr SiteIndex kAtOnce = 20000;       // as many sites are looked at in a moment
constexpr int kProgressInterval = 100;     // milliseconds
constexpr int kProgressAfter = 300;        // milliseconds
constexpr double kMostNeighbours = 10000;  // and as many equal readings

QString shown(double value) {
    if (value == std::floor(value) && value < 1e6) return QString::number(value, 'f', 0);
    if (value >= 1) return QString::fromStdString(pictureFormat(value, 2));
    return QString::number(value, 'g', 3);
}

QString sitesInWords(SiteIndex sites) {
    return sites == 1 ? u"1 site"_s : u"%1 sites"_s.arg(sites);
}

}  // namespace

struct frmSuspects::Allowed {
    double above;
    bool whole;
    QString words;
};

frmSuspects::frmSuspects(QWidget* parent) : QWidget(parent, Qt::Window), model_(new SuspectsModel(this)) {
    setupUi(this);
    joinRules();
    joinTable();
    joinMap();
    connect(&search_, &SuspectSearch::found, this, &frmSuspects::searchEnded);
    connect(&search_, &SuspectSearch::failed, this, &frmSuspects::searchFailed);
    connect(&progress_, &QTimer::timeout, this, [this] { showProgress(); });
    connect(cmdCancel, &QPushButton::clicked, this, guarded(this, [this] { cmdCancel_Click(); }));
    connect(cmdDeleteSuspects, &QPushButton::clicked, this,
            guarded(this, [this] { cmdDeleteSuspects_Click(); }));
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    offerHelp(*this, kHelpDocument, cmdHelp);
    for (QWidget* widget : std::initializer_list<QWidget*>{barSearch, cmdCancel}) {
        keepRoomWhenHidden(*widget);
        widget->hide();
    }
    progress_.setInterval(kProgressInterval);
    resizeOnScreen(*this, {1040, 700});
    showProposal();
    followSurvey();
    // Site, row, X, Y and readings; the rules have the rest.
    const std::array widest{u"0000000000"_s,  u"00000"_s,    u"000000.000"_s,
                            u"0000000.000"_s, u"0000.000"_s, u"0000.000"_s};
    for (std::size_t column = 0; column < widest.size(); ++column)
        tblSuspects->setColumnWidth(static_cast<int>(column),
                                    fontMetrics().horizontalAdvance(widest[column]));
}

void frmSuspects::joinRules() {
    const QString widest = u"000000"_s;
    for (QLineEdit* const box : frameRules->findChildren<QLineEdit*>()) {
        box->setFixedWidth(fontMetrics().horizontalAdvance(widest) + 12);
        connect(box, &QLineEdit::textEdited, this, guarded(this, [this] { search(); }));
    }
    for (QCheckBox* const rule : frameRules->findChildren<QCheckBox*>())
        connect(rule, &QCheckBox::toggled, this, guarded(this, [this] { search(); }));
    connect(cboRepeated, &QComboBox::activated, this, guarded(this, [this] { search(); }));
    lblCountLimits->setMinimumWidth(fontMetrics().horizontalAdvance(widest));
}

void frmSuspects::joinTable() {
    tblSuspects->setModel(model_);
    tblSuspects->verticalHeader()->hide();
    tblSuspects->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    tblSuspects->horizontalHeader()->setStretchLastSection(true);
    tblSuspects->sortByColumn(0, Qt::AscendingOrder);
    tblSuspects->setContextMenuPolicy(Qt::CustomContextMenu);
    tblSuspects->installEventFilter(this);
    connect(tblSuspects, &QWidget::customContextMenuRequested, this, &frmSuspects::offerSorting);
    connect(tblSuspects->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& line) { showOnMap(line); });
    connect(model_, &SuspectsModel::ticksChanged, this, [this] {
        if (!isSearching()) showCounts();
    });
}

// The way of the keyboard: headings cannot have the focus.
void frmSuspects::offerSorting(QPoint place) {
    runGuarded(this, [&] { showSortMenu(place); });
}

void frmSuspects::showSortMenu(QPoint place) {
    auto* const menu = new QMenu(this);
    menu->setObjectName(u"mnuSort"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int column = 0; column < model_->columnCount(); ++column) {
        const QString heading = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        QAction* const item = menu->addAction(u"Sort by "_s + heading);
        item->setCheckable(true);
        item->setChecked(tblSuspects->horizontalHeader()->sortIndicatorSection() == column);
        connect(item, &QAction::triggered, this, guarded(this, [this, column] { sortBy(column); }));
    }
    menu->popup(tblSuspects->viewport()->mapToGlobal(place));
}

// As a click on the heading does: a second time the other way round.
void frmSuspects::sortBy(int column) {
    const QHeaderView& heads = *tblSuspects->horizontalHeader();
    const bool turns =
        heads.sortIndicatorSection() == column && heads.sortIndicatorOrder() == Qt::AscendingOrder;
    tblSuspects->sortByColumn(column, turns ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void frmSuspects::showProposal() {
    const SuspectParameters proposed = proposedSuspectParameters(theSurvey());
    const std::pair<QLineEdit*, double> values[] = {{txtLowest1, proposed.lowest[0]},
                                                    {txtHighest1, proposed.highest[0]},
                                                    {txtLowest2, proposed.lowest[1]},
                                                    {txtHighest2, proposed.highest[1]},
                                                    {txtNeighbours, proposed.spikeNeighbours},
                                                    {txtSpike, proposed.spikeThreshold},
                                                    {txtRadius, proposed.radius},
                                                    {txtAround, proposed.aroundThreshold},
                                                    {txtJump, proposed.jump},
                                                    {txtFar, proposed.farFactor},
                                                    {txtStuck, static_cast<double>(proposed.stuckSites)},
                                                    {txtApart, proposed.apartThreshold}};
    for (const auto& [box, value] : values)
        box->setText(shown(value));
}

// What needs a second reading is there where the survey has one.
void frmSuspects::offerReadings() {
    const bool two = survey_->TwoEMColumns;
    for (QWidget* widget : std::initializer_list<QWidget*>{lblEM2, txtLowest2, lblOr2, txtHighest2, lblUnit2})
        widget->setVisible(two);
    for (QWidget* widget : std::initializer_list<QWidget*>{chkApart, lblApart, txtApart, lblApartUnit})
        widget->setEnabled(two);
    if (!two && cboColours->currentIndex() == 2) cboColours->setCurrentIndex(0);
    while (cboColours->count() > (two ? 3 : 2))
        cboColours->removeItem(2);
    if (two && cboColours->count() < 3) cboColours->addItem(u"2nd EM reading"_s);
}

// Entries ---------------------------------------------------------------------------------------------------

double frmSuspects::numberIn(const QCheckBox* rule, const QLineEdit* box, const Allowed& allowed,
                             QString& fault) const {
    const std::optional<double> typed = numericValue(box->text().toStdString());
    const bool taken = typed && *typed > allowed.above &&
                       (!allowed.whole || (*typed == std::floor(*typed) && *typed <= kMostNeighbours));
    if (taken) return *typed;
    if (rule->isChecked() && fault.isEmpty()) fault = box->accessibleName() + u": type "_s + allowed.words;
    return 2;  // for a rule that is not used
}

std::optional<SuspectParameters> frmSuspects::entries(QString& fault) const {
    const Allowed any{-HUGE_VAL, false, u"a number."_s}, positive{0, false, u"a number above 0."_s},
        several{1, true, u"a whole number from 2 to 10000."_s};
    const auto number = [&](const QCheckBox* rule, const QLineEdit* box, const Allowed& allowed) {
        return numberIn(rule, box, allowed, fault);
    };
    SuspectParameters p;
    const std::array rules{chkLimits,   chkSpikes, chkAround, chkJumps,
                           chkRepeated, chkFar,    chkStuck,  chkApart};
    std::ranges::transform(rules, p.uses.begin(),
                           [](const QCheckBox* rule) { return rule->isChecked() && rule->isEnabled(); });
    p.lowest[0] = number(chkLimits, txtLowest1, any);
    p.highest[0] = number(chkLimits, txtHighest1, any);
    if (survey_->TwoEMColumns) {
        p.lowest[1] = number(chkLimits, txtLowest2, any);
        p.highest[1] = number(chkLimits, txtHighest2, any);
    }
    p.spikeNeighbours = nearestInt(number(chkSpikes, txtNeighbours, several));
    p.spikeThreshold = number(chkSpikes, txtSpike, positive);
    p.radius = number(chkAround, txtRadius, positive);
    p.aroundThreshold = number(chkAround, txtAround, positive);
    p.jump = number(chkJumps, txtJump, positive);
    p.repeated = static_cast<RepeatedPlaces>(cboRepeated->currentIndex());
    p.farFactor = number(chkFar, txtFar, positive);
    p.stuckSites = nearestInt(number(chkStuck, txtStuck, several));
    p.apartThreshold = number(chkApart, txtApart, positive);
    if (!fault.isEmpty()) return {};
    return p;
}

// The search ------------------------------------------------------------------------------------------------

void frmSuspects::followSurvey() {
    search_.cancel();
    survey_ = std::make_shared<const Survey>(surveyToSearch(theSurvey()));
    model_->setSurvey(survey_);
    offerReadings();
    drawMap();
    search();
}

void frmSuspects::search() {
    QString fault;
    const auto parameters = entries(fault);
    if (!parameters) return refuse(fault);
    parameters_ = *parameters;
    const bool any = std::ranges::find(parameters_.uses, true) != parameters_.uses.end();
    if (survey_->NumSites <= kAtOnce || !any) {
        search_.cancel();
        return showResult(findSuspects(*survey_, parameters_));
    }
    search_.start(survey_, parameters_);
    cmdDeleteSuspects->setEnabled(false);
    sinceStart_.start();
    progress_.start();
}

void frmSuspects::refuse(const QString& reason) {
    search_.cancel();
    parameters_ = {};
    showFlagged({std::vector<std::uint8_t>(static_cast<std::size_t>(survey_->NumSites)), {}, 0, false});
    tellStatus(reason, true);
}

void frmSuspects::showProgress() {
    if (!search_.isRunning()) return endProgress();
    if (sinceStart_.elapsed() < kProgressAfter) return;
    barSearch->setValue(nearestInt(100 * search_.part()));
    barSearch->show();
    cmdCancel->show();
    tellStatus(u"Looking at %1 ..."_s.arg(sitesInWords(survey_->NumSites)), false);
}

void frmSuspects::endProgress() {
    progress_.stop();
    barSearch->hide();
    cmdCancel->hide();
}

void frmSuspects::cmdCancel_Click() {
    refuse(u"The search was given up. Change a value, or a rule, to search again."_s);
}

void frmSuspects::searchEnded(const Suspects& suspects) {
    runGuarded(this, [&] { showResult(suspects); });
}

void frmSuspects::searchFailed(const std::exception_ptr& failure) {
    runGuarded(this, [&] {
        refuse(u"The search could not be done."_s);
        std::rethrow_exception(failure);
    });
}

void frmSuspects::showResult(const Suspects& suspects) {
    showFlagged(suspects);
    tellStatus(status(), false);
}

void frmSuspects::showFlagged(const Suspects& suspects) {
    endProgress();
    model_->show(suspects);
    drawFlagged();
    showCounts();
}

void frmSuspects::showCounts() {
    const std::array labels{lblCountLimits,   lblCountSpikes, lblCountAround, lblCountJumps,
                            lblCountRepeated, lblCountFar,    lblCountStuck,  lblCountApart};
    for (std::size_t rule = 0; rule < labels.size(); ++rule)
        labels[rule]->setText(parameters_.uses[rule] ? QString::number(model_->suspects().counts[rule])
                                                     : QString());
    cmdDeleteSuspects->setEnabled(model_->ticked() > 0);
    tellStatus(status(), false);
}

void frmSuspects::tellStatus(const QString& text, bool isWarning) {
    lblSuspects->setText(text);
    colourNotice(*lblSuspects, isWarning);
}

QString frmSuspects::status() const {
    const bool any = std::ranges::find(parameters_.uses, true) != parameters_.uses.end();
    if (!any) return u"Choose the rules that are to look. Nothing is deleted before you say so."_s;
    const SiteIndex flagged = model_->suspects().sites;
    if (flagged == 0) return u"No site is suspicious by these rules."_s;
    return u"%1 of %2 flagged, %3 of them ticked."_s.arg(flagged)
        .arg(sitesInWords(survey_->NumSites))
        .arg(model_->ticked());
}

// Keys ------------------------------------------------------------------------------------------------------

void frmSuspects::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
    if (cmdCancel->isVisible())
        cmdCancel->click();
    else
        close();
}

// The space bar takes the ticks of all selected lines away, or gives them back.
bool frmSuspects::eventFilter(QObject* watched, QEvent* event) {
    const bool isSpace =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    if (watched != tblSuspects || !isSpace) return QWidget::eventFilter(watched, event);
    model_->turnTicks(tblSuspects->selectionModel()->selectedRows());
    return true;
}

// Deletion --------------------------------------------------------------------------------------------------

void frmSuspects::cmdDeleteSuspects_Click() {
    const SiteIndex ticked = model_->ticked();
    if (ask(this, u"Delete %1? The others stay."_s.arg(ticked == 1 ? u"the ticked site"_s
                                                                   : u"the %1 ticked sites"_s.arg(ticked))))
        deleteTicked();
}

void frmSuspects::deleteTicked() {
    bool rowsWereLost = false;
    {
        const Hourglass hourglass(this);
        rowsWereLost =
            theJournal()
                .perform(
                    deletionOfSuspects(theSurvey(), parameters_, model_->ticked(), model_->spared()),
                    [&](Survey& survey) { return deleteSuspects(survey, model_->tickedRuns(), parameters_); })
                .rowsLost;
    }
    if (rowsWereLost) Q_EMIT rowsLost();
    Q_EMIT surveyChanged();
    if (theSurvey().NumSites > 0) return;
    tell(parentWidget() ? parentWidget() : this, u"There is no more point left in the file!"_s);
    Q_EMIT noSitesLeft();
    close();
}

}  // namespace tessel
