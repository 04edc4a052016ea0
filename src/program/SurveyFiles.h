// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/input_file.h"
#include "storage/recovery_keeper.h"
#include "storage/saved_work.h"

#include <QObject>

#include <chrono>
#include <deque>
#include <optional>
#include <string>

namespace tessel {

class ProcessingRecords;
class frmMain;

/// Saves the survey with its history and opens it again, and says in the main window's quiet line which file
/// it is and whether it holds the survey as it is. Keeps what is not saved in a recovery file as well, and
/// offers in the main window's calm text what programs that were ended have left behind.
class SurveyFiles : public QObject {
    Q_OBJECT

  public:
    /// `stateFolder` is where recovery files lie; empty for nowhere.
    SurveyFiles(frmMain& main, ProcessingRecords& records, const std::string& stateFolder);
    ~SurveyFiles() override;

    void mnuOpenSurvey_Click();
    void mnuSaveSurvey_Click();
    void mnuSaveSurveyAs_Click();

    /// Puts the file's survey in the place of the present one; the user is asked when changes of that would
    /// be lost. A file of another program is left to whoever hears foreignChosen(). Throws RunTimeError, and
    /// the present one stays, when the file cannot be opened.
    void open(const std::string& path);
    /// Whether a file is to be opened, and not imported, when it is all that a user hands over.
    static bool isSurveyFile(const std::string& path);

    /// The journal is another one now.
    void followJournal();

  Q_SIGNALS:
    /// The survey, its history and what is known of its imports are those of a file.
    void opened();
    /// After opened(): it was left in the middle of the map, with gaps between its rows, which are one row
    /// now.
    void rowsLost();
    /// The file to be opened is of another program, and has layers of points.
    void foreignChosen(const QString& path);

  private:
    /// Where the journal stands, told from everywhere else it can stand.
    struct Place {
        std::size_t acts = 0;
        std::chrono::system_clock::time_point lastAct;
        std::size_t exports = 0;  ///< and tables, which are known to the record
        bool operator==(const Place&) const = default;
    };
    Place placeNow() const;
    bool isSaved() const { return placeNow() == saved_; }
    bool mayReplaceSurvey();
    bool fileIsAsWeKnowIt() const;
    void save(const std::string& chosen);
    void noteFile(const std::string& path, const std::optional<FileState>& state);
    void adopt(SavedWork work);
    void tellOfRecovery(const std::string& problem);
    SavedWork readLeftWork(bool& isAll);
    void letGoOfReopened();
    void offerLeftWork();
    void reopenLeftWork();
    void discardLeftWork();

    frmMain& main_;
    ProcessingRecords& records_;
    std::string path_;                // of the file that was saved or opened last; empty for none
    std::optional<FileState> state_;  // nothing where another program has written to it
    Place saved_;
    RecoveryKeeper keeper_;
    QString recoveryProblem_;
    std::deque<LeftWork> left_;         // the one that is offered in front
    std::optional<LeftWork> reopened_;  // as long as what has been made of it is kept nowhere else
};

}  // namespace tessel
