// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/turn_search.h"

#include "base/bounded.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>

namespace tessel {

namespace {

// Sites are one place within this part of a chord, and on a row's line within this part of it.
constexpr double kTogether = 1.0 / 8;
constexpr double kOnLine = 1.0 / 8;

// From one point to another.
struct Way {
    double x = 0, y = 0;
    Way(const WayPoint& from, const WayPoint& to) : x(to.x - from.x), y(to.y - from.y) {}
    double length() const { return std::sqrt(x * x + y * y); }
    double along(const Way& other) const { return x * other.x + y * other.y; }
    double across(const Way& other) const { return x * other.y - y * other.x; }
};

bool turnsBeyond(double cosine, const Way& before, const Way& after) {
    return before.along(after) < cosine * before.length() * after.length();
}

double cosineOf(double degrees) {
    return std::cos(degrees * std::numbers::pi / 180);
}

// The stretches of a survey's way: ranges of places without a turn.
class StretchFinder {
  public:
    StretchFinder(const WalkedPath& path, const TurnParameters& parameters)
        : path_(path), parameters_(parameters), isTurn_(path.places.size(), 0) {}

    std::vector<IndexRange> find() {
        std::vector<IndexRange> found;
        for (const IndexRange& piece : path_.pieces) {
            markTurns(piece, parameters_.chord);
            for (const double wider : {2.0, 4.0})
                for (const IndexRange& stretch : stretchesOf(piece))
                    if (reverses(stretch)) markTurns(stretch, wider * parameters_.chord);
            for (const IndexRange& stretch : stretchesOf(piece))
                if (mayBeRow(stretch)) found.push_back(stretch);
        }
        return found;
    }

  private:
    WayPoint at(std::int64_t i) const { return {path_.place(i).x, path_.place(i).y}; }

    // Marks the places where the heading over a chord changes. Nearer to an end than half a chord there is
    // no heading.
    void markTurns(const IndexRange& within, double chord) {
        const double begin = path_.place(within.first).way;
        const double end = path_.place(within.last - 1).way;
        const double cosine = cosineOf(parameters_.turnAngle);
        std::int64_t behind = within.first;
        std::int64_t ahead = within.first;
        const auto pointAt = [&](std::int64_t& i, double way) {
            while (i + 1 < within.last && path_.place(i + 1).way <= way)
                ++i;
            return pointOnWay(path_, within, i, way);
        };
        for (std::int64_t i = within.first; i < within.last; ++i) {
            const double way = path_.place(i).way;
            const WayPoint from = pointAt(behind, std::max(begin, way - chord));
            const WayPoint to = pointAt(ahead, std::min(end, way + chord));
            if (way - begin < chord / 2 || end - way < chord / 2) continue;
            if (turnsBeyond(cosine, {from, at(i)}, {at(i), to})) isTurn_[static_cast<std::size_t>(i)] = 1;
        }
    }

    std::vector<IndexRange> stretchesOf(const IndexRange& piece) const {
        std::vector<IndexRange> stretches;
        const auto begin = isTurn_.begin();
        const auto end = begin + piece.last;
        for (auto first = std::find(begin + piece.first, end, 0); first != end;) {
            const auto last = std::find(first, end, 1);
            stretches.push_back({first - begin, last - begin});
            first = std::find(last, end, 0);
        }
        return stretches;
    }

    // Whether a stretch heads anywhere against the heading with which it begins.
    bool reverses(const IndexRange& stretch) const {
        const double cosine = cosineOf(120);
        std::int64_t behind = stretch.first;
        std::optional<Way> heading;
        for (std::int64_t i = stretch.first; i < stretch.last; ++i) {
            const double way = path_.place(i).way - parameters_.chord;
            if (way < path_.place(stretch.first).way) continue;
            while (behind + 1 < i && path_.place(behind + 1).way <= way)
                ++behind;
            const Way chord(at(behind), at(i));
            if (!heading) heading = chord;
            if (turnsBeyond(cosine, *heading, chord)) return true;
        }
        return false;
    }

    // A row reaches into its turns, up to about half a chord at each end.
    bool mayBeRow(const IndexRange& stretch) const {
        const WayPlace& first = path_.place(stretch.first);
        const WayPlace& last = path_.place(stretch.last - 1);
        return lengthBetween(first.x, first.y, last.x, last.y) + 2 * parameters_.chord >=
               parameters_.shortest;
    }

    const WalkedPath& path_;
    const TurnParameters& parameters_;
    std::vector<std::uint8_t> isTurn_;
};

// The line of a row's last (or first) chord: where its sites go on.
class RowLine {
  public:
    RowLine(const Survey& survey, const WayPoint& from, const WayPoint& to, double chord)
        : x_(survey.SiteData.column(kX)),
          y_(survey.SiteData.column(kY)),
          to_(to),
          heading_(from, to),
          length_(heading_.length()),
          chord_(chord) {}

    // The furthest site along the line of those from `first` to before `stop` (step 1 or -1) that lie on it;
    // `none` where there is none. Two in a row beside it end the row; one far away is a stray.
    SiteIndex furthest(SiteIndex first, SiteIndex stop, SiteIndex step, SiteIndex none) const {
        SiteIndex best = none;
        double bestAlong = -kOnLine * chord_;
        int beside = 0;
        for (SiteIndex i = first; i != stop && beside < 2; i += step) {
            const Way way(to_, {x_[i], y_[i]});
            const double across = std::abs(way.across(heading_)) / length_;
            if (!(across <= 2 * chord_)) continue;
            beside = across > kOnLine * chord_ ? beside + 1 : 0;
            const double along = way.along(heading_) / length_;
            if (beside > 0 || along <= bestAlong) continue;
            bestAlong = along;
            best = i;
        }
        return best;
    }

    bool exists() const { return length_ > 0 && std::isfinite(length_); }

  private:
    const double* x_;
    const double* y_;
    WayPoint to_;
    Way heading_;
    double length_;
    double chord_;
};

// From stretches of places to rows of sites.
class RowEnds {
  public:
    RowEnds(const Survey& survey, const WalkedPath& path, const TurnParameters& parameters)
        : survey_(survey), path_(path), parameters_(parameters) {}

    std::vector<IndexRange> rows(const std::vector<IndexRange>& stretches) const {
        std::vector<IndexRange> rows;
        std::size_t next = 0;
        for (const IndexRange& piece : path_.pieces) {
            const auto first = rows.size();
            for (; next < stretches.size() && stretches[next].first < piece.last; ++next)
                rows.push_back(reaching(stretches, next, piece));
            // What is too short by itself takes no site from others, and what others leave may be too short.
            dropShort(rows, first);
            separate(rows, first);
            dropShort(rows, first);
        }
        return rows;
    }

  private:
    WayPoint at(std::int64_t i) const { return {path_.place(i).x, path_.place(i).y}; }

    // The sites of stretch i, and those of its turns that lie on its lines.
    IndexRange reaching(const std::vector<IndexRange>& stretches, std::size_t i,
                        const IndexRange& piece) const {
        const IndexRange& stretch = stretches[i];
        IndexRange sites{path_.siteAt(stretch.first), path_.siteAt(stretch.last)};
        const bool isFirst = i == 0 || stretches[i - 1].last <= piece.first;
        const bool isLast = i + 1 == stretches.size() || stretches[i + 1].first >= piece.last;
        const SiteIndex before = path_.siteAt(isFirst ? piece.first : stretches[i - 1].last);
        const SiteIndex behind = path_.siteAt(isLast ? piece.last : stretches[i + 1].first);
        const RowLine forward(survey_, at(placeBefore(stretch)), at(stretch.last - 1), parameters_.chord);
        const RowLine backward(survey_, at(placeBehind(stretch)), at(stretch.first), parameters_.chord);
        if (forward.exists()) sites.last = forward.furthest(sites.last, behind, 1, sites.last - 1) + 1;
        if (backward.exists()) sites.first = backward.furthest(sites.first - 1, before - 1, -1, sites.first);
        return withoutStrayEnds(path_, sites);
    }

    // The place a chord before the stretch's last, and behind its first.
    std::int64_t placeBefore(const IndexRange& stretch) const {
        std::int64_t i = stretch.last - 1;
        const double way = path_.place(i).way - parameters_.chord;
        while (i > stretch.first && path_.place(i).way > way)
            --i;
        return i;
    }
    std::int64_t placeBehind(const IndexRange& stretch) const {
        std::int64_t i = stretch.first;
        const double way = path_.place(i).way + parameters_.chord;
        while (i < stretch.last - 1 && path_.place(i).way < way)
            ++i;
        return i;
    }

    // Rows that both claim the sites of their turn meet in its middle.
    void separate(std::vector<IndexRange>& rows, std::size_t first) const {
        for (std::size_t i = first + 1; i < rows.size(); ++i) {
            IndexRange& before = rows[i - 1];
            IndexRange& behind = rows[i];
            if (before.last <= behind.first) continue;
            const SiteIndex middle = (before.last + behind.first) / 2;
            before = withoutStrayEnds(path_, {before.first, middle});
            behind = withoutStrayEnds(path_, {middle, behind.last});
        }
    }

    void dropShort(std::vector<IndexRange>& rows, std::size_t first) const {
        const auto isShort = [this](const IndexRange& sites) { return isTooShort(sites); };
        const auto begin = rows.begin() + static_cast<std::ptrdiff_t>(first);
        rows.erase(std::remove_if(begin, rows.end(), isShort), rows.end());
    }

    bool isTooShort(const IndexRange& sites) const {
        const SiteTable& table = survey_.SiteData;
        return sites.count() < 1 ||
               lengthBetween(table(kX, sites.first), table(kY, sites.first), table(kX, sites.last - 1),
                             table(kY, sites.last - 1)) < parameters_.shortest;
    }

    const Survey& survey_;
    const WalkedPath& path_;
    const TurnParameters& parameters_;
};

}  // namespace

TurnSearch rowsBetweenTurns(const Survey& survey, const TurnParameters& parameters) {
    const double gap = parameters.gap > 0 ? parameters.gap : kLargestDouble;
    const WalkedPath path =
        walkedPath(survey, {kTogether * parameters.chord, gap, parameters.distanceMode, parameters.chord});
    const std::vector<IndexRange> stretches = StretchFinder(path, parameters).find();
    const auto gaps = static_cast<int>(path.pieces.size()) - 1;
    return {RowEnds(survey, path, parameters).rows(stretches), std::max(gaps, 0)};
}

}  // namespace tessel
