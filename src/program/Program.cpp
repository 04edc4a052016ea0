// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program on one page: which window each menu item opens, and what follows when one has done
// something.
#include "program/Program.h"

#include "analysis/LagDistancePlot.h"
#include "analysis/frmAdjustData.h"
#include "app/HelpOpener.h"
#include "app/InterfaceControls.h"
#include "app/applied_adjustments.h"
#include "app/frmAbout.h"
#include "app/frmMain.h"
#include "app/survey_facts.h"
#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/FileNames.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "desktop/editor_settings.h"
#include "export/frmOutput.h"
#include "export/frmSaveTable.h"
#include "geodesy/frmCoordinates.h"
#include "import/SurveyImport.h"
#include "import/import_summary_texts.h"
#include "journal/journal.h"
#include "plots/PlotPicture.h"
#include "plots/RowPlotEditor.h"
#include "plots/SurveyGridPlot.h"
#include "plots/frmClip.h"
#include "program/ProcessingRecords.h"
#include "program/ReviewWindows.h"
#include "program/RowDialog.h"
#include "program/SearchWindows.h"
#include "program/SurveyFiles.h"
#include "program/UndoAndHistory.h"
#include "rows/row_detection.h"
#include "storage/point_layers.h"

#include <QScopeGuard>
#include <QShortcut>

#include <filesystem>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

class Program : public QObject {
  public:
    Program(frmMain& window, const std::string& stateFolder)
        : QObject(&window),
          main_(window),
          import_(window, &geoPackageLayers()),
          records_(window),
          files_(window, records_, stateFolder),
          rowEditor_(new RowPlotEditor(window)),
          grid_(window),
          lag_(window),
          rowDialog_(window, lag_, grid_),
          searches_(window, grid_),
          reviews_(window),
          history_(window) {
        joinFile();
        joinEdit();
        joinReviewAndPlot();
        joinHelp();
        connect(&main_, &frmMain::fileDropped, this, &Program::takeFile);
        connect(&import_, &SurveyImport::imported, this, &Program::surveyReplaced);
        connect(&import_, &SurveyImport::tooManyRows, this, &Program::rowsRefused);
        connect(&main_, &frmMain::plotsHidden, rowEditor_, [this] { rowEditor_->closeEditor(); });
        connect(rowEditor_, &RowPlotEditor::surveyChanged, this, &Program::sitesPicked);
        menusFollow(rowEditor_, &RowPlotEditor::rowSplit, MenuEvent::kRowsRecalculated);
        connect(rowEditor_, &RowPlotEditor::rowSplit, this, &Program::followSurvey);
        connect(rowEditor_, &RowPlotEditor::closed, this, &Program::rowEditorClosed);
        connect(rowEditor_, &RowPlotEditor::undoWanted, main_.mnuUndo, &QAction::trigger);
        connect(rowEditor_, &RowPlotEditor::redoWanted, main_.mnuRedo, &QAction::trigger);
        connect(&rowDialog_, &RowDialog::surveyChanged, this, &Program::surveyChanged);
        menusFollow(&rowDialog_, &RowDialog::rowsRecalculated, MenuEvent::kRowsRecalculated);
        menusFollow(&rowDialog_, &RowDialog::noSitesLeft, MenuEvent::kNoSitesLeft);
        connect(&searches_, &SearchWindows::surveyChanged, this, &Program::surveyChanged);
        menusFollow(&searches_, &SearchWindows::rowsRecalculated, MenuEvent::kRowsRecalculated);
        menusFollow(&searches_, &SearchWindows::rowsLost, MenuEvent::kRowsLost);
        menusFollow(&searches_, &SearchWindows::noSitesLeft, MenuEvent::kNoSitesLeft);
        main_.describeWith([this] { return description(); });
        connect(main_.mnuEL, &QAction::enabledChanged, this, [this] {
            if (theSurvey().importNumber > 0) main_.descriptionChanged();
        });
        connect(main_.surveySummary, &SurveySummary::logRequested, this,
                guarded(&main_, [] { mnuEL_Click(); }));
    }

  private:
    // Opens a survey file, and begins the import of any other that fits it.
    void takeFile(const QString& path) {
        runGuarded(&main_, [&] {
            SurveyFiles::isSurveyFile(toPath(path)) ? files_.open(toPath(path)) : import_.importFile(path);
        });
    }

    void joinFile() {
        on(main_.mnuOpen, [this] { import_.mnuOpen_Click(); });
        on(main_.mnuOpen2, [this] { import_.mnuOpen2_Click(); });
        on(main_.mnuSave, [this] {
            auto* const window = new frmOutput(&main_);
            connect(window, &frmOutput::exported, this, [] { theJournal().noteExport(); });
            records_.serve(*window);
            showModal(window);
        });
        on(main_.mnuRecord, [this] { records_.mnuRecord_Click(); });
        on(main_.mnuImportTable, [this] { import_.mnuImportTable_Click(); });
        on(main_.mnuSaveTable, [this] {
            auto* const window = new frmSaveTable(&main_);
            records_.serve(*window);
            showModal(window);
        });
        on(main_.mnuOpenSurvey, [this] { files_.mnuOpenSurvey_Click(); });
        on(main_.mnuSaveSurvey, [this] { files_.mnuSaveSurvey_Click(); });
        on(main_.mnuSaveSurveyAs, [this] { files_.mnuSaveSurveyAs_Click(); });
        connect(&files_, &SurveyFiles::foreignChosen, &import_, &SurveyImport::importLayer);
        connect(&files_, &SurveyFiles::opened, this, &Program::surveyOpened);
        menusFollow(&files_, &SurveyFiles::rowsLost, MenuEvent::kRowsLost);
    }

    void joinEdit() {
        on(main_.mnuIDEW, [this] {
            auto* const window = new frmClip(&main_);
            connect(window, &frmClip::surveyChanged, this, &Program::surveyChanged);
            connect(window, &frmClip::journalMoved, this, &Program::followJournal);
            menusFollow(window, &frmClip::rowsLost, MenuEvent::kRowsLost);
            menusFollow(window, &frmClip::noSitesLeft, MenuEvent::kNoSitesLeft);
            showModal(window);
        });
        on(main_.mnuX, [this] { rowEditor_->mnuX_Click(); });
        on(main_.mnuY, [this] { rowEditor_->mnuY_Click(); });
        on(main_.mnuData, [this] { rowDialog_.mnuData_Click(); });
        on(main_.mnuAdjust, [this] {
            auto* const window = new frmAdjustData(&main_);
            connect(window, &frmAdjustData::readingsChanged, this, &Program::surveyChanged);
            showModal(window);
        });
        on(main_.mnuTurns, [this] { searches_.mnuTurns_Click(); });
        on(main_.mnuSuspects, [this] { searches_.mnuSuspects_Click(); });
        on(main_.mnuUndo, [this] { history_.mnuUndo_Click(); });
        on(main_.mnuRedo, [this] { history_.mnuRedo_Click(); });
        on(main_.mnuHistory, [this] { history_.mnuHistory_Click(); });
        connect(&history_, &UndoAndHistory::moved, this, &Program::followJournal);
        on(main_.mnuCoordinates, [this] {
            auto* const window = new frmCoordinates(&main_);
            connect(window, &frmCoordinates::positionsChanged, this, &Program::surveyChanged);
            showModal(window);
        });
        menusChanged();
    }

    void joinReviewAndPlot() {
        on(main_.mnuStat, [this] { reviews_.mnuStat_Click(); });
        on(main_.mnuEL, [] { mnuEL_Click(); });
        on(main_.mnuTrue_Dis, [this] { lag_.mnuTrue_Dis_Click(); });
        on(main_.mnuX_Dis, [this] { lag_.mnuX_Dis_Click(); });
        on(main_.mnuY_Dis, [this] { lag_.mnuY_Dis_Click(); });
        on(main_.mnuGrid, [this] { grid_.mnuGrid_Click(); });
        on(main_.mnuGridEM1, [this] { grid_.mnuGridEM1_Click(); });
        on(main_.mnuGridEM2, [this] {
            if (hasTwoReadings()) grid_.mnuGridEM2_Click();
        });
        on(main_.mnuSigCorr, [this] {
            if (hasTwoReadings()) reviews_.mnuSigCorr_Click();
        });
        on(main_.mnuHist, [this] { reviews_.mnuHist_Click(); });
        on(main_.mnuSavePicture, [this] { savePlot(&main_, PlotPicture(surfacesIn(*main_.chartArea))); });
        on(main_.mnuPlotHelp, [this] { openHelp(&main_, 111); });
    }

    void joinHelp() {
        on(main_.mnuHelpAbout, [this] { showModal(new frmAbout(&main_)); });
        on(main_.mnusetDTE, [this] { mnusetDTE_Click(&main_); });
        on(main_.mnuDPI300, [this] { setResolution(mnuDPI300_Click); });
        on(main_.mnuDPI600, [this] { setResolution(mnuDPI600_Click); });
        on(main_.mnuDPI1200, [this] { setResolution(mnuDPI1200_Click); });
        showResolution(*main_.mnuDPI300, *main_.mnuDPI600, *main_.mnuDPI1200);
        on(main_.mnuHmain1, [this] { openHelp(&main_, 101); });
        on(main_.mnuHmain2, [this] { openHelp(&main_, 102); });
        on(main_.mnuHmain3, [this] { openHelp(&main_, 103); });
        connect(new QShortcut(QKeySequence::HelpContents, &main_), &QShortcut::activated, this,
                guarded(&main_, [this] { openHelp(&main_, helpOfView()); }));
    }

    void setResolution(void (*choose)(QWidget*)) {
        // Chosen, the item has checked or unchecked itself.
        const auto show =
            qScopeGuard([this] { showResolution(*main_.mnuDPI300, *main_.mnuDPI600, *main_.mnuDPI1200); });
        choose(&main_);
    }

    // Or tells the user why an item that needs them does nothing.
    bool hasTwoReadings() {
        if (theSurvey().TwoEMColumns) return true;
        tell(&main_, u"This option is only available when 2 signal data columns are present."_s);
        return false;
    }

    void followJournal(std::size_t from) {
        const MenuState menus = theJournal().menus();
        nameInputFile();
        redrawView();
        // What was shown may have ended with an event of its own.
        main_.restoreMenus(menus);
        // Nothing else can divide a single row, once the row plots are closed.
        if (!rowEditor_->isShown() && theSurvey().NumRows == 1)
            main_.menusFollow(MenuEvent::kRowEditorFinished);
        followSurvey();
        main_.showMessage(UndoAndHistory::movedInWords(from));
    }

    void nameInputFile() {
        if (const ImportSummary* import = records_.importOf(theSurvey()))
            theSession().InputFileName = std::filesystem::absolute(import->path).lexically_normal().string();
    }

    void surveyReplaced(const ImportSummary& summary, ImportedRows rows) {
        records_.noteImport(summary);
        // The grid may be in the rows of the dialog's distance, and the new survey may have too many.
        main_.hidePlots();
        rowDialog_.takeAway();
        followSurvey();
        const bool any = theSurvey().NumSites > 0;
        const MenuEvent event = any ? MenuEvent::kSitesImported : MenuEvent::kNothingImported;
        // Of too many rows the user is told first.
        if (rows != ImportedRows::kTooManyRows)
            menusFollow(isFatal(rows) ? MenuEvent::kImportRefused : event);
    }

    // Another survey is there with its history, as it was when it was saved.
    void surveyOpened() {
        const MenuState saved = theJournal().menus();
        main_.hidePlots();
        rowDialog_.takeAway();
        nameInputFile();
        main_.restoreMenus(saved);
        // It may have been saved while the row plots were open.
        if (main_.mnuHist->isEnabled()) main_.menusFollow(MenuEvent::kRowEditorFinished);
        followSurvey();
    }

    void rowsRefused() {
        rowDialog_.mnuData_Click();
        menusFollow(MenuEvent::kSitesImported);
    }

    // Sites were deleted on the row plots, which show the survey as it is now.
    void sitesPicked() {
        if (theSurvey().NumRows < 2) menusFollow(MenuEvent::kFewerThanTwoRows);
        followSurvey();
    }

    // However it ends, not by "Finished" alone: a single row can be told apart into rows in the row dialog
    // only.
    void rowEditorClosed(bool finished) {
        if (finished || theSurvey().NumSites > 0) menusFollow(MenuEvent::kRowEditorFinished);
    }

    template <typename Window>
    void menusFollow(Window* window, void (Window::*happened)(), MenuEvent event) {
        connect(window, happened, this, [this, event] { menusFollow(event); });
    }

    void menusFollow(MenuEvent event) {
        main_.menusFollow(event);
        menusChanged();
    }

    // The journal knows how menus stood after each act, and those of its own say what it can do.
    void menusChanged() {
        theJournal().noteMenus(main_.menuState());
        history_.showInMenus();
        files_.followJournal();
    }

    void surveyChanged() {
        redrawView();
        followSurvey();
    }

    // The view that is shown stays, unless it cannot show the survey any more.
    void redrawView() {
        for (PlotView* view : std::initializer_list<PlotView*>{rowEditor_, &grid_, &lag_})
            if (view->isShown()) return redrawOrHide(*view);
    }

    void redrawOrHide(PlotView& view) {
        bool drawn = false;
        try {
            drawn = view.redraw();
        } catch (const std::exception&) {
            // What a user can do about it is said when the view is chosen again.
        }
        if (!drawn) main_.hidePlots();
    }

    // Whatever has changed the survey, everything beside the view follows.
    void followSurvey() {
        // What has been exported may no longer be the survey: the exit question is asked again.
        theSession().DataSaved = theJournal().isExported();
        menusChanged();
        history_.followSurvey();
        facts_.reset();
        main_.descriptionChanged();
        rowDialog_.followSurvey();
        searches_.followSurvey();
        reviews_.followSurvey();
    }

    SurveyDescription description() {
        if (!facts_) facts_ = surveyFacts(theSurvey());
        const ImportSummary* const import = records_.importOf(theSurvey());
        return describeSurvey(theSurvey(), *facts_, import ? *import : ImportSummary(),
                              main_.mnuEL->isEnabled());
    }

    int helpOfView() const {
        if (rowEditor_->isVisible()) return 114;
        return main_.lblInvitation->isVisible() ? 101 : 111;
    }

    void on(QAction* item, std::function<void()> action) {
        const MenuNeed need = menuNeed(item->objectName().toStdString());
        connect(item, &QAction::triggered, this, guarded(&main_, [this, need, open = std::move(action)] {
                    if (isMet(need)) open();
                }));
    }

    bool isMet(MenuNeed need) {
        if (need != MenuNeed::kNone && theSurvey().NumSites == 0) {
            tell(&main_, u"There is no more point left in the file!"_s);
            return false;
        }
        if (need != MenuNeed::kUsableRows || rowsAreUsable(theSurvey())) return true;
        // A view would draw nonsense: the user is told again and can give another distance.
        tell(&main_, QString::fromLatin1(kTooManyRows));
        rowDialog_.mnuData_Click();
        return false;
    }

    frmMain& main_;
    SurveyImport import_;
    ProcessingRecords records_;
    SurveyFiles files_;
    RowPlotEditor* const rowEditor_;  // owned by the main window
    SurveyGridPlot grid_;
    LagDistancePlot lag_;
    RowDialog rowDialog_;
    SearchWindows searches_;
    ReviewWindows reviews_;
    UndoAndHistory history_;
    std::optional<SurveyFacts> facts_;  // of the survey, once they have been asked for
};

}  // namespace

std::unique_ptr<frmMain> createProgram(const std::string& stateFolder) {
    auto main = std::make_unique<frmMain>();
    new Program(*main, stateFolder);
    return main;
}

void openFile(frmMain& window, const std::string& path) {
    Q_EMIT window.fileDropped(fromPath(path));
}

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256, 512})
        icon.addFile(u":/icon/%1.png"_s.arg(size), QSize(size, size));
    return icon;
}

}  // namespace tessel
