// SPDX-License-Identifier: GPL-3.0-or-later
// Acts, each beside the same work without a way back, and the ways back and forth.
#include "analysis/em_adjustment.h"
#include "bench/bare_loops.h"
#include "bench/made_field.h"
#include "journal/journal.h"
#include "rows/row_detection.h"
#include "rows/row_editing.h"
#include "rows/site_removal.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace tessel {

namespace {

// A hundredth of the sites, no two of them neighbours: the most runs that they can be.
std::vector<IndexRange> everyHundredth(const Survey& survey) {
    std::vector<IndexRange> runs;
    for (SiteIndex site = 50; site < survey.NumSites; site += 100)
        runs.push_back({site, site + 1});
    return runs;
}

void startWith(Journal& journal, Survey survey) {
    journal.replaceSurvey({}, std::move(survey));
}

void deleteHundredth(Journal& journal) {
    journal.perform({}, [&](Survey& survey) {
        return removeSites(survey, everyHundredth(survey), EmptiedRows::kCloseUp);
    });
}

void addToReadings(Journal& journal) {
    Adjustment adjustment =
        tessel::adjustment(journal.survey(), {AdjustmentKind::kAddToEM1, "0.5", "", "", ""});
    journal.perform({}, [&](Survey& survey) { return adjustReadings(survey, std::move(adjustment)); });
}

void findRows(Journal& journal) {
    journal.perform({}, [](Survey& survey) { return Recalculate_Rows(survey, 1, kFieldRowGap); });
}

using DoAct = void (*)(Journal& journal);

template <DoAct act>
void timeAct(benchmark::State& state) {
    Journal journal(SIZE_MAX);
    startWith(journal, madeField(state.range(0)));
    const std::size_t before = journal.bytes();
    for (auto _ : state) {
        act(journal);
        state.PauseTiming();
        state.counters["held"] = static_cast<double>(journal.bytes() - before);
        journal.goTo(1);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <DoAct act, bool back>
void timeWay(benchmark::State& state) {
    Journal journal(SIZE_MAX);
    startWith(journal, madeField(state.range(0)));
    act(journal);
    journal.goTo(back ? 2 : 1);
    for (auto _ : state) {
        journal.goTo(back ? 1 : 2);
        state.PauseTiming();
        journal.goTo(back ? 2 : 1);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

using DoWork = void (*)(Survey& survey);

// On a copy, which is made anew outside the time.
template <DoWork work>
void timeWithout(benchmark::State& state) {
    const Survey field = madeField(state.range(0));
    Survey survey = field;
    for (auto _ : state) {
        work(survey);
        state.PauseTiming();
        survey = field;
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void deleteWithout(Survey& survey) {
    bareDeletion(survey, everyHundredth(survey));
}

// Of the deletion, and that of its way forth, which deletes again.
void insertWithout(benchmark::State& state) {
    const Survey field = madeField(state.range(0));
    const std::vector<IndexRange> runs = everyHundredth(field);
    Survey survey = field;
    for (auto _ : state) {
        state.PauseTiming();
        bareDeletion(survey, runs);
        state.ResumeTiming();
        bareInsertion(survey, runs, field);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addWithout(Survey& survey) {
    benchmark::DoNotOptimize(bareAddition(survey, 0.5));
}

void findWithout(Survey& survey) {
    Calculate_Distances(survey, 1);
    Assign_Row(survey);
    Calculate_NumPoints(survey);
}

// A hundred, each of a hundredth of what is left, with all three distances measured: the most that is held.
void hundredDeletions(benchmark::State& state) {
    Survey field = madeField(state.range(0));
    for (const int measure : {1, 2, 3})
        Calculate_Distances(field, measure);
    for (auto _ : state) {
        Journal journal(SIZE_MAX);
        startWith(journal, field);
        const std::size_t before = journal.bytes();
        for (int deletion = 0; deletion < 100; ++deletion)
            deleteHundredth(journal);
        state.counters["held"] = static_cast<double>(journal.bytes() - before);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* job) {
    for (const int size : {10'000, 100'000, 1'000'000, 5'000'000, 10'000'000})
        job->Arg(size);
    job->Unit(benchmark::kMillisecond);
}

BENCHMARK(timeAct<deleteHundredth>)->Name("act: delete 1 %")->Apply(sizes);
BENCHMARK(timeWithout<deleteWithout>)->Name("act: delete 1 %:bare")->Apply(sizes);
BENCHMARK(timeAct<addToReadings>)->Name("act: adjust")->Apply(sizes);
BENCHMARK(timeWithout<addWithout>)->Name("act: adjust:bare")->Apply(sizes);
BENCHMARK(timeAct<findRows>)->Name("act: find rows")->Apply(sizes);
BENCHMARK(timeWithout<findWithout>)->Name("act: find rows:bare")->Apply(sizes);
BENCHMARK(timeWay<deleteHundredth, true>)->Name("undo the deletion")->Apply(sizes);
BENCHMARK(timeWay<deleteHundredth, false>)->Name("redo the deletion")->Apply(sizes);
BENCHMARK(insertWithout)->Name("undo the deletion:bare")->Apply(sizes);
BENCHMARK(timeWithout<deleteWithout>)->Name("redo the deletion:bare")->Apply(sizes);
BENCHMARK(timeWay<addToReadings, true>)->Name("undo the adjustment")->Apply(sizes);
BENCHMARK(timeWay<addToReadings, false>)->Name("redo the adjustment")->Apply(sizes);
BENCHMARK(hundredDeletions)->Name("a hundred deletions of 1 %")->Apply(sizes);

}  // namespace

}  // namespace tessel
