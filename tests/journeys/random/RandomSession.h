// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/suspicious_sites.h"
#include "app/survey.h"
#include "journeys/random/Reached.h"
#include "rows/row_turns.h"
#include "support/plain_survey.h"
#include "support/temporary_folder.h"

class QWidget;

namespace tessel {

/// The menu items of the main window that need a survey.
inline const std::vector<std::string> kSurveyItems = {
    "mnuSigCorr", "mnuHist",     "mnuClear",  "mnuData",      "mnuInvokeIDE",
    "mnuIDEW",    "mnuDistance", "mnuGrid",   "mnuStat",      "mnuRow",
    "mnuAdjust",  "mnuEL",       "mnuRecord", "mnuSaveTable", "mnuCoordinates"};

class Chart2D;
class RowPlotEditor;
class frmMain;
struct MessageBox;

/// Makes random but legal choices in the real windows beside a plain model of the program, and compares the
/// two after every act: sites, rows, counts, menu items, plots and message boxes, numbers to the last bit.
/// The same seed makes the same choices.
class RandomSession {
  public:
    explicit RandomSession(std::uint64_t seed);
    ~RandomSession();
    RandomSession(const RandomSession&) = delete;
    RandomSession& operator=(const RandomSession&) = delete;

    /// Makes so many acts. Gives seed, number and name of the act after which something differed and what, or
    /// nothing.
    std::string run(long acts);

    /// How often each act has been made.
    const std::map<std::string, long>& actsMade() const { return made_; }

    /// The menu items, buttons, boxes and keys of the windows that have not been used, and the situations
    /// that have not been met.
    std::vector<std::string> notReached() const { return reached_.missing(); }

  private:
    struct Act {
        const char* name;
        int weight;
        std::function<bool(const RandomSession&)> possible;
        void (RandomSession::*make)();
    };
    static constexpr std::size_t kMostPicked = 101;  ///< points of a row
    struct ExpectedBox {
        QString title, text;
        bool question = false, answer = true;
        bool whole = true;  ///< else the text holds `text`
    };
    struct ExpectedFile {
        QString answer;  ///< empty for Cancel
        bool toSave = false;
    };
    using Action = std::function<void()>;
    static const std::vector<Act>& acts();

    // Chance.
    int below(int bound) { return static_cast<int>(random_() % static_cast<std::uint64_t>(bound)); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T>
    T oneOf(const std::vector<T>& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }
    double numberBetween(double low, double high) { return low + (high - low) * below(1'000'001) / 1e6; }

    // The user's hand, where it needs more than a control's name (SessionHand.cpp).
    /// Moves the pointer with a button down.
    static void drag(QWidget& widget, const QPoint& from, const QPoint& to,
                     Qt::MouseButton button = Qt::RightButton, Qt::KeyboardModifiers held = Qt::NoModifier);
    /// Presses a key on a control of a window in front, "frmMain.Chart2D3 Del".
    void pressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void bringToFront(QWidget& window);
    /// Chooses a menu item of a window, or clicks a control.
    static void use(QWidget& window, const QString& name);
    /// Does so, or presses the key that stands for it.
    void useOrPress(QWidget& window, const QString& name, int key, Qt::KeyboardModifiers modifiers = {});
    void leave(QWidget& window, const QString& name) { useOrPress(window, name, Qt::Key_Escape); }
    void wantKeys();
    void wantSituations();

    // What is expected and what differs.
    void expect(const QString& text, const QString& title = QStringLiteral("VARN-Tessel"));
    /// A box with a text that holds `part`: what the system calls the reason is not ours to say.
    void expectFailure(const std::string& part);
    void expectQuestion(bool answer, const QString& text);
    void expectFile(const QString& answer, bool toSave = false) { files_.append({answer, toSave}); }
    bool respond(const MessageBox& box);
    QString respondWithFile(bool toSave);
    void differ(const std::string& what);
    template <typename T>
    void same(const std::string& what, const T& actual, const T& wanted);
    void sameText(const std::string& what, const QString& actual, const QString& wanted);
    /// A label's number, written with so many decimals; what it was calculated from has this size.
    void sameFigure(const std::string& what, const QString& actual, double wanted, int decimals,
                    double size = 0);

    // Comparison (SessionComparison.cpp).
    void compare();
    void compareSites();
    void compareRows();
    void compareMenus();
    void comparePlots();
    void compareGrid();
    void compareLag();
    void compareFollowingWindows();
    void compareRowPlots();
    void compareDistances();

    // The model beyond the survey.
    bool canChoose(const std::string& item) const;
    void setMenus(bool enabled, const std::vector<std::string>& items);
    void plotsHidden();
    /// The survey has changed otherwise than by an import: the view that is shown follows, or gives way.
    void plotsFollow();
    void statisticsFollow();
    bool rowsCanBeShown() const { return survey_.rowsUsable() && survey_.rowSizes().size() <= 250; }
    void surveyImported();
    void noSitesLeft();
    /// Chooses an item that wants sites, or sites and rows; true when the view is to open. Otherwise the
    /// boxes that say why not are expected before it is chosen.
    bool choose(const QString& item, bool wantsRows);

    // Acts taken back (SessionHistory.cpp).
    struct State {
        PlainSurvey survey;
        std::map<std::string, bool> menus;
        double totalA = 0, totalB = 0;
        bool counted = false, measured = false;
        long content = 0;
    };
    bool canTakeBack() const;
    void takeBack();
    bool canStep(bool back) const;
    void step(bool back);
    void jumpInHistory();
    void adoptState();
    void noteState();
    void noteContent();
    void offerSingleRow();
    /// From the present survey back to that of the first act, and forth again: bit for bit, and the same in a
    /// file byte for byte. Gives what differs.
    std::string wayBackAndForth();

    bool always() const { return true; }
    bool hasUnsaved() const { return content_ != exported_; }

    // Imports (SessionImports.cpp).
    void importTrimble();
    void importManyRows();
    bool enterControls(PlainTrimbleOptions& options);
    bool enterFormat(const PlainTrimbleOptions& options);
    void refuseControls(QWidget& window);
    void finishTrimbleImport(const PlainImport& import);
    void noteVast(const PlainSurvey& survey, const std::string& where);
    std::string trimbleFile(const PlainTrimbleOptions& options);
    void importGeneric();
    struct GenericFile;
    GenericFile genericFile(int layout, double cutoff);
    void finishGenericImport(QWidget& window, GenericFile& file);
    std::vector<PlainSite> drivenSites();

    // Row plots (SessionRowPlots.cpp).
    bool rowPlotsOpen() const { return editing_; }
    bool canStepRow() const { return editing_ && (back_ || forward_); }
    bool canDelete() const { return editing_ && delete_; }
    void openRowPlots();
    void stepRow();
    void compareKeyboardOfRowPlots();
    void plotRowNumber();
    void pickPoints();
    void pickPoint(Chart2D& chart);
    void toggleModel(int point);
    void walkAlongRow();
    void compareReadout(const Chart2D& chart, int point);
    double along(int point) const;
    bool isPickedAt(double horizontal) const;
    void deletePoints();
    void finishRowPlots();
    bool canSplit() const { return editing_ && picked_.size() == 1 && picked_[0] > 1 && survey_.rows < 250; }
    void splitRow();
    void showRow(int row);
    void openEditorAtRowOne();

    // The map (SessionMap.cpp).
    void editOnMap();
    struct Map;
    void clip(Map& map);
    void drawRectangle(Map& map);
    bool touchesSite(const Map& map, const QPoint& from, const QPoint& to) const;
    void maskInside(Map& map, const QPoint& from, const QPoint& to);
    QPoint walkOverMap(Map& map);
    void chooseZone(Map& map);
    void lookCloser(Map& map);
    void compareReadout(Map& map, const QPoint& pixel);
    void comparePicture(Map& map);
    void compareMapControls(Map& map, bool clipping);
    void restore(Map& map);
    void decideOnMasked(Map& map);
    void leaveMap(Map& map);
    void checkRowsAfterMap(Map& map);
    void compareMap(Map& map);
    struct MapStep;
    void noteMapStep(Map& map, const MapStep& before, bool deletes);
    MapStep stateOfMap(const Map& map) const;
    void takeBackOnMap(Map& map, bool clipping);

    // Windows that look for something (SessionSearches.cpp).
    void findTurns();
    void enterTurns(QWidget& window);
    void compareTurns(QWidget& window);
    void findSuspectSites();
    void chooseRules(QWidget& window);
    SuspectParameters rulesIn(QWidget& window);
    void deleteSuspectSites(QWidget& window, const std::vector<bool>& condemned);
    void takeOverTurns(bool deleted, const std::vector<int>& kept);

    // Other windows and views (SessionWindows.cpp).
    bool canEditRows() const { return rowDialog_ || canChoose("mnuData"); }
    void plotGrid();
    void showGrid(const QString& item);
    void plotLag();
    void reviewRows();
    void adjust();
    /// Applies what was entered to the model; false when it is refused.
    using Adjustment = std::function<bool()>;
    Adjustment enterAdjustment(QWidget& window);
    Adjustment enterShift(QWidget& window, const QString& column, double PlainSite::*reading, double& total);
    Adjustment enterFactor(QWidget& window, const QString& column, double PlainSite::*reading);
    void expectAdjustmentProblem();
    void histograms();
    void correlation();
    void exportSurvey();
    bool hasActs() const { return acts_ > 0; }
    void saveAndReopen();
    void reopen(const QString& path);
    bool exportInto(QWidget& window, bool withRows);
    void clearScreen();
    void tryToClose();
    void compareStatistics(QWidget& window, bool relative);
    void compareAdjustment(QWidget& window, const std::vector<PlainSite>& shown);
    void compareHistograms(QWidget& window);

    // Charts and paper (SessionCharts.cpp).
    bool chartShown() const { return editing_ || !chart_.isEmpty(); }
    bool canPrint() const { return editing_ && print_; }
    void lookCloser();
    void lookCloser(Chart2D& chart);
    void lookCloserByKeys(Chart2D& chart);
    void printRow();
    /// Chooses something that prints, with a printer or without; a print job may fail.
    void print(const Action& choose);

    // The row dialog (SessionRows.cpp).
    void editRows();
    void joinRows(QWidget& dialog);
    void deleteRow(QWidget& dialog);
    void recalculate(QWidget& dialog);
    void acceptDistance(int measure, const QString& entry, const Action& accept);
    void compareForecast(QWidget& dialog, int measure, const QString& entry);
    bool canDragDistance() const {
        return chart_ == QStringLiteral("Chart2D1") && (rowDialog_ || canEditRows());
    }
    void dragDistance();
    QPoint placeInPlot(Chart2D& chart);
    std::vector<long> rowsOfGrid() const;

    const std::uint64_t seed_;
    std::mt19937_64 random_;
    TemporaryFolder folder_;
    std::unique_ptr<frmMain> main_;
    RowPlotEditor* editor_ = nullptr;

    QList<ExpectedBox> boxes_;
    QList<ExpectedFile> files_;
    QString printer_;
    Reached reached_;
    std::string difference_;
    std::map<std::string, long> made_;

    PlainSurvey survey_;
    std::vector<std::optional<State>> states_;  ///< by how many acts are in force; not all are known
    std::size_t acts_ = 0;                      ///< in force when they were noted last
    /// The survey's: one that was entered for an import that came to nothing is in force, but no way back
    /// leads to it.
    double ownDistance_ = 0;
    Survey first_;                  ///< as it stood behind the first act when it was seen last
    std::vector<PlainSite> noted_;  ///< the sites then
    long content_ = 0;              ///< another one for each other survey
    long notedContent_ = 0;
    std::uint64_t journalsContent_ = 0;
    long contents_ = 0;      ///< numbers given away
    bool hasFile_ = false;   ///< the survey has been saved
    long exported_ = -1;     ///< of the survey as it was written last
    bool counted_ = false;   ///< the sites of each row have been counted since they changed
    bool measured_ = false;  ///< the distances have been calculated
    double totalA_ = 0, totalB_ = 0;
    std::string log_;  ///< the error log
    std::map<std::string, bool> menus_;
    QString chart_;           ///< the chart shown, but for the row plots
    bool gridOfEM2_ = false;  ///< the survey grid is in the colours of the second reading
    bool gridOfRows_ = true;  ///< it is in the colours of the rows
    int lagMeasure_ = 1;      ///< of the lag distance plot shown last
    double redLine_ = 0;      ///< where its red line stands
    bool rowDialog_ = false;
    RowTurns turns_;  ///< found last
    /// The measure and the distance that stand in the row dialog.
    std::optional<std::pair<int, double>> typed_;
    QString statistics_;  ///< what the window of the row statistics says while it is open

    // The row plots.
    bool editing_ = false, byX_ = false, emptied_ = false;
    bool back_ = false, forward_ = false, delete_ = false, print_ = false, byNumber_ = false;
    int row_ = 0;
    bool many_ = false;        ///< the next survey is to have many rows, or a long one
    int cursor_ = 0;           ///< the point that the keys have come to
    std::vector<int> picked_;  ///< points of the row, from 1
};

template <typename T>
void RandomSession::same(const std::string& what, const T& actual, const T& wanted) {
    if (actual == wanted) return;
    differ(what + " is " + std::to_string(actual) + ", expected " + std::to_string(wanted));
}

}  // namespace tessel
