#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "support/UserDriver.h"

#include <QLineEdit>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

std::string printed(double value, int decimals) {
    char text[40];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

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

// What a user may type by mistake, and the number that it begins with.
struct BadNumber {
    const char* text;
    double begins;
};
const std::vector<BadNumber> kBadNumbers = {{"abc", 0}, {"", 0},    {"12 m", 12},
                                            {"1,5", 1}, {"--3", 0}, {"5x", 5}};

}  // namespace

// The sites of some runs, out and back; sometimes far more rows than the program holds.
std::vector<PlainSite> RandomSession::drivenSites() {
    std::vector<PlainSite> sites;
    const bool many = chance(6);
    const int rows = many ? 1 : chance(4) ? 0 : 1 + below(9);
    const bool alongX = chance(50), integers = chance(15), west = chance(15);
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
            site.em2 = rounded(numberBetween(-12, 120), 2);
            site.id = double(sites.size() + 1);
            site.row = row + 1;
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
        put(line, options.x, allWrong || chance(2) ? oneOf(wrong) : printed(site.x, 2));
        put(line, options.y, chance(2) ? oneOf(wrong) : printed(site.y, 2));
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
void RandomSession::refuseControls(QWidget& window, PlainTrimbleOptions&) {
    while (chance(25)) {
        const BadNumber bad = oneOf(kBadNumbers);
        const bool first = chance(40), negative = chance(30);
        typeInto(window, u"Text1"_s, first ? QString::fromLatin1(bad.text) : u"-10"_s);
        typeInto(window, u"Text2"_s, first ? u"4"_s : negative ? u"-1"_s : QString::fromLatin1(bad.text));
        expect(first || !negative ? u"Non-numeric EM-cutoff or Minimum distance Input"_s
                                  : u"Error: Minimum distance must be > 0"_s);
        clickOn(window, u"Command1"_s);
        survey_.minDistance = first ? 4 : negative ? -1 : bad.begins;
    }
}

// The first window; false when the user gives up, there or in the file dialog.
bool RandomSession::enterControls(PlainTrimbleOptions& options) {
    chooseItem(*main_, u"mnuOpen"_s);
    QWidget& window = shownWindow(u"frmDataControl"_s);
    refuseControls(window, options);
    if (chance(5)) {
        clickOn(window, u"Command2"_s);
        return false;
    }
    const QString cutoff = oneOf(std::vector<QString>{u"-10"_s, u"0"_s, u"5.5"_s, u"-1e3"_s});
    const QString distance =
        oneOf(std::vector<QString>{u"3"_s, u"3"_s, u"3"_s, u"1.25"_s, u"0"_s, u"1000"_s});
    options.cutoff = cutoff.toDouble();
    options.minDistance = survey_.minDistance = distance.toDouble();
    options.measure = 1 + below(3);
    options.negate = chance(15);
    options.tenth = chance(15);
    typeInto(window, u"Text1"_s, cutoff);
    typeInto(window, u"Text2"_s, distance);
    clickOn(window, u"Option%1"_s.arg(options.measure));
    if (options.negate) clickOn(window, u"Check1"_s);
    if (options.tenth) clickOn(window, u"Check2"_s);
    const bool cancelled = chance(5);
    files_.append(cancelled ? QString() : QString::fromStdString(folder_ / "survey.dat"));
    clickOn(window, u"Command1"_s);
    return !cancelled;
}

// The second window; false when the user gives up.
bool RandomSession::enterFormat(const PlainTrimbleOptions& options) {
    QWidget& window = shownWindow(u"frmIniDisplay"_s);
    const auto type = [&](const QString& boxes, const PlainField& columns) {
        typeInto(window, boxes + u"_0"_s, QString::number(columns[0]));
        typeInto(window, boxes + u"_1"_s, QString::number(columns[1]));
    };
    if (options.id[0] > 0) clickOn(window, u"Check1"_s);
    if (options.em2[0] > 0) clickOn(window, u"Check2"_s);
    if (options.id[0] > 0) type(u"Text1"_s, options.id);
    if (options.em2[0] > 0) type(u"Text5"_s, options.em2);
    while (chance(20)) {
        const PlainField bad = oneOf(std::vector<PlainField>{{6, 5}, {0, 3}, {-2, 4}, {1, 0}});
        type(u"Text3"_s, options.y);
        type(u"Text4"_s, options.em1);
        type(u"Text2"_s, chance(50) ? bad : options.x);
        typeInto(window, u"Text3_0"_s, u"7x"_s);
        sameText("a position box with a letter", controlAs<QLineEdit>(window, u"Text3_0"_s).text(), u""_s);
        expect(u"Invalid Input"_s);
        clickOn(window, u"Command1"_s);
    }
    if (chance(5)) {
        clickOn(window, u"Command2"_s);
        return false;
    }
    type(u"Text2"_s, options.x);
    type(u"Text3"_s, options.y);
    type(u"Text4"_s, options.em1);
    return true;
}

void RandomSession::finishTrimbleImport(const PlainImport& import) {
    QString report =
        u"There are  %1 valid records in this file.\n\nThere are  %2 records in this file\n"
        u"containing non-numeric or invalid numeric values."_s.arg(import.survey.sites.size())
            .arg(import.rejected);
    if (import.rejected > 0) report += u"\n\nPlease refer to the error_log.dat text file for more details."_s;
    expect(report, u"VARN-Tesl File Import Message"_s);
    if (import.tooManyRows) expect(u"Too many rows: Please specify a larger distance value"_s);
    clickOn(shownWindow(u"frmIniDisplay"_s), u"Command1"_s);
    survey_ = import.survey;
    surveyImported();
    rowDialog_ = import.tooManyRows;
    measured_ = !survey_.empty();
    counted_ = false;
    if (readFile(folder_ / "error_log.dat") != import.log) differ("the error log differs");
}

// The delimited file
// ------------------------------------------------------------------------------------------

struct RandomSession::GenericFile {
    std::string bytes;
    PlainSurvey survey;
    long dropped = 0;
    QString rowFault;  // what the user is told about the row numbers
};

RandomSession::GenericFile RandomSession::genericFile(int layout, double cutoff) {
    const bool withRows = layout < 4, withIDs = layout % 4 >= 2, two = layout % 2 == 1;
    GenericFile file;
    file.survey.ids = withIDs;
    file.survey.two = two;
    const int separators = below(3);
    const int firstRow = chance(6) ? 2 : 1;
    const int gap = chance(6) ? 1 : 0;
    const bool manyRows = chance(25);
    for (PlainSite site : drivenSites()) {
        site.row = manyRows ? static_cast<int>(site.id) : site.row + firstRow - 1 + (site.row > 2 ? gap : 0);
        const bool damaged = chance(2);
        std::vector<std::string> values;
        if (withIDs) values.push_back(printed(site.id, 0));
        values.push_back(printed(site.x, 2));
        values.push_back(damaged ? "***" : printed(site.y, 2));
        values.push_back(printed(site.em1, 2));
        if (two) values.push_back(printed(site.em2, 2));
        if (withRows) values.push_back(std::to_string(site.row));
        if (!two) site.em2 = 0;
        if (!withIDs) site.id = 0;
        if (!withRows) site.row = 1;
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i > 0)
                file.bytes += separators == 0 ? "," : separators == 1 ? " " : chance(50) ? " , " : "\t";
            file.bytes += values[i];
        }
        file.bytes += separators == 2 && chance(20) ? " " : "\r\n";
        if (damaged || site.em1 < cutoff || (two && site.em2 < cutoff))
            ++file.dropped;
        else
            file.survey.sites.push_back(site);
    }
    if (chance(5)) {
        file.bytes += "1 2";
        ++file.dropped;
    }
    return file;
}

namespace {

// The row check; what the user is told, and the rows counted.
QString checkRows(PlainSurvey& survey) {
    survey.rows = survey.rowIndex = 0;
    if (survey.empty()) return {};
    if (survey.sites.front().row != 1) return u"Fatal Error! Initial row # not equal to 1. Input aborted."_s;
    int rows = 1;
    for (std::size_t i = 1; i < survey.sites.size(); ++i) {
        const int step = survey.sites[i].row - survey.sites[i - 1].row;
        if (step == 0) continue;
        if (step != 1) return u"Fatal Error! Row #'s are not sorted in sequential order. Input aborted."_s;
        ++rows;
    }
    survey.rows = survey.rowIndex = rows;
    return rows <= 250 ? QString()
                       : u"Warning! Row count > 250.\n"
                         u"This input data file may cause the VARN-Tessel program to crash."_s;
}

}  // namespace

void RandomSession::refuseGeneric(QWidget& window) {
    while (chance(25)) {
        const bool number = chance(50);
        typeInto(window, u"txtminEC"_s, number ? QString::fromLatin1(oneOf(kBadNumbers).text) : u"0.0"_s);
        typeInto(window, u"txtGFile"_s, chance(50) ? u""_s : u"/no/such/file"_s);
        expect(number ? u"Error!  Non-numeric minimum EC cutoff value."_s
                      : u"Please enter a valid input filename."_s);
        clickOn(window, u"cmdImport"_s);
    }
}

void RandomSession::importGeneric() {
    chooseItem(*main_, u"mnuOpen2"_s);
    QWidget& window = shownWindow(u"frmGeneric"_s);
    refuseGeneric(window);
    if (chance(5)) return clickOn(window, u"cmdCancel"_s);
    const int layout = below(8);
    const QString cutoff = oneOf(std::vector<QString>{u"0.0"_s, u"-100"_s, u"-100"_s, u"25"_s});
    GenericFile file = genericFile(layout, cutoff.toDouble());
    file.rowFault = checkRows(file.survey);
    writeFile(folder_ / "generic.txt", file.bytes);
    files_.append(QString::fromStdString(folder_ / "generic.txt"));
    clickOn(window, u"cmdBrowse"_s);
    typeInto(window, u"txtminEC"_s, cutoff);
    clickOn(window, u"optCF_%1"_s.arg(layout));
    finishGenericImport(window, file);
}

void RandomSession::finishGenericImport(QWidget& window, const GenericFile& file) {
    QString report = u"There are %1 valid records in this file."_s.arg(file.survey.sites.size());
    if (file.dropped > 0)
        report +=
            u"\n\nThere are %1 records in this file\ncontaining non-numeric or invalid numeric values.\n"
            u"Please refer to the error_log.dat text file for more details."_s.arg(file.dropped);
    expect(report, u"VARN-Tessel File Import Message"_s);
    if (!file.rowFault.isEmpty()) expect(file.rowFault);
    clickOn(window, u"cmdImport"_s);
    const int measure = survey_.measure == 0 ? 1 : survey_.measure;
    const double minDistance = survey_.minDistance;
    survey_ = file.survey;
    survey_.measure = measure;
    survey_.minDistance = minDistance;
    surveyImported();
    const bool refused = file.rowFault.startsWith(u"Fatal"_s);
    measured_ = !survey_.empty() && !refused;
    counted_ = measured_;
    if (!refused) return;
    setMenus(false, {"mnuSigCorr", "mnuHist", "mnuClear", "mnuData", "mnuInvokeIDE", "mnuIDEW", "mnuDistance",
                     "mnuGrid", "mnuStat", "mnuRow", "mnuAdjust", "mnuEL", "mnuSave"});
    clickOn(window, u"cmdCancel"_s);
}
