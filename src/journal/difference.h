// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"
#include "journal/row_numbers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tessel {

/// The columns of a survey that hold a Double a site: those of SiteData under their numbers, and these.
enum SurveyColumn : int { kSiteIDs = kSiteColumns, kTrueDist, kXDist, kYDist, kSurveyColumns };

/// What an act has changed of a survey: enough to take the survey back to the bit, and forth again, and no
/// copy of it. What computes makes one before it changes anything, keeps in it what it is about to change,
/// and returns it.
///
/// Whatever fails for want of memory fails before the survey is touched: in the constructor, in the keep
/// functions, in a call of back() or forth().
class Difference {
  public:
    Difference() = default;
    /// Keeps the figures, how much storage there is, and which distances are not calculated.
    explicit Difference(const Survey& survey);

    /// Keeps these figures instead: those from before anything was counted for the act.
    void keepFigures(const SurveyFigures& figures) { figures_ = figures; }
    /// The parameters of the survey before the act, where they are others than those that were kept.
    void keepParameters(const SurveyParameters& parameters);
    /// Keeps sites that are about to be taken out, given their runs (in order, with a site between any two):
    /// their entries in all columns, and of the distances that are in step those behind them too, which will
    /// be distances across a gap. Of the others, which will be calculated or emptied, all is kept.
    void keepSites(Survey& survey, std::vector<IndexRange> runs);
    /// Keeps the row numbers of all sites.
    void keepRowNumbers(const Survey& survey);
    /// Keeps distances that are about to be calculated (by 1 true distance, 2 along X, 3 along Y): those that
    /// are in step will come out as they are.
    void keepDistances(const Survey& survey, int measure);
    /// Keeps all distances as they are, for an act that moves the sites. X and Y can be exchanged after that
    /// without fail.
    void keepAllDistances(const Survey& survey);
    /// Puts a column of readings or coordinates in the place of that which there is, and keeps that.
    /// Requires a column of SiteData, and as many entries as there is storage.
    void exchangeColumn(Survey& survey, SiteColumn column, std::vector<double> values);
    /// Entries of a column that are to become others. Requires a column of which no whole is exchanged, and
    /// sites that stay, in order, with their numbers before any is taken out. They do with the first call of
    /// exchangeEntries, which is due while no site has been taken out; a second one takes them back.
    void keepEntries(SiteColumn column, std::vector<SiteIndex> sites, std::vector<double> values);
    void exchangeEntries(Survey& survey) noexcept;
    /// Puts another survey in the place of the whole, and keeps that.
    void exchangeSurvey(Survey& survey, Survey next);

    /// Take the survey to what it was before the act, and to what it was after it; in turns.
    void back(Survey& survey) { turn(survey, true); }
    void forth(Survey& survey) { turn(survey, false); }

    /// Whether a file written from the survey after the act may differ from one written before.
    /// Requires the survey as it is after the act.
    bool changesContent(const Survey& after) const;
    /// The runs of the sites taken out.
    const std::vector<IndexRange>& removed() const { return runs_; }
    /// Of each of them its line in the sensor file, and its site number; empty where the survey has none.
    std::span<const std::uint32_t> removedLines() const { return lines_; }
    std::span<const double> removedSiteNumbers() const { return removedEntries(kSiteIDs); }
    /// And of any column that loses entries with the sites: a SiteColumn or a SurveyColumn.
    std::span<const double> removedEntries(int column) const;
    /// Whether sites have other positions after the act.
    bool movesSites() const;
    /// What it holds in memory.
    std::size_t bytes() const;

    /// The same act as one that waits to be done: forth() takes the survey as it was before the act to what
    /// it is now. Requires the survey right after the act. Where the act has replaced the whole survey, the
    /// one that waits would be a copy of it, and is left out.
    Difference waiting(const Survey& after) const;

    struct Taken {
        int column = 0;
        std::vector<double> values;  ///< of the sites taken out, in order
        std::vector<double> behind;  ///< of distances, the entry behind each run as it is on the other side
    };
    struct Whole {
        int column = 0;
        std::vector<double> values;  ///< as they are on the other side
    };
    struct Entries {
        int column = 0;
        std::vector<SiteIndex> sites;  ///< by their numbers before any is taken out
        std::vector<double> values;    ///< as they are on the other side
    };
    /// Hands all that it holds to visit(), for whoever keeps it in a file. Whoever changes it sees to it that
    /// it fits the survey it will be used on (storage/work_check.h).
    template <typename Self, typename Visit>
    static void forEachField(Self& self, Visit&& visit) {
        visit(self.figures_, self.capacity_, self.runs_, self.taken_, self.lines_, self.whole_, self.entries_,
              self.rows_, self.survey_);
    }

  private:
    void turn(Survey& survey, bool back);
    void reserve(Survey& survey) const;
    void insertSites(Survey& survey);
    void takeSites(Survey& survey);
    void exchangeBehind(double* entries, Taken& taken) const;

    SurveyFigures figures_;  ///< of the other side, as all that follows
    SiteIndex capacity_ = 0;
    std::vector<IndexRange> runs_;
    std::vector<Taken> taken_;
    std::vector<std::uint32_t> lines_;  ///< of the sites taken out
    std::vector<Whole> whole_;
    std::vector<Entries> entries_;
    std::optional<RowNumbers> rows_;
    std::unique_ptr<Survey> survey_;
};

/// What a survey holds in memory.
SiteIndex bytesOf(const Survey& survey);

}  // namespace tessel
