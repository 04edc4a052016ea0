// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/journal.h"

#include "base/session.h"

#include <algorithm>
#include <new>
#include <unistd.h>
#include <utility>

namespace tessel {

namespace {

// A gibibyte, or a quarter of the computer's memory where that is less.
std::size_t mostBytesHere() {
    constexpr std::size_t kMost = std::size_t{1} << 30;
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long page = ::sysconf(_SC_PAGE_SIZE);
    if (pages <= 0 || page <= 0) return kMost;
    return std::min(kMost, static_cast<std::size_t>(pages) / 4 * static_cast<std::size_t>(page));
}

}  // namespace

const char* wordOf(ActKind kind) {
    switch (kind) {
        case ActKind::kImport:
            return "import";
        case ActKind::kFindRows:
            return "find-rows";
        case ActKind::kFindTurns:
            return "find-rows-by-turns";
        case ActKind::kJoinRows:
            return "join-rows";
        case ActKind::kSplitRow:
            return "split-row";
        case ActKind::kDeleteRow:
            return "delete-row";
        case ActKind::kDeletePicked:
            return "delete-picked-sites";
        case ActKind::kDeleteMasked:
            return "delete-masked-sites";
        case ActKind::kDeleteSuspects:
            return "delete-suspicious-sites";
        case ActKind::kLoseRows:
            return "lose-rows";
        case ActKind::kAdjust:
            return "adjust-readings";
        case ActKind::kConvert:
            return "convert-positions";
    }
    return "";
}

std::optional<ActKind> actKindOf(std::string_view word) {
    for (int kind = 0; *wordOf(static_cast<ActKind>(kind)) != '\0'; ++kind)
        if (word == wordOf(static_cast<ActKind>(kind))) return static_cast<ActKind>(kind);
    return std::nullopt;
}

Journal::Journal(std::size_t mostBytes) : mostBytes_(mostBytes) {}

void Journal::replaceSurvey(ActDescription description, Survey next) {
    next.importNumber = ++imports_;
    next.EMAdjustTotalA = survey_.EMAdjustTotalA;
    next.EMAdjustTotalB = survey_.EMAdjustTotalB;
    perform(std::move(description), [&](Survey& survey) {
        Difference difference;
        difference.exchangeSurvey(survey, std::move(next));
        return difference;
    });
}

void Journal::doAgain(Act act) {
    for (; acts_.size() > position_; acts_.pop_back())
        bytes_ -= acts_.back().difference.bytes();
    contents_ = std::max(contents_, act.content);
    bytes_ += act.difference.bytes();
    acts_.push_back(std::move(act));
    goTo(acts_.size());
    imports_ = std::max(imports_, survey_.importNumber);
    forgetOldest();
}

void Journal::setParameters(const SurveyParameters& parameters) {
    if (!own_) own_ = survey_;
    static_cast<SurveyParameters&>(survey_) = parameters;
    happened(JournalEvent::kNoted);
}

void Journal::recount(const std::function<void(const Survey& survey, SurveyCounts& counts)>& count) {
    count(survey_, survey_);
    happened(JournalEvent::kCounted);
}

// The place of the act is the last one; in front of it may be some that have been taken back.
void Journal::complete(Difference difference) noexcept {
    Act& act = acts_.back();
    act.time = std::chrono::system_clock::now();
    act.sites = survey_.NumSites;
    // Of a search that found too many, the row at which it gave up.
    act.rows = survey_.RowIndex > kMaxRows ? survey_.RowIndex : survey_.NumRows;
    if (survey_.NumSites == 0) act.rows = 0;
    act.menus = menus();
    if (own_) difference.keepParameters(*std::exchange(own_, std::nullopt));
    act.content = difference.changesContent(survey_) ? ++contents_ : content();
    act.difference = std::move(difference);
    for (; acts_.size() > position_ + 1; acts_.erase(acts_.end() - 2))
        bytes_ -= acts_[acts_.size() - 2].difference.bytes();
    bytes_ += acts_.back().difference.bytes();
    ++position_;
    noteSurveyChange();
    forgetOldest();
    happened(JournalEvent::kActed);
}

void Journal::forgetOldest() noexcept {
    for (; bytes_ > mostBytes_ && position_ > 0; --position_, ++forgotten_) {
        const Act& oldest = acts_.front();
        menusBefore_ = oldest.menus;
        contentBefore_ = oldest.content;
        restsBefore_ = oldest.canRest;
        bytes_ -= oldest.difference.bytes();
        acts_.pop_front();
    }
}

std::size_t Journal::firstSinceImport() const {
    std::size_t first = position_;
    while (first > 0 && acts_[first - 1].kind != ActKind::kImport)
        --first;
    return first;
}

bool Journal::canRestAt(std::size_t position) const {
    return position == 0 ? restsBefore_ : acts_[position - 1].canRest;
}

void Journal::cannotRest() {
    (position_ > 0 ? acts_[position_ - 1].canRest : restsBefore_) = false;
    happened(JournalEvent::kNoted);
}

void Journal::noteExport() {
    exported_ = content();
    happened(JournalEvent::kNoted);
}

std::size_t Journal::positionBefore() const {
    for (std::size_t position = position_; position-- > 0;)
        if (canRestAt(position)) return position;
    return position_;
}

std::size_t Journal::positionAfter() const {
    for (std::size_t position = position_ + 1; position <= acts_.size(); ++position)
        if (canRestAt(position)) return position;
    return position_;
}

std::size_t Journal::restNear(std::size_t position) const {
    for (std::size_t behind = position; behind <= acts_.size(); ++behind)
        if (canRestAt(behind)) return behind;
    for (; position > 0; --position)
        if (canRestAt(position - 1)) return position - 1;
    return position_;
}

void Journal::goTo(std::size_t position) {
    position = std::min(position, acts_.size());
    if (position == position_) return;
    if (own_) static_cast<SurveyParameters&>(survey_) = *own_;
    own_.reset();
    const std::size_t from = position_;
    const bool back = position < position_;
    try {
        while (position_ != position)
            step(back);
    } catch (...) {
        returnToRest(from, !back);
        happened(JournalEvent::kMoved);
        throw;
    }
    happened(JournalEvent::kMoved);
}

// As far as it can: memory has run out.
void Journal::returnToRest(std::size_t from, bool back) {
    try {
        while (position_ != from && !canRestAt(position_))
            step(back);
    } catch (const std::bad_alloc&) {
        return;
    }
}

void Journal::step(bool back) {
    Difference& difference = acts_[back ? position_ - 1 : position_].difference;
    const std::size_t before = difference.bytes();
    back ? difference.back(survey_) : difference.forth(survey_);
    bytes_ = bytes_ - before + difference.bytes();
    position_ = back ? position_ - 1 : position_ + 1;
    noteSurveyChange();
}

void Journal::noteMenus(std::uint32_t menus) {
    std::uint32_t& noted = position_ == 0 ? menusBefore_ : acts_[position_ - 1].menus;
    if (std::exchange(noted, menus) != menus) happened(JournalEvent::kNoted);
}

void Journal::become(Journal other) noexcept {
    other.mostBytes_ = mostBytes_;
    other.watcher_ = std::move(watcher_);
    other.bytes_ = 0;
    for (const Act& act : other.acts_)
        other.bytes_ += act.difference.bytes();
    *this = std::move(other);
    noteSurveyChange();
    forgetOldest();
}

void Journal::remeasure(const std::function<void(const Survey& survey, SurveyCounts& counts,
                                                 DistanceArrays& distances)>& measure) {
    measure(survey_, survey_, survey_);
    happened(JournalEvent::kCounted);
}

Journal& theJournal() {
    static Journal journal(mostBytesHere());
    return journal;
}

}  // namespace tessel
