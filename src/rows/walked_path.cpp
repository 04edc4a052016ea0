// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/walked_path.h"

#include "base/bounded.h"
#include "base/sample.h"

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

class PathFinder {
  public:
    PathFinder(const Survey& survey, const PathRules& rules)
        : x_(survey.SiteData.column(kX)),
          y_(survey.SiteData.column(kY)),
          rules_(rules),
          square_(rules.together * rules.together) {
        path_.sites = survey.NumSites;
    }

    WalkedPath find() {
        SiteIndex last = -1;  // the last site that is no stray
        for (SiteIndex i = 0; i < path_.sites; ++i) {
            if (last >= 0 && isGap(last, i)) {
                const SiteIndex back = backFromStray(last, i);
                if (back < path_.sites) {
                    path_.strays.push_back({i, back});
                    i = back;
                } else {
                    endPiece();
                }
            }
            take(i);
            last = i;
        }
        endPiece();
        return std::move(path_);
    }

  private:
    double apart(SiteIndex a, SiteIndex b) const {
        if (rules_.distanceMode == 2) return bounded(std::abs(x_[a] - x_[b]));
        if (rules_.distanceMode == 3) return bounded(std::abs(y_[a] - y_[b]));
        return lengthBetween(x_[a], y_[a], x_[b], y_[b]);
    }
    bool isGap(SiteIndex a, SiteIndex b) const { return apart(a, b) > rules_.gap; }

    // The site that jumps back to where the strays from `first` on left; the number of sites when none does.
    SiteIndex backFromStray(SiteIndex left, SiteIndex first) const {
        const double furthest = std::min(rules_.gap + rules_.stray, apart(left, first) / 2);
        int places = 1;
        for (SiteIndex i = first + 1; i < path_.sites; ++i) {
            if (x_[i] == x_[i - 1] && y_[i] == y_[i - 1]) continue;
            if (isGap(i - 1, i) && apart(left, i) <= std::min(furthest, apart(i - 1, i) / 2)) return i;
            if (++places > kMostStrays) break;
        }
        return path_.sites;
    }

    bool isHere(SiteIndex i) const {
        const double dx = x_[i] - sumX_ / count_;
        const double dy = y_[i] - sumY_ / count_;
        return dx * dx + dy * dy <= square_;
    }

    void take(SiteIndex i) {
        if (count_ == 0) {
            begin(i);
        } else if (isHere(i)) {
            add(i);
        } else if (outside_ < 0) {
            outside_ = i;
            return;
        } else {
            leaveFor(i);
            return;
        }
        outside_ = -1;
    }

    // Two sites in a row are outside: the first begins the next place, the second too unless it is there.
    void leaveFor(SiteIndex i) {
        endPlace();
        begin(outside_);
        outside_ = -1;
        if (isHere(i))
            add(i);
        else
            outside_ = i;
    }

    void begin(SiteIndex i) {
        first_ = i;
        sumX_ = x_[i];
        sumY_ = y_[i];
        count_ = 1;
    }
    void add(SiteIndex i) {
        sumX_ += x_[i];
        sumY_ += y_[i];
        count_ += 1;
    }

    void endPlace() {
        WayPlace place{sumX_ / count_, sumY_ / count_, 0, first_};
        if (static_cast<std::int64_t>(path_.places.size()) > pieceBegin_) {
            const WayPlace& before = path_.places.back();
            place.way = bounded(before.way + lengthBetween(before.x, before.y, place.x, place.y));
        }
        path_.places.push_back(place);
        count_ = 0;
    }

    void endPiece() {
        if (count_ == 0) return;
        endPlace();
        if (outside_ >= 0) {
            begin(outside_);
            endPlace();
        }
        outside_ = -1;
        const auto end = static_cast<std::int64_t>(path_.places.size());
        path_.pieces.push_back({pieceBegin_, end});
        pieceBegin_ = end;
    }

    const double* x_;
    const double* y_;
    PathRules rules_;
    double square_;
    WalkedPath path_;
    std::int64_t pieceBegin_ = 0;
    // The place under way: its first site, the sum of its sites, and one outside that may begin another.
    SiteIndex first_ = 0;
    double sumX_ = 0, sumY_ = 0, count_ = 0;
    SiteIndex outside_ = -1;
};

}  // namespace

WalkedPath walkedPath(const Survey& survey, const PathRules& rules) {
    return PathFinder(survey, rules).find();
}

IndexRange withoutStrayEnds(const WalkedPath& path, IndexRange sites) {
    const auto endsBehind = [](SiteIndex site, const IndexRange& run) { return site < run.last; };
    const auto begin = path.strays.begin();
    const auto end = path.strays.end();
    const auto atFirst = std::upper_bound(begin, end, sites.first, endsBehind);
    if (atFirst != end && atFirst->first <= sites.first) sites.first = atFirst->last;
    const auto atLast = std::upper_bound(begin, end, sites.last - 1, endsBehind);
    if (atLast != end && atLast->first < sites.last) sites.last = atLast->first;
    return {sites.first, std::max(sites.first, sites.last)};
}

WayPoint pointOnWay(const WalkedPath& path, const IndexRange& piece, std::int64_t i, double way) {
    const WayPlace& a = path.place(i);
    if (i + 1 >= piece.last) return {a.x, a.y};
    const WayPlace& b = path.place(i + 1);
    const double part = b.way > a.way ? (way - a.way) / (b.way - a.way) : 0;
    return {a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
}

double medianStep(const Survey& survey) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    std::vector<double> steps = sampleOf(
        survey.NumSites - 1, [=](SiteIndex i) { return lengthBetween(x[i + 1], y[i + 1], x[i], y[i]); });
    return medianBesideZero(steps);
}

}  // namespace tessel
