#pragma once

#include "support/plain_survey.h"
#include "support/temporary_folder.h"

#include <QList>
#include <QPoint>
#include <QString>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

class Chart2D;
class QWidget;
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

  private:
    struct Act {
        const char* name;
        int weight;
        bool (RandomSession::*possible)() const;
        void (RandomSession::*make)();
    };
    struct ExpectedBox {
        QString title, text;
        bool question = false, answer = true;
    };
    static const std::vector<Act>& acts();

    // Chance.
    int below(int bound) { return static_cast<int>(random_() % static_cast<std::uint64_t>(bound)); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T>
    T oneOf(const std::vector<T>& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }
    double numberBetween(double low, double high) { return low + (high - low) * below(1'000'001) / 1e6; }

    /// Moves the pointer over a widget; not by way of the screen's pointer, which finds the window on top.
    static void movePointer(QWidget& widget, const QPoint& pixel);

    // What is expected and what differs.
    void expect(const QString& text, const QString& title = QStringLiteral("VARN-Tessel"));
    void expectQuestion(bool answer, const QString& text);
    bool respond(const MessageBox& box);
    QString respondWithFile();
    void differ(const std::string& what);
    template <typename T>
    void same(const std::string& what, const T& actual, const T& wanted);
    void sameText(const std::string& what, const QString& actual, const QString& wanted);

    // Comparison (SessionComparison.cpp).
    void compare();
    void compareSites();
    void compareRows();
    void compareMenus();
    void comparePlots();
    void compareRowPlots();

    // The model beyond the survey.
    bool canChoose(const std::string& item) const;
    void setMenus(bool enabled, const std::vector<std::string>& items);
    void plotsHidden();
    void surveyImported();
    void noSitesLeft();
    /// Chooses an item that wants sites, or sites and rows; true when the view is to open. Otherwise the
    /// boxes that say why not are expected before it is chosen.
    bool choose(const QString& item, bool wantsRows);

    bool always() const { return true; }
    bool hasUnsaved() const { return !saved_; }

    // Imports (SessionImports.cpp).
    void importTrimble();
    bool enterControls(PlainTrimbleOptions& options);
    bool enterFormat(const PlainTrimbleOptions& options);
    void refuseControls(QWidget& window, PlainTrimbleOptions& options);
    void finishTrimbleImport(const PlainImport& import);
    std::string trimbleFile(const PlainTrimbleOptions& options);
    void importGeneric();
    struct GenericFile;
    GenericFile genericFile(int layout, double cutoff);
    void refuseGeneric(QWidget& window);
    void finishGenericImport(QWidget& window, const GenericFile& file);
    std::vector<PlainSite> drivenSites();

    // Row plots (SessionRowPlots.cpp).
    bool canPlotRows() const { return canChoose("mnuX"); }
    bool rowPlotsOpen() const { return editing_; }
    bool canStep() const { return editing_ && (back_ || forward_); }
    bool canDelete() const { return editing_ && delete_; }
    void openRowPlots();
    void stepRow();
    void plotRowNumber();
    void pickPoints();
    void pickPoint(Chart2D& chart);
    void deletePoints();
    void finishRowPlots();
    void showRow(int row);
    void openEditorAtRowOne();

    // The map (SessionMap.cpp).
    bool canMap() const { return canChoose("mnuIDEW"); }
    void editOnMap();
    struct Map;
    void clip(Map& map);
    bool drawRectangle(Map& map);
    void decideOnMasked(Map& map);
    void leaveMap(Map& map);
    void checkRowsAfterMap(Map& map);
    void compareMap(Map& map);

    // Other windows and views (SessionWindows.cpp).
    bool canPlotGrid() const { return canChoose("mnuGrid"); }
    bool canPlotLag() const { return canChoose("mnuTrue_Dis"); }
    bool canReview() const { return canChoose("mnuStat"); }
    bool canAdjust() const { return canChoose("mnuAdjust"); }
    bool canAnalyse() const { return canChoose("mnuHist"); }
    bool canExport() const { return canChoose("mnuSave"); }
    bool canClear() const { return canChoose("mnuClear"); }
    bool canEditRows() const { return rowDialog_ || canChoose("mnuData"); }
    void plotGrid();
    void plotLag();
    void reviewRows();
    void adjust();
    void adjustOnce(QWidget& window);
    void expectAdjustmentProblem();
    void histograms();
    void correlation();
    void exportSurvey();
    void refuseFirstRows(QWidget& window);
    void clearScreen();
    void otherItems();
    void tryToClose();
    // The row dialog (SessionRows.cpp).
    void editRows();
    void joinRows(QWidget& dialog);
    void deleteRow(QWidget& dialog);
    void recalculate(QWidget& dialog);

    const std::uint64_t seed_;
    std::mt19937_64 random_;
    TemporaryFolder folder_;
    std::unique_ptr<frmMain> main_;
    RowPlotEditor* editor_ = nullptr;

    QList<ExpectedBox> boxes_;
    QList<QString> files_;
    std::string difference_;
    std::map<std::string, long> made_;

    PlainSurvey survey_;
    bool saved_ = false;
    bool counted_ = false;   ///< the sites of each row have been counted since they changed
    bool measured_ = false;  ///< the distances have been calculated
    double totalA_ = 0, totalB_ = 0;
    std::map<std::string, bool> menus_;
    QString chart_;  ///< the chart shown, but for the row plots
    bool rowDialog_ = false;
    QString statistics_;  ///< what the window of the row statistics says while it is open

    // The row plots.
    bool editing_ = false, byX_ = false, emptied_ = false;
    bool back_ = false, forward_ = false, delete_ = false, print_ = false;
    int row_ = 0;
    std::vector<int> picked_;  ///< points of the row, from 1
};

template <typename T>
void RandomSession::same(const std::string& what, const T& actual, const T& wanted) {
    if (actual == wanted) return;
    differ(what + " is " + std::to_string(actual) + ", expected " + std::to_string(wanted));
}
