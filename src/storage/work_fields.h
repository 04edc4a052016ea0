// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/saved_work.h"

#include <concepts>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace tessel {

// The fields of everything that is kept in a file, in the order in which they stand there: visitFields(thing,
// visit) calls visit(field...). One list serves writing and reading. Where a struct gets a field more, its
// list no longer compiles; whoever adds it here raises kWorkFormat (work_stream.h).

/// A T, const or not.
template <typename Self, typename T>
concept A = std::same_as<std::remove_const_t<Self>, T>;

template <A<FieldColumns> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [start, end, length] = self;
    visit(start, end, length);
}

template <A<SurveyParameters> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [cutoff, minDistance, minLineLength, mode, isTrue, alongX, alongY, negate, divide, id, x, y, em1,
           em2] = self;
    visit(cutoff, minDistance, minLineLength, mode, isTrue, alongX, alongY, negate, divide, id, x, y, em1,
          em2);
}

template <A<SurveyCounts> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [rows, rowIndex, points, trueDist, xDist, yDist, maxX, maxY, minX, minY] = self;
    visit(rows, rowIndex, points, trueDist, xDist, yDist, maxX, maxY, minX, minY);
}

template <A<AppliedAdjustment> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [factor, shift] = self;
    visit(factor, shift);
}

template <A<AppliedAdjustments> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [em1, em2] = self;
    visit(em1, em2);
}

/// Takes the place of any field.
struct AnyField {
    template <typename T>
    operator T() const;
};

template <typename T, std::size_t... i>
constexpr bool takesFields(std::index_sequence<i...> /*fields*/) {
    return requires {
        T{(static_cast<void>(i), AnyField())...};
    };
}

/// A struct with bases takes no list of names; that it has got a field more is told by what makes one. Its
/// bases count as fields.
template <typename T, std::size_t count>
inline constexpr bool hasFields = takesFields<T>(std::make_index_sequence<count>()) &&
                                  !takesFields<T>(std::make_index_sequence<count + 1>());

/// Of what keeps its fields to itself the size tells, to a hole between two of them.
template <typename T, std::size_t bytes, typename... Parts>
inline constexpr bool isAsLargeAsItWas = sizeof(T) == bytes + (sizeof(Parts) + ... + 0) || sizeof(void*) != 8;

template <A<SurveyFigures> Self>
void visitFields(Self& self, auto&& visit) {
    static_assert(hasFields<SurveyFigures, 10>);
    using Parameters = std::conditional_t<std::is_const_v<Self>, const SurveyParameters, SurveyParameters>;
    using Counts = std::conditional_t<std::is_const_v<Self>, const SurveyCounts, SurveyCounts>;
    visit(static_cast<Parameters&>(self), static_cast<Counts&>(self), self.NumSites, self.SiteIDPresent,
          self.TwoEMColumns, self.applied, self.EMAdjustTotalA, self.EMAdjustTotalB, self.PositionsCRS,
          self.importNumber);
}

template <A<Survey> Self>
void visitFields(Self& self, auto&& visit) {
    static_assert(hasFields<Survey, 5>);
    using Figures = std::conditional_t<std::is_const_v<Self>, const SurveyFigures, SurveyFigures>;
    visit(static_cast<Figures&>(self), self.TrueDist, self.XDist, self.YDist, self.SiteData, self.SiteID,
          self.SourceLine);
}

template <A<IndexRange> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [first, last] = self;
    visit(first, last);
}

template <A<RowNumbers::Run> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [number, end] = self;
    visit(number, end);
}

template <A<Difference::Taken> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [column, values, behind] = self;
    visit(column, values, behind);
}

template <A<Difference::Whole> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [column, values] = self;
    visit(column, values);
}

template <A<Difference::Entries> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [column, sites, values] = self;
    visit(column, sites, values);
}

template <typename Self>
requires A<Self, RowNumbers> || A<Self, Difference> || A<Self, Journal>
void visitFields(Self& self, auto&& visit) {
    using List = std::vector<double>;
    static_assert(isAsLargeAsItWas<RowNumbers, 0, List, List>);
    static_assert(isAsLargeAsItWas<Difference, sizeof(SiteIndex), SurveyFigures, List, List, List, List, List,
                                   std::optional<RowNumbers>, std::unique_ptr<Survey>>);
    static_assert(isAsLargeAsItWas<Journal, 80, Survey, std::optional<SurveyParameters>, std::deque<Act>,
                                   std::function<void(JournalEvent)>>);
    std::remove_const_t<Self>::forEachField(self, visit);
}

/// All but the difference.
template <A<Act> Self>
void visitDescription(Self& self, auto&& visit) {
    static_assert(isAsLargeAsItWas<Act, 40, ActDescription, Difference>);
    static_assert(hasFields<ActDescription, 4>);
    visit(self.kind, self.order, self.words, self.parameters, self.time, self.sites, self.rows, self.canRest,
          self.menus, self.content);
}

template <A<Act> Self>
void visitFields(Self& self, auto&& visit) {
    visitDescription(self, visit);
    visit(self.difference);
}

template <A<FileState> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [size, modified] = self;
    visit(size, modified);
}

template <A<FileKind> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [encoding, isText, decimalCommas, tabs, headerLines] = self;
    visit(encoding, isText, decimalCommas, tabs, headerLines);
}

template <A<FieldPlace> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [name, first, last] = self;
    visit(name, first, last);
}

template <A<RejectedLines> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [reason, lines, firstLine] = self;
    visit(reason, lines, firstLine);
}

template <A<ImportSummary> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [path, file, kind, fields, cutoff, fixedColumns, isTable, positionsKept, decimalCommas, linesRead,
           rejected, notFitting, firstNotFitting, cut, firstCut, logPath, logProblem, firstLogLines] = self;
    visit(path, file, kind, fields, cutoff, fixedColumns, isTable, positionsKept, decimalCommas, linesRead,
          rejected, notFitting, firstNotFitting, cut, firstCut, logPath, logProblem, firstLogLines);
}

template <A<RecordedFile> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [path, state, sha256, note] = self;
    visit(path, state, sha256, note);
}

template <A<RecordedImport> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [file, time, kind, parameters, fields, linesRead, rejected, sites, rows] = self;
    visit(file, time, kind, parameters, fields, linesRead, rejected, sites, rows);
}

template <A<RecordedExport> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [file, time, format, sites, firstRow, isOfThisState] = self;
    visit(file, time, format, sites, firstRow, isOfThisState);
}

template <A<SavedImport> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [summary, what, acts] = self;
    visit(summary, what, acts);
}

template <A<SavedExport> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [what, importNumber, content] = self;
    visit(what, importNumber, content);
}

template <A<SavedRecords> Self>
void visitFields(Self& self, auto&& visit) {
    auto& [imports, exports, menuItems] = self;
    visit(imports, exports, menuItems);
}

}  // namespace tessel
