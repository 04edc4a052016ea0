// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "plots/Chart2D.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

struct TypedRow {
    bool numeric = false;
    double number = 0;
    bool within(int rows) const { return number >= 1 && number <= rows; }
};

TypedRow typedRow(const QString& text) {
    TypedRow row;
    row.numeric = plainNumeric(text.toStdString(), row.number);
    row.number = std::nearbyint(row.number);
    return row;
}

}  // namespace

// One or more operations in the row dialog, which may stay open beside whatever comes next.
void RandomSession::editRows() {
    const bool wasOpen = rowDialog_;
    if (!wasOpen) typed_.reset();
    if (!wasOpen || (canChoose("mnuData") && chance(30))) {
        if (!choose(u"mnuData"_s, false)) return;
        rowDialog_ = true;
    }
    if (wasOpen) reached_.note("a row dialog that has stayed open");
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    bringToFront(dialog);
    // Nothing chosen yet, nothing happens.
    if (!wasOpen && chance(20)) clickOn(dialog, u"Command1"_s);
    for (int tries = 0; rowDialog_ && tries < 8 && difference_.empty(); ++tries) {
        const bool editable = survey_.rowIndex <= 250;
        const int operation = editable ? below(3) : 2;
        same("enabled Option1", control(dialog, u"Option1"_s).isEnabled(), editable);
        if (operation == 0)
            joinRows(dialog);
        else if (operation == 1)
            deleteRow(dialog);
        else
            recalculate(dialog);
        if (chance(10)) break;
    }
    if (!rowDialog_ || chance(50)) return;
    leave(dialog, u"Command2"_s);
    rowDialog_ = false;
}

void RandomSession::joinRows(QWidget& dialog) {
    const int row = 1 + below(std::max(1, survey_.rows - 1));
    std::vector<QString> entry = {QString::number(row), QString::number(row + 1)};
    if (chance(40)) std::swap(entry[0], entry[1]);
    const std::vector<QString> bad = {u"abc"_s, u""_s,    u"0"_s,
                                      u"-1"_s,  u"1e9"_s, u"1.5"_s,
                                      u"1"_s,   u"2.5"_s, QString::number(survey_.rows + 1)};
    if (chance(30)) entry[static_cast<std::size_t>(below(2))] = oneOf(bad);
    clickOn(dialog, u"Option1"_s);
    typed_.reset();
    typeInto(dialog, u"Text2"_s, entry[0]);
    typeInto(dialog, u"Text3"_s, entry[1]);
    const TypedRow a = typedRow(entry[0]), b = typedRow(entry[1]);
    const bool within = a.within(survey_.rows) && b.within(survey_.rows);
    const bool valid = a.numeric && b.numeric && within && std::abs(a.number - b.number) == 1;
    if (survey_.empty())
        noSitesLeft();
    else if (!a.numeric || !b.numeric)
        expect(u"Invalid Input: you have to enter numeric value(s)"_s);
    else if (!within)
        expect(u"Invalid Input: row number(s) out of range"_s);
    else if (!valid)
        expect(u"Invalid Input: you have to enter two consecutive numbers"_s);
    clickOn(dialog, u"Command1"_s);
    if (survey_.empty()) rowDialog_ = false;
    if (!valid || survey_.empty()) return;
    rowDialog_ = false;
    joinPlainRows(survey_, static_cast<int>(a.number), static_cast<int>(b.number));
    counted_ = true;
    plotsFollow();
}

void RandomSession::deleteRow(QWidget& dialog) {
    const std::vector<QString> bad = {
        u"abc"_s, u""_s, u"0"_s, u"-1"_s, u"1e9"_s, u"0.5"_s, QString::number(survey_.rows + 1)};
    const QString entry = chance(25) ? oneOf(bad) : QString::number(1 + below(std::max(1, survey_.rows)));
    clickOn(dialog, u"Option2"_s);
    typed_.reset();
    typeInto(dialog, u"Text4"_s, entry);
    const TypedRow row = typedRow(entry);
    if (survey_.empty()) {
        noSitesLeft();
        clickOn(dialog, u"Command1"_s);
        rowDialog_ = false;
        return;
    }
    const bool valid = row.numeric && row.within(survey_.rows);
    if (!row.numeric)
        expect(u"Invalid Input: you have to enter a numeric value"_s);
    else if (!valid)
        expect(u"Invalid Input: row number out of range"_s);
    else
        deletePlainRow(survey_, static_cast<int>(row.number));
    if (valid && survey_.empty()) noSitesLeft();
    clickOn(dialog, u"Command1"_s);
    if (!valid) return;
    rowDialog_ = false;
    counted_ = true;
    plotsFollow();
}

// What the dialog says before anything is done is what would come of it.
void RandomSession::compareForecast(QWidget& dialog, int measure, const QString& entry) {
    double distance = 0;
    QString wanted;
    if (plainNumeric(entry.toStdString(), distance) && distance >= 0 && !survey_.empty()) {
        PlainSurvey divided = survey_;
        divided.measure = measure;
        divided.minDistance = distance;
        if (!findPlainRows(divided))
            wanted = u"more than 250 rows"_s;
        else
            wanted = divided.rows == 1 ? u"1 row"_s : u"%1 rows"_s.arg(divided.rows);
    }
    sameText("lblRows", controlAs<QLabel>(dialog, u"lblRows"_s).text(), wanted);
}

QPoint RandomSession::placeInPlot(Chart2D& chart) {
    const QRect area = chart.plotArea().toAlignedRect().adjusted(1, 1, -1, -1);
    return {area.left() + below(std::max(1, area.width())), area.top() + below(std::max(1, area.height()))};
}

// On the lag distance plot beside the dialog, whatever is chosen there; it is opened where it is not.
void RandomSession::dragDistance() {
    if (!rowDialog_) {
        if (!choose(u"mnuData"_s, false)) return;
        rowDialog_ = true;
        typed_.reset();
    }
    auto& chart = controlAs<Chart2D>(*main_, chart_);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    const QPoint to = placeInPlot(chart);
    const double height = chart.pixelToData(to).y;
    const double pixel = std::abs(height - chart.pixelToData(to + QPoint(0, 1)).y);
    drag(chart, chance(30) ? to : placeInPlot(chart), to, Qt::LeftButton, Qt::ControlModifier);
    const QString box = lagMeasure_ == 1 ? u"Text1"_s : lagMeasure_ == 2 ? u"Text5"_s : u"Text6"_s;
    const QString entry = controlAs<QLineEdit>(dialog, box).text();
    double distance = 0;
    if (!plainNumeric(entry.toStdString(), distance) ||
        std::abs(distance - std::max(0.0, height)) > 2 * pixel)
        differ("the distance dragged is " + entry.toStdString());
    reached_.note("a distance dragged");
    compareForecast(dialog, lagMeasure_, entry);
    typed_ = {lagMeasure_, distance};
    const int way = below(4);
    if (way == 0) {
        pressKey(chart, Qt::Key_Escape);
        rowDialog_ = false;
    } else if (way == 1) {
        reached_.note("a dragged distance accepted");
        acceptDistance(lagMeasure_, entry, [&] { pressKey(chart, Qt::Key_Return); });
    } else if (way == 2 && canChoose("mnuGrid")) {
        showGrid(u"mnuGrid"_s);
    }
}

void RandomSession::recalculate(QWidget& dialog) {
    const int measure = 1 + below(3);
    const QString box = measure == 1 ? u"Text1"_s : measure == 2 ? u"Text5"_s : u"Text6"_s;
    const std::vector<QString> entries = {u"abc"_s, u""_s,  u"-1"_s,  u"3 m"_s, u"0"_s,
                                          u"3"_s,   u"3"_s, u"2.5"_s, u"0.9"_s, u"1e3"_s};
    const QString entry = chance(15) ? u"0"_s : oneOf(entries);
    clickOn(dialog, u"Option%1"_s.arg(measure + 2));
    typeInto(dialog, box, entry);
    compareForecast(dialog, measure, entry);
    acceptDistance(measure, entry, [&] { clickOn(dialog, u"Command1"_s); });
}

void RandomSession::acceptDistance(int measure, const QString& entry, const Action& accept) {
    typed_.reset();
    double distance = 0;
    const bool numeric = plainNumeric(entry.toStdString(), distance);
    if (survey_.empty())
        noSitesLeft();
    else if (!numeric)
        expect(u"Invalid Input: you have to enter a numeric value"_s);
    else if (distance < 0)
        expect(u"Invalid Input: the number has to be greater than zero"_s);
    const bool runs = !survey_.empty() && numeric && distance >= 0;
    bool found = false;
    if (runs) {
        PlainSurvey divided = survey_;
        divided.measure = measure;
        divided.minDistance = distance;
        noteVast(divided, "a recalculation");
        found = findPlainRows(divided);
        survey_ = divided;
        if (!found) {
            expect(u"Too many rows: Please specify a larger distance value"_s);
            reached_.note("too many rows from a recalculation");
        }
    }
    accept();
    if (survey_.empty()) rowDialog_ = false;
    if (!runs) return;
    if (!found) typed_ = {measure, distance};
    plotsFollow();
    measured_ = true;
    counted_ = found;
    if (!found) return;
    rowDialog_ = false;
    setMenus(true, {"mnuRow", "mnuStat", "mnuDistance", "mnuGrid"});
}

}  // namespace tessel
