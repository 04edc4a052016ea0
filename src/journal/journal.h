// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "journal/difference.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace tessel {

// The survey that is being cleaned, and what has been done to it.

/// What an act is, as a program tells it from others.
enum class ActKind {
    kImport,
    kFindRows,
    kFindTurns,  ///< rows, by the turns between them
    kJoinRows,
    kSplitRow,
    kDeleteRow,
    kDeletePicked,    ///< sites picked on the row plots
    kDeleteMasked,    ///< sites masked on the map
    kDeleteSuspects,  ///< sites that rules found suspicious
    kLoseRows,        ///< the row information, which masked sites took with them
    kAdjust,
    kConvert  ///< what X and Y are: told, or made of degrees
};

/// The word for it in a file: "delete-row".
const char* wordOf(ActKind kind);
/// The kind that has this word, or none.
std::optional<ActKind> actKindOf(std::string_view word);

/// What an act is, in words.
struct ActDescription {
    ActKind kind = ActKind::kImport;
    std::string order;  ///< behind "Undo: ", as one is told to do it: "delete row 4"
    std::string words;  ///< what has been done: "Deleted row 4 with its 12 sites"
    std::vector<std::pair<std::string, std::string>> parameters;  ///< name with unit, and value
};

/// Something that was done to the survey.
struct Act : ActDescription {
    explicit Act(ActDescription description) : ActDescription(std::move(description)) {}

    std::chrono::system_clock::time_point time;
    SiteIndex sites = 0;  ///< how many there were after it
    int rows = 0;         ///< above kMaxRows when there were too many
    /// The survey can stay as it was after the act. False after sites were deleted on the map and rows with
    /// them: the row information is lost when the map is closed.
    bool canRest = true;
    std::uint32_t menus = 0;    ///< which menu items were enabled after it (MenuState in app/menu_items)
    std::uint64_t content = 0;  ///< surveys of which a file would be the same have the same number
    Difference difference;
};

/// What can happen to a journal.
enum class JournalEvent {
    kActed,    ///< an act was done: the last one
    kMoved,    ///< acts were taken back or done again
    kCounted,  ///< counts, extents or distances were looked for anew
    kNoted     ///< parameters were set, or something was noted of the act done last
};

/// The survey of the process and its acts, in order. Nothing changes the survey after its import but acts:
/// everybody else reads it.
///
/// The survey stands behind some act, its position: acts before it are in force, those behind it have been
/// taken back and can be done again until another act takes their place.
class Journal {
  public:
    /// Holds acts of up to so many bytes; the oldest are forgotten above that.
    explicit Journal(std::size_t mostBytes);

    const Survey& survey() const { return survey_; }

    /// An act: change(survey) changes it and returns the difference, or what has a member `difference`.
    /// Returns the latter, without the difference. What has been taken back is forgotten. Where `change`
    /// throws it must have left the survey as it was, and there is no act.
    template <typename Change>
    auto perform(ActDescription description, Change change);
    /// The act of an import, which numbers it. The totals of adjustments go on.
    void replaceSurvey(ActDescription description, Survey next);

    /// Does what was done once in a journal that was as this one is: the act's difference waits to be made
    /// in this survey.
    void doAgain(Act act);

    /// What belongs to no act: parameters of an import that is only prepared, with which the survey goes on
    /// but to which no way back leads; and what is counted or measured anew in the sites as they are.
    void setParameters(const SurveyParameters& parameters);
    void recount(const std::function<void(const Survey& survey, SurveyCounts& counts)>& count);
    void remeasure(const std::function<void(const Survey& survey, SurveyCounts& counts,
                                            DistanceArrays& distances)>& measure);

    /// How many acts are known, and how many of them are in force.
    std::size_t size() const { return acts_.size(); }
    std::size_t position() const { return position_; }
    /// Requires i < size().
    const Act& act(std::size_t i) const { return acts_[i]; }
    /// How many acts are no longer known, because there were too many; and how many are in force with them.
    std::size_t forgotten() const { return forgotten_; }
    std::size_t actsInForce() const { return forgotten_ + position_; }
    /// The first act in force behind the last import, or position() when there is none.
    std::size_t firstSinceImport() const;

    /// Where one step back or forth leads: the nearest position at which the survey can rest, or position()
    /// when there is none.
    std::size_t positionBefore() const;
    std::size_t positionAfter() const;
    /// The nearest position at which the survey can rest, rather behind this one than before it.
    std::size_t restNear(std::size_t position) const;
    /// Not beyond size(). Where memory runs out the survey stands behind the last act that could be reached
    /// and at which it can rest.
    void goTo(std::size_t position);

    /// Whether the survey can rest at a position: behind an act that allows it, or before all.
    bool canRestAt(std::size_t position) const;
    /// The last act has changed the survey in such a way that it cannot stay so.
    void cannotRest();

    /// Menus as they are now, and as they were when the survey stood here last.
    void noteMenus(std::uint32_t menus);
    std::uint32_t menus() const { return position_ == 0 ? menusBefore_ : acts_[position_ - 1].menus; }

    /// The survey has been written to a file; and whether a file has been written of the survey as it is.
    void noteExport();
    bool isExported() const { return exported_ == content(); }

    /// A number that is the same for surveys of which a file would be the same.
    std::uint64_t content() const { return position_ == 0 ? contentBefore_ : acts_[position_ - 1].content; }

    /// What the acts hold in memory, and what they may.
    std::size_t bytes() const { return bytes_; }
    std::size_t mostBytes() const { return mostBytes_; }

    /// Has every event told from now on, when all of it has been done; nothing may be thrown.
    void watch(std::function<void(JournalEvent)> watcher) { watcher_ = std::move(watcher); }
    /// Puts all that another journal knows in the place of what this one knows, without an event. The oldest
    /// acts are forgotten where they are too many for it.
    void become(Journal other) noexcept;

    /// Hands all that it knows to visit(), for whoever keeps it in a file. Whoever changes it sees to it that
    /// its parts fit together (storage/work_check.h).
    template <typename Self, typename Visit>
    static void forEachField(Self& self, Visit&& visit) {
        visit(self.survey_, self.own_, self.acts_, self.position_, self.forgotten_, self.menusBefore_,
              self.contentBefore_, self.restsBefore_, self.contents_, self.imports_, self.exported_);
    }

  private:
    friend Survey& surveyUnderTest();

    void complete(Difference difference) noexcept;
    void forgetOldest() noexcept;
    void step(bool back);
    void returnToRest(std::size_t from, bool back);
    void happened(JournalEvent event) const {
        if (watcher_) watcher_(event);
    }

    Survey survey_;
    std::optional<SurveyParameters> own_;  ///< the survey's, while others have been set
    std::deque<Act> acts_;
    std::size_t position_ = 0;
    std::size_t forgotten_ = 0;
    std::size_t bytes_ = 0;
    std::size_t mostBytes_;
    std::uint32_t menusBefore_ = 0;
    std::uint64_t contentBefore_ = 0;
    bool restsBefore_ = true;
    std::uint64_t contents_ = 0;  ///< numbers given away
    int imports_ = 0;
    std::uint64_t exported_ = UINT64_MAX;
    std::function<void(JournalEvent)> watcher_;
};

/// The one journal of the process, and the survey in it. Windows use them; what computes takes the survey
/// that it works on as an argument.
Journal& theJournal();
inline const Survey& theSurvey() {
    return theJournal().survey();
}

template <typename Change>
auto Journal::perform(ActDescription description, Change change) {
    // Its place first, so that nothing can fail once the survey has been changed.
    acts_.emplace_back(std::move(description));
    try {
        if constexpr (std::is_same_v<decltype(change(survey_)), Difference>) {
            complete(change(survey_));
        } else {
            auto result = change(survey_);
            complete(std::exchange(result.difference, Difference()));
            return result;
        }
    } catch (...) {
        acts_.pop_back();
        throw;
    }
}

}  // namespace tessel
