// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/bare_loops.h"

#include "app/site_runs.h"
#include "rows/row_detection.h"
#include "storage/database.h"
#include "storage/geopackage.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <numbers>
#include <numeric>
#include <proj.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessel {

namespace {

// The longest line is not longer than this, the shortest not shorter than kShortest bytes.
constexpr std::size_t kShortest = 24;

class MappedFile {
  public:
    explicit MappedFile(const std::string& path) : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        struct stat status {};
        if (file_ < 0 || fstat(file_, &status) != 0) throw std::runtime_error("cannot open " + path);
        size_ = static_cast<std::size_t>(status.st_size);
        data_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file_, 0);
        if (data_ == MAP_FAILED) throw std::runtime_error("cannot map " + path);
    }
    ~MappedFile() {
        munmap(data_, size_);
        close(file_);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    const char* begin() const { return static_cast<const char*>(data_); }
    const char* end() const { return begin() + size_; }
    std::size_t size() const { return size_; }

  private:
    int file_;
    std::size_t size_ = 0;
    void* data_ = nullptr;
};

bool convert(const char* first, const char* last, double& value) {
    while (first != last && *first == ' ')
        ++first;
    return std::from_chars(first, last, value).ec == std::errc{};
}

template <typename ReadLine>
BareTable importLines(const std::string& path, const ReadLine& readLine) {
    const MappedFile file(path);
    BareTable table;
    for (auto& column : table.columns)
        column = std::make_unique_for_overwrite<double[]>(file.size() / kShortest);
    for (const char* line = file.begin(); line != file.end();) {
        const auto* end =
            static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(file.end() - line)));
        if (end == nullptr) end = file.end();
        if (readLine(line, end, table)) ++table.sites;
        line = end == file.end() ? end : end + 1;
    }
    return table;
}

}  // namespace

BareTable bareFixedColumnImport(const std::string& path) {
    static constexpr int kFields[5][2] = {{0, 8}, {9, 21}, {22, 34}, {35, 43}, {44, 52}};
    return importLines(path, [](const char* line, const char*, BareTable& table) {
        for (int i = 0; i < BareTable::kColumns; ++i)
            if (!convert(line + kFields[i][0], line + kFields[i][1], table.columns[i][table.sites]))
                return false;
        return true;
    });
}

BareTable bareCommaImport(const std::string& path) {
    BareTable table = importLines(path, [](const char* line, const char* end, BareTable& into) {
        for (int i = 0; i < BareTable::kColumns; ++i) {
            const auto [next, error] = std::from_chars(line, end, into.columns[i][into.sites]);
            if (error != std::errc{}) return false;
            line = next + 1;
        }
        return true;
    });
    const auto distances = std::make_unique_for_overwrite<double[]>(table.sites + 1);
    const double* const x = table.columns[0].get();
    const double* const y = table.columns[1].get();
    for (std::size_t i = 1; i < table.sites; ++i)
        distances[i] =
            std::sqrt((x[i] - x[i - 1]) * (x[i] - x[i - 1]) + (y[i] - y[i - 1]) * (y[i] - y[i - 1]));
    return table;
}

double bareDistancesAndRows(const Survey& survey, double* distances, double* rows) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    double largest = 0;
    double row = 1;
    rows[0] = 1;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        const double dx = x[i] - x[i - 1];
        const double dy = y[i] - y[i - 1];
        const double distance = std::sqrt(dx * dx + dy * dy);
        distances[i] = distance;
        largest = distance > largest ? distance : largest;
        row += distance > survey.MinDistance ? 1 : 0;
        rows[i] = row;
    }
    return largest;
}

void bareExport(const Survey& survey, const std::string& path) {
    constexpr std::ptrdiff_t kZone = 14;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0) throw std::runtime_error("cannot write " + path);
    std::vector<char> chunk(1 << 16);
    char* out = chunk.data();
    const auto flush = [&] {
        const auto size = static_cast<std::size_t>(out - chunk.data());
        if (write(file, chunk.data(), size) != static_cast<ssize_t>(size))
            throw std::runtime_error("cannot write " + path);
        out = chunk.data();
    };
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        for (const int column : {kX, kY, kEM1, kEM2, kRow}) {
            char* const start = out;
            *out++ = ' ';
            out = std::to_chars(out, out + 24, survey.SiteData(column, i)).ptr;
            if (column == kRow) break;
            std::memset(out, ' ', kZone);
            out = start + kZone;
        }
        *out++ = ' ';
        *out++ = '\r';
        *out++ = '\n';
        if (out > chunk.data() + chunk.size() - 200) flush();
    }
    flush();
    close(file);
}

double bareConversion(const Survey& survey, int system) {
    const auto sites = static_cast<std::size_t>(survey.NumSites);
    std::vector<double> x(survey.SiteData.column(kX), survey.SiteData.column(kX) + sites);
    std::vector<double> y(survey.SiteData.column(kY), survey.SiteData.column(kY) + sites);
    const std::string to = "EPSG:" + std::to_string(system);
    PJ* const way = proj_create_crs_to_crs(nullptr, "EPSG:4326", to.c_str(), nullptr);
    PJ* const eastFirst = proj_normalize_for_visualization(nullptr, way);
    proj_trans_generic(eastFirst, PJ_FWD, x.data(), sizeof(double), sites, y.data(), sizeof(double), sites,
                       nullptr, 0, 0, nullptr, 0, 0);
    proj_destroy(eastFirst);
    proj_destroy(way);
    return x.back();
}

void barePoints(BarePicture& picture, const Survey& survey, const std::uint8_t* mask, int dot) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    const double xScale = (picture.width - dot - 1) / (survey.MaxX - survey.MinX);
    const double yScale = (picture.height - dot - 1) / (survey.MaxY - survey.MinY);
    std::fill(picture.pixels.begin(), picture.pixels.end(), 0xffffffffu);
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        if (mask[i] != 0) continue;
        const auto px = static_cast<int>((x[i] - survey.MinX) * xScale);
        const auto py = static_cast<int>((survey.MaxY - y[i]) * yScale);
        std::uint32_t* const at = picture.pixels.data() + py * picture.width + px;
        for (int dy = 0; dy < dot; ++dy)
            for (int dx = 0; dx < dot; ++dx)
                at[dy * picture.width + dx] = 0xff0000ffu;
    }
}

template <typename ColourAt>
static void discs(BarePicture& picture, const Survey& survey, ColourAt colourAt) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    const double xScale = (picture.width - 6) / (survey.MaxX - survey.MinX);
    const double yScale = (picture.height - 6) / (survey.MaxY - survey.MinY);
    std::fill(picture.pixels.begin(), picture.pixels.end(), 0xffffffffu);
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const auto px = static_cast<int>((x[i] - survey.MinX) * xScale);
        const auto py = static_cast<int>((survey.MaxY - y[i]) * yScale);
        const std::uint32_t colour = colourAt(i);
        std::uint32_t* at = picture.pixels.data() + py * picture.width + px;
        for (int dy = 0; dy < 5; ++dy, at += picture.width)
            for (int dx = dy % 4 == 0 ? 1 : 0; dx < (dy % 4 == 0 ? 4 : 5); ++dx)
                at[dx] = colour;
    }
}

void bareDiscs(BarePicture& picture, const Survey& survey) {
    const double* const row = survey.SiteData.column(kRow);
    discs(picture, survey,
          [row](SiteIndex i) { return 0xff000000u + static_cast<std::uint32_t>(row[i]) * 0x10305u; });
}

void bareDiscsByReading(BarePicture& picture, const Survey& survey) {
    const double* const reading = survey.SiteData.column(kEM1);
    const auto [lowest, highest] = std::minmax_element(reading, reading + survey.NumSites);
    const double scale = 255 / (*highest - *lowest);
    discs(picture, survey, [=, from = *lowest](SiteIndex i) {
        return 0xff000000u + static_cast<std::uint32_t>((reading[i] - from) * scale) * 0x10101u;
    });
}

void bareLine(BarePicture& picture, std::span<const double> values, double top) {
    std::vector<double> low(static_cast<std::size_t>(picture.width), top);
    std::vector<double> high(static_cast<std::size_t>(picture.width), 0.0);
    const double scale = (picture.width - 1) / static_cast<double>(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto column = static_cast<std::size_t>(static_cast<double>(i) * scale);
        low[column] = std::min(low[column], values[i]);
        high[column] = std::max(high[column], values[i]);
    }
    std::fill(picture.pixels.begin(), picture.pixels.end(), 0xffffffffu);
    for (int column = 0; column < picture.width; ++column) {
        const auto c = static_cast<std::size_t>(column);
        const auto first = static_cast<int>((1 - high[c] / top) * (picture.height - 1));
        const auto last = static_cast<int>((1 - low[c] / top) * (picture.height - 1));
        for (int row = first; row <= last; ++row)
            picture.pixels[static_cast<std::size_t>(row * picture.width + column)] = 0xff0000ffu;
    }
}

SiteIndex bareMask(const Survey& survey, std::uint8_t* mask, double west, double south, double east,
                   double north) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    SiteIndex masked = 0;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        mask[i] |= static_cast<std::uint8_t>((x[i] > west) & (x[i] < east) & (y[i] > south) & (y[i] < north));
        masked += mask[i];
    }
    return masked;
}

void bareTablePass(Survey& survey) {
    const auto bytes = static_cast<std::size_t>(survey.NumSites - 1) * sizeof(double);
    for (int column = 0; column < kSiteColumns; ++column)
        std::memmove(survey.SiteData.column(column), survey.SiteData.column(column) + 1, bytes);
    if (survey.SiteIDPresent) std::memmove(survey.SiteID.data(), survey.SiteID.data() + 1, bytes);
    std::memmove(survey.SourceLine.data(), survey.SourceLine.data() + 1, bytes / 2);
}

void bareDeletion(Survey& survey, const std::vector<IndexRange>& runs) {
    const SiteIndex before = survey.NumSites;
    for (int column = 0; column < kSiteColumns; ++column)
        closeGaps(survey.SiteData.column(column), before, std::span(runs));
    closeGaps(survey.SiteID.data(), before, std::span(runs));
    closeGaps(survey.SourceLine.data(), before, std::span(runs));
    survey.NumSites -= sitesIn(runs);
    Distances_After_Removal(survey, runs, before);
    Calculate_NumPoints(survey);
}

void bareInsertion(Survey& survey, const std::vector<IndexRange>& runs, const Survey& field) {
    const auto openGaps = [&](auto* values) {
        SiteIndex to = field.NumSites;
        SiteIndex from = survey.NumSites;
        for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
            const SiteIndex behind = to - run->last;
            std::copy_backward(values + from - behind, values + from, values + to);
            from -= behind;
            to = run->first;
            std::fill(values + run->first, values + run->last, values[from - 1]);
        }
    };
    for (int column = 0; column < kSiteColumns; ++column)
        openGaps(survey.SiteData.column(column));
    openGaps(survey.SiteID.data());
    openGaps(survey.SourceLine.data());
    survey.NumSites = field.NumSites;
    Calculate_Distances(survey, 1);
    Calculate_NumPoints(survey);
}

bool bareAddition(Survey& survey, double constant) {
    double* const reading = survey.SiteData.column(kEM1);
    bool finite = true;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        finite &= std::isfinite(reading[i] + constant);
    for (SiteIndex i = 0; finite && i < survey.NumSites; ++i)
        reading[i] += constant;
    return finite;
}

SiteIndex bareTurns(const Survey& survey) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    SiteIndex turns = 0;
    double before = 0;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        const double heading = std::atan2(y[i] - y[i - 1], x[i] - x[i - 1]);
        turns += std::abs(std::remainder(heading - before, 2 * std::numbers::pi)) > std::numbers::pi / 2;
        before = heading;
    }
    return turns;
}

static double bareMedian(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

static bool isFarFromMedian(double value, std::vector<double>& others) {
    const double median = bareMedian(others);
    for (double& other : others)
        other = std::abs(other - median);
    return std::abs(value - median) > 4 * 1.4826 * bareMedian(others);
}

SiteIndex bareSuspects(const Survey& survey, double radius) {
    const auto sites = static_cast<std::size_t>(survey.NumSites);
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    // Squares as wide as the radius, with an empty one around; the sites of each behind one another.
    const std::size_t across = static_cast<std::size_t>((survey.MaxX - survey.MinX) / radius) + 3;
    const std::size_t along = static_cast<std::size_t>((survey.MaxY - survey.MinY) / radius) + 3;
    const auto squareOf = [&](std::size_t i) {
        return (static_cast<std::size_t>((y[i] - survey.MinY) / radius) + 1) * across +
               static_cast<std::size_t>((x[i] - survey.MinX) / radius) + 1;
    };
    std::vector<std::size_t> starts(across * along + 1), order(sites);
    for (std::size_t i = 0; i < sites; ++i)
        ++starts[squareOf(i)];
    std::inclusive_scan(starts.begin(), starts.end(), starts.begin());
    for (std::size_t i = sites; i-- > 0;)
        order[--starts[squareOf(i)]] = i;
    SiteIndex suspects = 0;
    std::vector<double> others;
    for (const int column : {kEM1, kEM2}) {
        const double* const reading = survey.SiteData.column(column);
        for (std::size_t i = 0; i < sites; ++i) {
            others.assign(reading + (i < 5 ? 0 : i - 5), reading + std::min(i + 6, sites));
            bool suspicious = isFarFromMedian(reading[i], others);
            others.clear();
            for (const std::size_t line : {squareOf(i) - across, squareOf(i), squareOf(i) + across})
                for (std::size_t j = starts[line - 1]; j < starts[line + 2]; ++j)
                    if (std::hypot(x[order[j]] - x[i], y[order[j]] - y[i]) <= radius)
                        others.push_back(reading[order[j]]);
            suspicious |= isFarFromMedian(reading[i], others);
            suspects += suspicious;
        }
    }
    return suspects;
}

BareHistogram bareHistogram(const double* readings, SiteIndex sites) {
    BareHistogram result;
    result.minimum = result.maximum = readings[0];
    for (SiteIndex i = 0; i < sites; ++i) {
        result.mean += readings[i];
        result.minimum = readings[i] < result.minimum ? readings[i] : result.minimum;
        result.maximum = readings[i] > result.maximum ? readings[i] : result.maximum;
    }
    result.mean /= static_cast<double>(sites);
    for (SiteIndex i = 0; i < sites; ++i)
        result.squares += (readings[i] - result.mean) * (readings[i] - result.mean);
    const double span = result.maximum - result.minimum;
    for (SiteIndex i = 0; i < sites; ++i)
        ++result.bins[std::min(static_cast<int>(std::nearbyint((readings[i] - result.minimum) / span * 50)),
                               49)];
    return result;
}

void bareSave(const Survey& survey, const std::string& path) {
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    {
        Database database(file, path, Database::Use::kWrite);
        database.run(
            "BEGIN; CREATE TABLE sites (fid INTEGER PRIMARY KEY NOT NULL, geom POINT, site_number DOUBLE, "
            "row INTEGER, em1 DOUBLE, em2 DOUBLE, line INTEGER)");
        Statement insert(database, "INSERT INTO sites VALUES (?, ?, ?, ?, ?, ?, ?)");
        PointGeometry geometry(-1);
        for (SiteIndex i = 0; i < survey.NumSites; ++i) {
            const auto at = static_cast<std::size_t>(i);
            insert.bind(0, i + 1).bindBytes(1, geometry.at(survey.SiteData(kX, i), survey.SiteData(kY, i)));
            insert.bind(2, survey.SiteID[at]).bind(3, survey.SiteData(kRow, i));
            insert.bind(4, survey.SiteData(kEM1, i)).bind(5, survey.SiteData(kEM2, i));
            insert.bind(6, std::int64_t{survey.SourceLine[at]}).run();
        }
        database.run("COMMIT");
    }
    ::fsync(file);
    ::close(file);
}

double bareOpen(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    double sum = 0;
    {
        Database database(file, path, Database::Use::kRead);
        Statement select(database, "SELECT * FROM sites");
        while (select.next()) {
            sum += select.bytes(1).back();
            for (const int column : {0, 2, 3, 4, 5, 6})
                sum += static_cast<double>(select.number(column));
        }
    }
    ::close(file);
    return sum;
}

}  // namespace tessel
