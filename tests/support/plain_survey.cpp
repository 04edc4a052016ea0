// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/plain_survey.h"

#include "support/made_survey.h"

namespace tessel {

double PlainSurvey::distance(std::size_t i) const {
    if (i < 1 || i >= sites.size()) return 0;
    const double dx = sites[i].x - sites[i - 1].x;
    const double dy = sites[i].y - sites[i - 1].y;
    if (measure == 2) return std::abs(dx);
    if (measure == 3) return std::abs(dy);
    const double length = std::sqrt(dx * dx + dy * dy);
    if (std::isfinite(length)) return length;
    constexpr long double kMost = std::numeric_limits<double>::max();
    return static_cast<double>(
        std::min(std::hypot(static_cast<long double>(dx), static_cast<long double>(dy)), kMost));
}

std::vector<double> PlainSurvey::distances() const {
    std::vector<double> lengths;
    for (std::size_t i = 0; i <= sites.size(); ++i)
        lengths.push_back(distance(i));
    return lengths;
}

std::vector<long> PlainSurvey::rowSizes() const {
    std::vector<long> sizes;
    for (std::size_t i = 0; i < sites.size(); ++i) {
        if (i == 0 || sites[i].row != sites[i - 1].row) sizes.push_back(0);
        ++sizes.back();
    }
    return sizes;
}

std::vector<std::size_t> PlainSurvey::sitesOfRow(int row) const {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < sites.size(); ++i)
        if (sites[i].row == row) found.push_back(i);
    return found;
}

PlainSurvey plainSurveyOf(const Survey& survey) {
    PlainSurvey plain;
    const std::vector<std::uint32_t> lines = linesIn(survey);
    for (const MadeSite& site : sitesIn(survey)) {
        const long line = lines.empty() ? 0 : lines[plain.sites.size()];
        plain.sites.push_back(
            {site.x, site.y, site.em1, site.em2, site.id, static_cast<int>(site.row), line});
    }
    plain.ids = survey.SiteIDPresent;
    plain.two = survey.TwoEMColumns;
    plain.rows = survey.NumRows;
    plain.rowIndex = survey.RowIndex;
    plain.measure = survey.DistanceMode;
    plain.minDistance = survey.MinDistance;
    return plain;
}

void expectAsPlain(const Survey& survey, const PlainSurvey& plain) {
    EXPECT_TRUE(plainSurveyOf(survey).sites == plain.sites) << "sites differ";
    EXPECT_EQ(survey.NumRows, plain.rows);
    std::array<std::int64_t, kMaxRows + 1> points{};
    for (const PlainSite& site : plain.sites)
        ++points[static_cast<std::size_t>(site.row)];
    EXPECT_EQ(survey.NumPoints, points);
    const std::vector<double> distances = plain.distances();
    const double largest = *std::ranges::max_element(distances);
    const std::pair<const std::vector<double>&, double> all[] = {{survey.TrueDist, survey.MaxTrueDist},
                                                                 {survey.XDist, survey.MaxXDist},
                                                                 {survey.YDist, survey.MaxYDist}};
    EXPECT_EQ(all[plain.measure - 1].first, distances);
    EXPECT_EQ(all[plain.measure - 1].second, largest);
}

bool findPlainRows(PlainSurvey& survey) {
    survey.rowIndex = 1;
    for (std::size_t i = 0; i < survey.sites.size(); ++i) {
        survey.sites[i].row = survey.rowIndex;
        if (i > 0 && survey.distance(i + 1) > survey.minDistance) ++survey.rowIndex;
        if (survey.rowIndex > 250) return false;
    }
    survey.rows = survey.rowIndex;
    return true;
}

namespace {

void recount(PlainSurvey& survey) {
    survey.rows = survey.rowIndex = survey.empty() ? 0 : survey.sites.back().row;
}

}  // namespace

void joinPlainRows(PlainSurvey& survey, int row1, int row2) {
    const int low = row1 < row2 ? row1 : row2;
    const int high = low + 1;
    for (PlainSite& site : survey.sites) {
        if (site.row == high) site.row = low;
        if (site.row > high) --site.row;
    }
    recount(survey);
}

void splitPlainRow(PlainSurvey& survey, std::size_t site) {
    for (std::size_t i = site; i < survey.sites.size(); ++i)
        ++survey.sites[i].row;
    recount(survey);
}

void deletePlainRow(PlainSurvey& survey, int row) {
    std::vector<PlainSite> kept;
    for (PlainSite site : survey.sites) {
        if (site.row == row) continue;
        if (site.row > row) --site.row;
        kept.push_back(site);
    }
    survey.sites = kept;
    recount(survey);
}

void deletePlainSites(PlainSurvey& survey, int row, const std::vector<std::size_t>& sites) {
    const bool emptied = !sites.empty() && survey.sitesOfRow(row).size() == sites.size();
    std::vector<bool> marks(survey.sites.size());
    for (const std::size_t site : sites)
        marks[site] = true;
    deleteMarkedPlainSites(survey, marks);
    if (!emptied) return;
    for (PlainSite& site : survey.sites)
        if (site.row > row) --site.row;
    --survey.rows;
}

void deletePlainPoints(PlainSurvey& survey, int row, const std::vector<SiteIndex>& points) {
    const std::vector<std::size_t> ofRow = survey.sitesOfRow(row);
    std::vector<std::size_t> sites;
    for (const SiteIndex point : points)
        sites.push_back(ofRow[static_cast<std::size_t>(point - 1)]);
    deletePlainSites(survey, row, sites);
}

void deleteMarkedPlainSites(PlainSurvey& survey, const std::vector<bool>& marks) {
    std::vector<PlainSite> kept;
    for (std::size_t i = 0; i < survey.sites.size(); ++i)
        if (!marks[i]) kept.push_back(survey.sites[i]);
    survey.sites = kept;
}

void closePlainRows(PlainSurvey& survey) {
    int row = 0, before = 0;
    for (PlainSite& site : survey.sites) {
        if (site.row != before) ++row;
        before = site.row;
        site.row = row;
    }
    recount(survey);
}

bool validatePlainRows(PlainSurvey& survey) {
    bool good = survey.sites.front().row == 1 && survey.sites.back().row == survey.rows;
    for (std::size_t i = 1; i < survey.sites.size(); ++i) {
        const int step = survey.sites[i].row - survey.sites[i - 1].row;
        if (step != 0 && step != 1) good = false;
    }
    if (good) return true;
    for (PlainSite& site : survey.sites)
        site.row = 1;
    survey.rows = survey.rowIndex = 1;
    return false;
}

std::string plainNumber(double value) {
    if (value == 0) return " 0 ";
    std::array<char, 40> text{};
    std::to_chars(text.begin(), text.end() - 1, std::abs(value), std::chars_format::scientific, 14);
    const std::string scientific = text.data();
    const int exponent = std::atoi(scientific.c_str() + scientific.find('e') + 1);
    std::string digits = scientific.substr(0, 1);
    digits += scientific.substr(2, scientific.find('e') - 2);
    while (digits.size() > 1 && digits.back() == '0')
        digits.pop_back();
    std::string out = value < 0 ? "-" : " ";
    const auto zeros = [&out](int count) { out.append(static_cast<std::size_t>(std::max(count, 0)), '0'); };
    if (exponent < -4 || exponent >= 15) {
        out += digits[0];
        if (digits.size() > 1) out.append(".").append(digits, 1);
        out += exponent < 0 ? "E-" : "E+";
        if (std::abs(exponent) < 10) out += '0';
        out += std::to_string(std::abs(exponent));
    } else if (exponent < 0) {
        out += '.';
        zeros(-exponent - 1);
        out += digits;
    } else {
        const auto whole = static_cast<std::size_t>(exponent) + 1;
        out.append(digits, 0, whole);
        zeros(static_cast<int>(whole) - static_cast<int>(digits.size()));
        if (digits.size() > whole) out.append(".").append(digits, whole);
    }
    return out + ' ';
}

std::string plainTransect(const PlainSurvey& survey, bool withRows, int firstRow) {
    std::string file;
    for (const PlainSite& site : survey.sites) {
        std::vector<double> fields;
        if (survey.ids) fields.push_back(site.id);
        fields.insert(fields.end(), {site.x, site.y, site.em1});
        if (survey.two) fields.push_back(site.em2);
        if (withRows) fields.push_back(site.row + firstRow - 1);
        std::string line;
        for (const double field : fields) {
            while (line.size() % 14 != 0)
                line += ' ';
            line += plainNumber(field);
        }
        file += line + "\r\n";
    }
    return file;
}

bool plainNumeric(const std::string& text, double& value) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return false;
    const std::string number = text.substr(first, text.find_last_not_of(" \t") - first + 1);
    if (number.find_first_not_of("0123456789+-.eE") != std::string::npos) return false;
    static const locale_t withPoints = ::newlocale(LC_ALL_MASK, "C", nullptr);
    char* end = nullptr;
    value = ::strtod_l(number.c_str(), &end, withPoints);
    return *end == '\0' && std::isfinite(value);
}

namespace {

bool field(const std::string& line, const PlainField& columns, double& value) {
    const auto first = static_cast<std::size_t>(columns[0]);
    if (first > line.size()) return false;
    return plainNumeric(line.substr(first - 1, static_cast<std::size_t>(columns[1] - columns[0] + 1)), value);
}

double converted(double reading, const PlainTrimbleOptions& options) {
    if (options.negate) reading = reading == 0 ? 0 : -reading;
    return options.tenth ? reading / 10 : reading;
}

// Why a line is no site; empty when it is one.
std::string rejection(const std::string& line, const PlainTrimbleOptions& options, PlainSite& site) {
    if (options.id[0] > 0 && !field(line, options.id, site.id)) return "  -> non-numeric site ID";
    if (options.em2[0] > 0) {
        if (!field(line, options.em2, site.em2)) return "  -> non-numeric 2nd EM reading";
        site.em2 = converted(site.em2, options);
        if (site.em2 < options.cutoff) return "  -> 2nd EM reading below cut-off";
    }
    if (!field(line, options.x, site.x)) return "  -> non-numeric X-coord data";
    if (!field(line, options.y, site.y)) return "  -> non-numeric Y-coord data";
    if (!field(line, options.em1, site.em1)) return "  -> non-numeric 1st EM reading";
    site.em1 = converted(site.em1, options);
    if (site.em1 < options.cutoff) return "  -> 1st EM reading below cut-off";
    return {};
}

std::vector<std::string> linesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < bytes.size()) {
        std::size_t end = bytes.find('\n', begin);
        if (end == std::string::npos) end = bytes.size();
        lines.push_back(bytes.substr(begin, end - begin));
        if (!lines.back().empty() && lines.back().back() == '\r') lines.back().pop_back();
        begin = end + 1;
    }
    return lines;
}

}  // namespace

PlainImport plainTrimbleImport(const std::string& bytes, const PlainTrimbleOptions& options) {
    PlainImport import;
    PlainSurvey& survey = import.survey;
    survey.ids = options.id[0] > 0;
    survey.two = options.em2[0] > 0;
    survey.measure = options.measure;
    survey.minDistance = options.minDistance;
    long number = 0;
    for (const std::string& line : linesOf(bytes)) {
        ++number;
        if (line.size() <= 1) continue;
        PlainSite site;
        const std::string reason = rejection(line, options, site);
        if (reason.empty()) {
            site.line = number;
            survey.sites.push_back(site);
            continue;
        }
        ++import.rejected;
        import.log += "Line # " + std::to_string(number) + " " + line + reason + "\r\n";
    }
    if (!survey.empty()) import.tooManyRows = !findPlainRows(survey);
    return import;
}

}  // namespace tessel
