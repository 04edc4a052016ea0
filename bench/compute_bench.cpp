// SPDX-License-Identifier: GPL-3.0-or-later
// What computes, each job ("name/size") beside its bare loop ("name:bare/size").
#include "analysis/histogram.h"
#include "analysis/suspicious_sites.h"
#include "app/column_statistics.h"
#include "bench/bare_loops.h"
#include "bench/made_field.h"
#include "export/table_file.h"
#include "export/transect_file.h"
#include "geodesy/coordinate_systems.h"
#include "geodesy/position_conversion.h"
#include "import/error_log.h"
#include "import/import_report.h"
#include "plots/site_masking.h"
#include "rows/row_detection.h"
#include "rows/row_selection.h"
#include "rows/row_sites.h"
#include "rows/row_turns.h"
#include "storage/survey_file.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>

namespace tessel {

namespace {

// Fields are made once for all benchmarks.
const Survey& field(SiteIndex sites) {
    static std::map<SiteIndex, Survey> fields;
    const auto found = fields.find(sites);
    return found != fields.end() ? found->second : fields.emplace(sites, madeField(sites)).first->second;
}

void countSites(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void countFile(benchmark::State& state, const std::string& path) {
    countSites(state);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(path)));
}

void trimbleImport(benchmark::State& state) {
    const TrimbleOptions options = trimbleFileOptions(state.range(0));
    for (auto _ : state) {
        Survey survey;
        ErrorLog log(options.errorLogPath);
        ImportSummary summary;
        const std::int64_t errors = readTrimbleFile(options, survey, log, summary);
        log.commit();
        benchmark::DoNotOptimize(trimbleImportReport(survey.NumSites, errors));
    }
    countFile(state, options.path);
}
void trimbleImportBare(benchmark::State& state) {
    const std::string path = trimbleFile(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(bareFixedColumnImport(path).sites);
    countFile(state, path);
}

void genericImport(benchmark::State& state) {
    const GenericOptions options = genericFileOptions(state.range(0));
    const Survey parameters;
    for (auto _ : state)
        benchmark::DoNotOptimize(importGenericFile(options, parameters).survey.NumSites);
    countFile(state, options.path);
}
void genericImportBare(benchmark::State& state) {
    const std::string path = genericFile(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(bareCommaImport(path).sites);
    countFile(state, path);
}

void tableImport(benchmark::State& state) {
    const TableOptions options = tableFileOptions(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(importTable(options).survey.NumSites);
    countFile(state, options.path);
}

void distancesAndRows(benchmark::State& state) {
    Survey survey = field(state.range(0));
    for (auto _ : state) {
        Calculate_Chosen_Distance(survey);
        benchmark::DoNotOptimize(Assign_Row(survey));
    }
    countSites(state);
}
void distancesAndRowsBare(benchmark::State& state) {
    Survey survey = field(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            bareDistancesAndRows(survey, survey.TrueDist.data(), survey.SiteData.column(kRow)));
    countSites(state);
}

Survey withoutIDs(SiteIndex sites) {
    Survey survey = field(sites);
    survey.SiteIDPresent = false;
    survey.SiteID.clear();
    return survey;
}
void transectExport(benchmark::State& state) {
    const Survey survey = withoutIDs(state.range(0));
    const std::string path = benchFolder() + "/transect.txt";
    for (auto _ : state)
        writeTransectFile(survey, path, TransectFormat{});
    countFile(state, path);
}
void transectExportBare(benchmark::State& state) {
    const Survey survey = withoutIDs(state.range(0));
    const std::string path = benchFolder() + "/bare_transect.txt";
    for (auto _ : state)
        bareExport(survey, path);
    countFile(state, path);
}

// The five columns of the bare loop, whose lines are longer.
void tableExport(benchmark::State& state) {
    Journal journal(std::size_t{1} << 30);
    journal.replaceSurvey({ActKind::kImport, "import", "Imported", {}}, withoutIDs(state.range(0)));
    TableFormat format;
    format.columns = {TableColumn::kX, TableColumn::kY, TableColumn::kEM1, TableColumn::kEM2,
                      TableColumn::kRow};
    const std::string path = benchFolder() + "/table.csv";
    for (auto _ : state)
        writeTable(journal, path, format);
    countFile(state, path);
}

constexpr int kFieldSystem = 32630;

// The field's positions as degrees of WGS 84.
Survey inDegrees(SiteIndex sites) {
    Survey survey = field(sites);
    Transformation(kFieldSystem)
        .toDegrees(survey.SiteData.column(kX), survey.SiteData.column(kY), static_cast<std::size_t>(sites));
    return survey;
}
void degreesToMetres(benchmark::State& state) {
    const Survey survey = inDegrees(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            convertedPositions(survey, {PositionKind::kDegrees, false, kFieldSystem}).x.data());
    countSites(state);
}
void degreesToMetresBare(benchmark::State& state) {
    const Survey survey = inDegrees(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(bareConversion(survey, kFieldSystem));
    countSites(state);
}

Journal journalWith(SiteIndex sites) {
    Survey survey = field(sites);
    survey.SiteIDPresent = true;
    survey.SiteID.resize(static_cast<std::size_t>(survey.SiteData.capacity()));
    survey.SourceLine.resize(survey.SiteID.size(), 1);
    Journal journal(std::size_t{1} << 30);
    journal.replaceSurvey({ActKind::kImport, "import", "Imported", {}}, std::move(survey));
    return journal;
}
void surveySave(benchmark::State& state) {
    const Journal journal = journalWith(state.range(0));
    for (auto _ : state)
        saveSurvey(benchFolder() + "/survey.gpkg", journal, {});
    countFile(state, benchFolder() + "/survey.gpkg");
}
void surveySaveBare(benchmark::State& state) {
    const Journal journal = journalWith(state.range(0));
    for (auto _ : state)
        bareSave(journal.survey(), benchFolder() + "/bare.gpkg");
    countFile(state, benchFolder() + "/bare.gpkg");
}
void surveyOpen(benchmark::State& state) {
    saveSurvey(benchFolder() + "/survey.gpkg", journalWith(state.range(0)), {});
    for (auto _ : state)
        benchmark::DoNotOptimize(openSurvey(benchFolder() + "/survey.gpkg").journal.size());
    countSites(state);
}
void surveyOpenBare(benchmark::State& state) {
    bareSave(journalWith(state.range(0)).survey(), benchFolder() + "/bare.gpkg");
    for (auto _ : state)
        benchmark::DoNotOptimize(bareOpen(benchFolder() + "/bare.gpkg"));
    countSites(state);
}

void maskRectangle(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    const MapExtent extent = SetMapScale(survey, false);
    SiteMaskArray mask(static_cast<std::size_t>(survey.NumSites), 0);
    for (auto _ : state) {
        double north = 0.3, south = 0.7;
        benchmark::DoNotOptimize(MaskSites(survey, extent, mask, 0.3, north, 0.7, south));
    }
    countSites(state);
}
void maskRectangleBare(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    const MapExtent e = SetMapScale(survey, false);
    SiteMaskArray mask(static_cast<std::size_t>(survey.NumSites), 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            bareMask(survey, mask.data(), e.surveyX(0.3), e.surveyY(0.7), e.surveyX(0.7), e.surveyY(0.3)));
    countSites(state);
}

void histogram(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    for (auto _ : state) {
        const HistogramStatistics statistics = histogramStatistics(survey, kEM1);
        benchmark::DoNotOptimize(countBins(survey, kEM1, statistics));
    }
    countSites(state);
}
void histogramBare(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(bareHistogram(survey.SiteData.column(kEM1), survey.NumSites));
    countSites(state);
}

// Every other site of a row, 100 at most.
RowSelection pickedSites(const Survey& survey, int row) {
    RowSelection selection;
    const SiteIndex sites = rowSites(survey, row).count();
    for (SiteIndex point = 1; point <= sites && selection.SelCount < 100; point += 2)
        selection.append(point);
    return selection;
}
// The first rows, so that nearly the whole table moves.
void deletePicked(benchmark::State& state) {
    Survey survey = field(state.range(0));
    int row = 1;
    for (auto _ : state) {
        RowSelection selection = pickedSites(survey, row);
        benchmark::DoNotOptimize(deleteSelectedSites(survey, row, selection).sites);
        row = row % 10 + 1;
        if (row > 1) continue;
        state.PauseTiming();
        survey = field(state.range(0));
        state.ResumeTiming();
    }
    countSites(state);
}
void deletePickedBare(benchmark::State& state) {
    Survey survey = field(state.range(0));
    for (auto _ : state) {
        bareTablePass(survey);
        benchmark::ClobberMemory();
    }
    countSites(state);
}

void rowsByTurns(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    const TurnParameters parameters = proposedTurnParameters(survey);
    for (auto _ : state)
        benchmark::DoNotOptimize(findRowTurns(survey, parameters).rows);
    countSites(state);
}

void rowsByTurnsBare(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(bareTurns(survey));
    countSites(state);
}

// With the values that are proposed, and all rules.
void suspiciousSites(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    SuspectParameters parameters = proposedSuspectParameters(survey);
    parameters.uses.fill(true);
    for (auto _ : state)
        benchmark::DoNotOptimize(findSuspects(survey, parameters).sites);
    countSites(state);
}
void suspiciousSitesBare(benchmark::State& state) {
    const Survey& survey = field(state.range(0));
    const double radius = proposedSuspectParameters(survey).radius;
    for (auto _ : state)
        benchmark::DoNotOptimize(bareSuspects(survey, radius));
    countSites(state);
}

void sizes(benchmark::internal::Benchmark* job) {
    for (const int size : {10'000, 100'000, 1'000'000, 5'000'000, 10'000'000})
        job->Arg(size);
    job->Unit(benchmark::kMillisecond);
}

// Of large files: on all threads.
BENCHMARK(trimbleImport)->Name("Trimble import")->Apply(sizes)->MeasureProcessCPUTime();
BENCHMARK(trimbleImportBare)->Name("Trimble import:bare")->Apply(sizes);
BENCHMARK(genericImport)->Name("generic import")->Apply(sizes)->MeasureProcessCPUTime();
BENCHMARK(genericImportBare)->Name("generic import:bare")->Apply(sizes);
BENCHMARK(tableImport)->Name("table import")->Apply(sizes)->MeasureProcessCPUTime();
BENCHMARK(genericImportBare)->Name("table import:bare")->Apply(sizes);
BENCHMARK(distancesAndRows)->Name("distances and rows")->Apply(sizes);
BENCHMARK(distancesAndRowsBare)->Name("distances and rows:bare")->Apply(sizes);
BENCHMARK(transectExport)->Name("transect export")->Apply(sizes);
BENCHMARK(transectExportBare)->Name("transect export:bare")->Apply(sizes);
BENCHMARK(tableExport)->Name("table export")->Apply(sizes);
BENCHMARK(transectExportBare)->Name("table export:bare")->Apply(sizes);
BENCHMARK(degreesToMetres)->Name("degrees to metres")->Apply(sizes);
BENCHMARK(degreesToMetresBare)->Name("degrees to metres:bare")->Apply(sizes);
BENCHMARK(surveySave)->Name("save the survey")->Apply(sizes);
BENCHMARK(surveySaveBare)->Name("save the survey:bare")->Apply(sizes);
BENCHMARK(surveyOpen)->Name("open a survey")->Apply(sizes);
BENCHMARK(surveyOpenBare)->Name("open a survey:bare")->Apply(sizes);
BENCHMARK(maskRectangle)->Name("mask a rectangle")->Apply(sizes);
BENCHMARK(maskRectangleBare)->Name("mask a rectangle:bare")->Apply(sizes);
BENCHMARK(histogram)->Name("histogram and statistics")->Apply(sizes);
BENCHMARK(histogramBare)->Name("histogram and statistics:bare")->Apply(sizes);
BENCHMARK(deletePicked)->Name("delete 100 picked sites")->Apply(sizes);
BENCHMARK(deletePickedBare)->Name("delete 100 picked sites:bare")->Apply(sizes);
BENCHMARK(rowsByTurns)->Name("rows by turns")->Apply(sizes);
BENCHMARK(rowsByTurnsBare)->Name("rows by turns:bare")->Apply(sizes);
BENCHMARK(suspiciousSites)->Name("suspicious sites, all rules")->Apply(sizes);
BENCHMARK(suspiciousSitesBare)->Name("suspicious sites, all rules:bare")->Apply(sizes);

}  // namespace

}  // namespace tessel

using namespace tessel;

BENCHMARK_MAIN();
