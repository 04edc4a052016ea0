// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "app/survey.h"
#include "journal/journal.h"
#include "journeys/random/RandomSession.h"
#include "journeys/random/entries.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

// What a user may type by mistake, and the number that it begins with.
struct BadNumber {
    const char* text;
    double begins;
};
const std::vector<BadNumber> kBadNumbers = {{"abc", 0}, {"", 0},    {"12 m", 12},
                                            {"1,5", 1}, {"--3", 0}, {"5x", 5}};

double rounded(double value, int decimals) {
    return std::strtod(printed(value, decimals).c_str(), nullptr);
}

// Right-aligned in the columns of a field.
void put(std::string& line, const PlainField& columns, const std::string& text) {
    if (columns[0] == 0) return;
    const auto end = static_cast<std::size_t>(columns[1]);
    if (line.size() < end) line.resize(end, ' ');
    line.replace(end - text.size(), text.size(), text);
}

bool isVast(const PlainSurvey& survey) {
    for (std::size_t i = 1; i < survey.sites.size(); ++i)
        if (survey.distance(i) > 1e299) return true;
    return false;
}

}  // namespace

// Distances whose squares are too large for a number are no reason for anything.
void RandomSession::noteVast(const PlainSurvey& survey, const std::string& where) {
    if (isVast(survey)) reached_.note("a vast survey in " + where);
}

// The sites of some runs, out and back; sometimes far more rows than the program holds.
std::vector<PlainSite> RandomSession::drivenSites() {
    std::vector<PlainSite> sites;
    const bool many = many_ || chance(10);
    const int rows = many ? 1 : chance(4) ? 0 : 1 + below(9);
    const bool alongX = chance(50), integers = chance(15), west = chance(15), vast = !many_ && chance(20);
    for (int row = 0; row < rows; ++row) {
        const int count = many ? 235 + below(80) : 1 + below(chance(20) ? 2 : 13);
        for (int k = 0; k < count; ++k) {
            const int step = row % 2 == 0 ? k : 13 - k;
            const double along =
                (integers || chance(5) ? step : step + numberBetween(-0.3, 0.3)) - (west ? 40 : 0);
            const double across = row * 5 + (integers ? 0 : numberBetween(-0.4, 0.4));
            PlainSite site;
            site.x = rounded(alongX ? along : across, 2);
            site.y = rounded(alongX ? across : along, 2);
            site.em1 = rounded(integers ? 20 : numberBetween(-12, 90), 2);
            if (chance(6)) site.em1 = oneOf(std::vector<double>{-10, 0, 5.5, 25});  // a cut-off itself
            site.em2 = rounded(numberBetween(-12, 120), 2);
            site.id = double(sites.size() + 1);
            site.row = row + 1;
            if (vast && chance(20)) (alongX ? site.x : site.y) = chance(50) ? 1e300 : -1e300;
            if (!sites.empty() && chance(4)) site.x = sites.back().x, site.y = sites.back().y;
            sites.push_back(site);
        }
    }
    return sites;
}

std::string RandomSession::trimbleFile(const PlainTrimbleOptions& options) {
    const std::vector<std::string> wrong = {"n/a", "12O.5", "--.-", "4 2", ".", "1e", "nan"};
    const bool unix = chance(40), allWrong = chance(3);
    std::string bytes;
    for (const PlainSite& site : drivenSites()) {
        std::string line;
        put(line, options.id, chance(2) ? oneOf(wrong) : printed(site.id, 0));
        put(line, options.x, allWrong || chance(2) ? oneOf(wrong) : coordinate(site.x));
        put(line, options.y, chance(2) ? oneOf(wrong) : coordinate(site.y));
        put(line, options.em1, chance(2) ? oneOf(wrong) : chance(3) ? "2.5E+1" : printed(site.em1, 2));
        put(line, options.em2, chance(2) ? oneOf(wrong) : chance(3) ? "-0" : printed(site.em2, 2));
        if (chance(2)) line.resize(static_cast<std::size_t>(below(static_cast<int>(line.size()) + 1)));
        if (chance(2)) line += " tail";
        bytes += line + (unix ? "\n" : "\r\n");
        if (chance(2)) bytes += unix ? "\n" : "x\r\n";
    }
    if (chance(30) && !bytes.empty()) bytes.pop_back();
    if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    return bytes;
}

void RandomSession::importTrimble() {
    PlainTrimbleOptions options;
    int column = 1 + below(3);
    const auto field = [&](int width) {
        const PlainField columns{column, column + width - 1};
        column += width + below(2);
        return columns;
    };
    if (chance(60)) options.id = field(6);
    options.x = field(9);
    options.y = field(9);
    options.em1 = field(8);
    if (chance(65)) options.em2 = field(8);
    const std::string bytes = trimbleFile(options);
    writeFile(folder_ / "survey.dat", bytes);
    if (!enterControls(options) || !enterFormat(options)) return;
    finishTrimbleImport(plainTrimbleImport(bytes, options));
}

// Entries that are refused; the parameters that they leave are those of their leading numbers.
void RandomSession::refuseControls(QWidget& window) {
    while (chance(25)) {
        const BadNumber bad = oneOf(kBadNumbers);
        const bool first = chance(40), negative = chance(30);
        typeInto(window, u"Text1"_s, first ? QString::fromLatin1(bad.text) : u"-10"_s);
        typeInto(window, u"Text2"_s, first ? u"4"_s : negative ? u"-1"_s : QString::fromLatin1(bad.text));
        expect(first || !negative ? u"Non-numeric EM-cutoff or Minimum distance Input"_s
                                  : u"Error: Minimum distance must be > 0"_s);
        clickOn(window, u"Command1"_s);
        survey_.minDistance = first ? 4 : negative ? -1 : bad.begins;
        same<double>("EMCutoff", theSurvey().EMCutoff, first ? bad.begins : -10);
    }
}

// The first window; false when the user gives up, there or in the file dialog.
bool RandomSession::enterControls(PlainTrimbleOptions& options) {
    useOrPress(*main_, u"mnuOpen"_s, Qt::Key_I, Qt::ControlModifier);
    QWidget& window = shownWindow(u"frmDataControl"_s);
    refuseControls(window);
    if (chance(8)) {
        leave(window, u"Command2"_s);
        return false;
    }
    const QString cutoff = oneOf(std::vector<QString>{u"-10"_s, u"0"_s, u"5.5"_s, u"-1e3"_s});
    const QString distance =
        many_ ? chance(70) ? u"0"_s : u"30"_s
              : oneOf(std::vector<QString>{u"3"_s, u"3"_s, u"3"_s, u"1.25"_s, u"0"_s, u"0.5"_s, u"1000"_s});
    options.cutoff = cutoff.toDouble();
    options.minDistance = survey_.minDistance = distance.toDouble();
    options.measure = 1 + below(3);
    options.negate = chance(15);
    options.tenth = chance(15);
    typeInto(window, u"Text1"_s, cutoff);
    typeInto(window, u"Text2"_s, distance);
    clickOn(window, u"Option%1"_s.arg(1 + below(3)));
    clickOn(window, u"Option%1"_s.arg(options.measure));
    for (int clicks = 2 * below(2); clicks > 0; --clicks)
        clickOn(window, u"Check%1"_s.arg(1 + (clicks + 1) / 2 % 2));
    if (options.negate) clickOn(window, u"Check1"_s);
    if (options.tenth) clickOn(window, u"Check2"_s);
    const bool cancelled = !many_ && chance(5);
    expectFile(cancelled ? QString() : QString::fromStdString(folder_ / "survey.dat"));
    clickOn(window, u"Command1"_s);
    return !cancelled;
}

namespace {

// The fields that are in the file, each with the beginning of its boxes' names.
std::vector<std::pair<QString, PlainField>> fieldsOf(const PlainTrimbleOptions& options) {
    std::vector<std::pair<QString, PlainField>> fields = {
        {u"Text2"_s, options.x}, {u"Text3"_s, options.y}, {u"Text4"_s, options.em1}};
    if (options.id[0] > 0) fields.emplace_back(u"Text1"_s, options.id);
    if (options.em2[0] > 0) fields.emplace_back(u"Text5"_s, options.em2);
    return fields;
}

}  // namespace

// The second window; false when the user gives up.
bool RandomSession::enterFormat(const PlainTrimbleOptions& options) {
    QWidget& window = shownWindow(u"frmIniDisplay"_s);
    for (int clicks = options.id[0] > 0 ? 1 : chance(20) ? 2 : 0; clicks > 0; --clicks)
        clickOn(window, u"Check1"_s);
    for (int clicks = options.em2[0] > 0 ? 1 : chance(20) ? 2 : 0; clicks > 0; --clicks)
        clickOn(window, u"Check2"_s);
    for (const auto& [boxes, columns] : fieldsOf(options))
        typePositions(window, boxes, columns);
    if (chance(8)) {
        leave(window, u"Command2"_s);
        return false;
    }
    return true;
}

void RandomSession::finishTrimbleImport(const PlainImport& import) {
    noteVast(import.survey, "an import");
    expect(trimbleReport(std::ssize(import.survey.sites), import.rejected), kTrimbleReportTitle);
    if (import.tooManyRows) {
        expect(u"Too many rows: Please specify a larger distance value"_s);
        reached_.note("too many rows from an import");
    }
    clickOn(shownWindow(u"frmIniDisplay"_s), u"Command1"_s);
    survey_ = import.survey;
    surveyImported();
    rowDialog_ = import.tooManyRows;
    measured_ = !survey_.empty();
    counted_ = false;
    log_ = import.log;
}

// More rows than the program holds, or one that is longer than a selection, and what it says to them.
void RandomSession::importManyRows() {
    many_ = true;
    if (chance(50))
        importTrimble();
    else
        importGeneric();
    many_ = false;
    QCoreApplication::processEvents();
    compare();
    using View = void (RandomSession::*)();
    const View view = oneOf(std::vector<View>{&RandomSession::openRowPlots, &RandomSession::plotGrid,
                                              &RandomSession::reviewRows, &RandomSession::editRows});
    if (canChoose("mnuX") && canChoose("mnuGrid") && difference_.empty()) (this->*view)();
}

}  // namespace tessel
