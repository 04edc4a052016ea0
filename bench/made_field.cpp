// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/made_field.h"

#include "rows/row_detection.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>

namespace tessel {

namespace {

constexpr SiteIndex kBadEvery = 200;

double hundredths(double value) {
    return std::round(value * 100) / 100;
}

void placeSites(Survey& survey) {
    std::mt19937_64 random(20261121);
    std::normal_distribution<double> wobble(0, 0.03);
    SiteTable& table = survey.SiteData;
    const SiteIndex perRow = (survey.NumSites + kFieldRows - 1) / kFieldRows;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const SiteIndex row = i / perRow;
        const SiteIndex step = i % perRow;
        const auto along = static_cast<double>(row % 2 == 0 ? step : perRow - 1 - step) * 0.5;
        table(kX, i) = hundredths(430000 + 10 * static_cast<double>(row) + wobble(random));
        table(kY, i) = hundredths(4500000 + along + wobble(random));
        table(kEM1, i) = hundredths(80 + 30 * std::sin(along / 50) + 20 * wobble(random));
        table(kEM2, i) = hundredths(60 + 25 * std::sin(along / 60) + 20 * wobble(random));
    }
}

template <typename WriteLine>
std::string writeOnce(const std::string& name, SiteIndex lines, const WriteLine& writeLine) {
    const std::string path = benchFolder() + "/" + name + "_" + std::to_string(lines) + ".txt";
    if (std::filesystem::exists(path)) return path;
    const Survey field = madeField(lines);
    std::ofstream file(path + ".part", std::ios::binary);
    char line[160];
    for (SiteIndex i = 0; i < lines; ++i)
        file.write(line, writeLine(line, sizeof line, field, i));
    file.close();
    std::filesystem::rename(path + ".part", path);
    return path;
}

}  // namespace

Survey madeField(SiteIndex sites) {
    Survey survey;
    survey.NumSites = sites;
    survey.TwoEMColumns = survey.SiteIDPresent = true;
    survey.SiteData.resize(sites);
    survey.SiteID.resize(static_cast<std::size_t>(sites));
    survey.SourceLine.resize(static_cast<std::size_t>(sites));
    for (SiteIndex i = 0; i < sites; ++i)
        survey.SiteID[static_cast<std::size_t>(i)] = static_cast<double>(i + 1);
    std::iota(survey.SourceLine.begin(), survey.SourceLine.end(), 1U);
    placeSites(survey);
    survey.MinDistance = kFieldRowGap;
    survey.chooseDistance(1);
    Calculate_Distance(survey);
    Assign_Row(survey);
    Calculate_NumPoints(survey);
    Calculate_Max(survey);
    Calculate_Min(survey);
    return survey;
}

std::string benchFolder() {
    const char* const chosen = std::getenv("TESSEL_BENCH_DIR");
    const std::string folder =
        chosen != nullptr ? chosen : (std::filesystem::temp_directory_path() / "tessel-bench").string();
    std::filesystem::create_directories(folder);
    return folder;
}

std::string trimbleFile(SiteIndex lines) {
    return writeOnce("fixed", lines, [](char* line, std::size_t size, const Survey& field, SiteIndex i) {
        const SiteTable& at = field.SiteData;
        const bool bad = i % kBadEvery == kBadEvery / 2;
        char x[16];
        std::snprintf(x, sizeof x, bad ? "********" : "%.2f", at(kX, i));
        return std::snprintf(line, size, "%8lld %12s %12.2f %8.2f %8.2f\n", static_cast<long long>(i + 1), x,
                             at(kY, i), at(kEM1, i), at(kEM2, i));
    });
}

TrimbleOptions trimbleFileOptions(SiteIndex lines) {
    TrimbleOptions options;
    options.path = trimbleFile(lines);
    options.errorLogPath = benchFolder() + "/errors.log";
    options.MinDistance = kFieldRowGap;
    options.SiteIDPresent = options.TwoEMColumns = true;
    options.SiteIDField = {1, 8, 8};
    options.XField = {10, 21, 12};
    options.YField = {23, 34, 12};
    options.EM1Field = {36, 43, 8};
    options.EM2Field = {45, 52, 8};
    return options;
}

std::string genericFile(SiteIndex records) {
    return writeOnce("comma", records, [](char* line, std::size_t size, const Survey& field, SiteIndex i) {
        const SiteTable& at = field.SiteData;
        return std::snprintf(line, size, "%.2f,%.2f,%.2f,%.2f,%.0f\n", at(kX, i), at(kY, i), at(kEM1, i),
                             at(kEM2, i), at(kRow, i));
    });
}

GenericOptions genericFileOptions(SiteIndex records) {
    GenericOptions options;
    options.path = genericFile(records);
    options.errorLogPath = benchFolder() + "/errors.log";
    options.layout = kGenericLayouts[1];
    return options;
}

TableOptions tableFileOptions(SiteIndex records) {
    TableOptions options;
    options.path = genericFile(records);
    options.errorLogPath = benchFolder() + "/errors.log";
    options.roles = {TableRole::kX, TableRole::kY, TableRole::kEM1, TableRole::kEM2, TableRole::kRow};
    return options;
}

}  // namespace tessel
