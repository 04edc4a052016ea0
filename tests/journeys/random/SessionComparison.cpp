// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "base/session.h"
#include "journal/journal.h"
#include "journeys/random/RandomSession.h"
#include "plots/RowPlotEditor.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool sameSites(const std::vector<PlainSite>& a, const std::vector<PlainSite>& b) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(), [](const PlainSite& one, const PlainSite& other) {
            return sameBits(one.x, other.x) && sameBits(one.y, other.y) && sameBits(one.em1, other.em1) &&
                   sameBits(one.em2, other.em2) && one.row == other.row && one.id == other.id;
        });
}

std::string shown(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

}  // namespace

void RandomSession::compare() {
    if (!boxes_.isEmpty()) differ("a box did not come: " + boxes_.first().text.toStdString());
    if (!files_.isEmpty()) differ("a file dialog did not come");
    compareSites();
    compareRows();
    compareMenus();
    comparePlots();
    compareRowPlots();
    noteState();
}

void RandomSession::compareSites() {
    const Survey& survey = theSurvey();
    same<long>("NumSites", survey.NumSites, static_cast<long>(survey_.sites.size()));
    same("SiteIDPresent", survey.SiteIDPresent, survey_.ids);
    same("TwoEMColumns", survey.TwoEMColumns, survey_.two);
    if (!difference_.empty()) return;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const PlainSite& site = survey_.sites[static_cast<std::size_t>(i)];
        const double id = survey_.ids ? survey.SiteID[static_cast<std::size_t>(i)] : site.id;
        const double actual[] = {survey.SiteData(kX, i),   survey.SiteData(kY, i),
                                 survey.SiteData(kEM1, i), survey_.two ? survey.SiteData(kEM2, i) : site.em2,
                                 survey.SiteData(kRow, i), id};
        const double wanted[] = {site.x, site.y, site.em1, site.em2, double(site.row), site.id};
        const char* const names[] = {"X", "Y", "EM1", "EM2", "row", "ID"};
        for (std::size_t field = 0; field < 6; ++field)
            if (!sameBits(actual[field], wanted[field]))
                differ(std::string(names[field]) + " of site " + std::to_string(i) + " is " +
                       shown(actual[field]) + ", expected " + shown(wanted[field]));
        same<long>("the line of site " + std::to_string(i), survey.SourceLine[static_cast<std::size_t>(i)],
                   site.line);
    }
    if (!sameBits(theSurvey().EMAdjustTotalA, totalA_)) differ("EMAdjustTotalA differs");
    if (!sameBits(theSurvey().EMAdjustTotalB, totalB_)) differ("EMAdjustTotalB differs");
    noteContent();
    same("DataSaved", theSession().DataSaved, content_ == exported_);
    const std::string log = folder_ / "error_log.dat";
    if (std::filesystem::exists(log) ? readFile(log) != log_ : !log_.empty()) differ("the error log differs");
}

// Acts that cancel each other out leave another survey for the program, but for those that change nothing: of
// several at once only the journal knows.
void RandomSession::noteContent() {
    const bool known = content_ != notedContent_;
    const bool several = theJournal().position() > acts_ + 1;
    if (!known && !sameSites(survey_.sites, noted_))
        content_ = ++contents_;
    else if (!known && several && theJournal().content() != journalsContent_)
        content_ = ++contents_;
    noted_ = survey_.sites;
    notedContent_ = content_;
    journalsContent_ = theJournal().content();
}

void RandomSession::compareRows() {
    const Survey& survey = theSurvey();
    same("NumRows", survey.NumRows, survey_.rows);
    same("too many rows", survey.RowIndex > 250, survey_.rowIndex > 250);
    same("MinDistance", survey.MinDistance, survey_.minDistance);
    same("DistanceMode", survey.DistanceMode, survey_.measure);
    if (!difference_.empty()) return;
    const std::vector<long> sizes = survey_.rowSizes();
    if (counted_ && survey_.rows <= 250 && survey_.rowsUsable())
        for (std::size_t r = 0; r < sizes.size(); ++r)
            same<long>("NumPoints of row " + std::to_string(r + 1), survey.NumPoints[r + 1], sizes[r]);
    compareDistances();
}

void RandomSession::compareDistances() {
    const Survey& survey = theSurvey();
    same("UseTrueDist", survey.UseTrueDist, survey_.measure == 1);
    same("UseXDist", survey.UseXDist, survey_.measure == 2);
    same("UseYDist", survey.UseYDist, survey_.measure == 3);
    if (!measured_) return;
    const auto& distances = survey_.measure == 1   ? survey.TrueDist
                            : survey_.measure == 2 ? survey.XDist
                                                   : survey.YDist;
    same("the number of distances", distances.size(), survey_.sites.size() + 1);
    for (std::size_t i = 0; i < distances.size(); ++i)
        if (!sameBits(distances[i], survey_.distance(i)))
            differ("the distance of site " + std::to_string(i) + " is " + shown(distances[i]) +
                   ", expected " + shown(survey_.distance(i)));
    const double largest = survey_.measure == 1   ? survey.MaxTrueDist
                           : survey_.measure == 2 ? survey.MaxXDist
                                                  : survey.MaxYDist;
    if (!distances.empty() && largest != *std::max_element(distances.begin(), distances.end()))
        differ("the largest distance is " + shown(largest));
}

void RandomSession::compareMenus() {
    for (const QAction* action : main_->findChildren<QAction*>()) {
        const std::string name = action->objectName().toStdString();
        if (!name.starts_with("mnu")) continue;
        if (name == "mnuUndo" || name == "mnuRedo" || name == "mnuHistory" ||
            name.starts_with("mnuSaveSurvey"))
            continue;
        const auto found = menus_.find(name);
        if (action == main_->mnuSavePicture)
            same("enabled " + name, action->isEnabled(), editing_ || !chart_.isEmpty());
        else
            same("enabled " + name, action->isEnabled(), found == menus_.end() || found->second);
    }
}

void RandomSession::comparePlots() {
    const auto visible = [this](const QString& name) {
        return main_->findChild<QWidget*>(name)->isVisible();
    };
    for (const QString& chart : {u"Chart2D1"_s, u"Chart2D2"_s})
        same("visible " + chart.toStdString(), visible(chart), chart_ == chart);
    for (const QString& part : {u"Chart2D3"_s, u"Chart2D4"_s, u"Frame1"_s})
        same("visible " + part.toStdString(), visible(part), editing_);
    same("visible lblInvitation", visible(u"lblInvitation"_s), chart_.isEmpty() && !editing_);
    same("visible frmDataEdit", isShown(u"frmDataEdit"_s), rowDialog_);
    same("visible frmStat", isShown(u"frmStat"_s), !statistics_.isEmpty());
    if (!statistics_.isEmpty() && isShown(u"frmStat"_s))
        sameText("lblInfo", controlAs<QLabel>(shownWindow(u"frmStat"_s), u"lblInfo"_s).text(), statistics_);
    if (!difference_.empty()) return;
    if (chart_ == u"Chart2D1") compareLag();
    if (chart_ == u"Chart2D2") compareGrid();
    compareFollowingWindows();
}

// What a window has plotted is the survey as it is, or it has gone.
void RandomSession::compareFollowingWindows() {
    if (isShown(u"frmHistForm"_s)) {
        QWidget& window = shownWindow(u"frmHistForm"_s);
        if (window.findChild<QWidget*>(u"frameHG"_s)->isVisible()) compareHistograms(window);
    }
    if (!isShown(u"frmSigCorrStruct"_s)) return;
    const auto& chart = *shownWindow(u"frmSigCorrStruct"_s).findChild<Chart2D*>(u"Chart2D1"_s);
    if (chart.isVisible())
        same<long>("points of the correlation plot", chart.pointCount(Chart2D::kData, 1),
                   static_cast<long>(survey_.two ? survey_.sites.size() : 0));
}

void RandomSession::compareRowPlots() {
    if (!editing_ || !difference_.empty()) return;
    same("CurrentRow", editor_->CurrentRow, row_);
    same("enabled Command1", editor_->Command1->isEnabled(), back_);
    same("enabled Command2", editor_->Command2->isEnabled(), forward_);
    same("enabled Command3", editor_->Command3->isEnabled(), byNumber_);
    same("enabled Command5", editor_->Command5->isEnabled(), delete_);
    same("enabled cmdSplit", editor_->cmdSplit->isEnabled(), canSplit());
    same("enabled Command6", editor_->Command6->isEnabled(), print_);
    const auto sites = emptied_ ? std::vector<std::size_t>{} : survey_.sitesOfRow(row_);
    const qsizetype count = static_cast<qsizetype>(sites.size());
    const QString points =
        emptied_ ? u"0 point)"_s : u"%1 point%2)"_s.arg(count).arg(count == 1 ? u""_s : u"s"_s);
    sameText("the header of the row map", editor_->Chart2D4->headerText(),
             u"Sample Row Plot:  Row #%1 ("_s.arg(row_) + points);
    same<long>("points selected", editor_->Chart2D3->pointCount(Chart2D::kHighlight, 1),
               static_cast<long>(picked_.size()));
    same<long>("points of the profile", editor_->Chart2D3->pointCount(Chart2D::kData, 1), count);
    same<long>("points of the map", editor_->Chart2D4->pointCount(Chart2D::kData, 1), count);
    if (!difference_.empty()) return;
    for (qsizetype k = 0; k < count; ++k) {
        const PlainSite& site = survey_.sites[sites[static_cast<std::size_t>(k)]];
        const double along = byX_ ? site.x : site.y;
        if (editor_->Chart2D3->point(Chart2D::kData, 1, k + 1) != Chart2D::Point{along, site.em1})
            differ("point " + std::to_string(k + 1) + " of the profile differs");
        if (editor_->Chart2D4->point(Chart2D::kData, 1, k + 1) !=
            Chart2D::Point{along, byX_ ? site.y : site.x})
            differ("point " + std::to_string(k + 1) + " of the map differs");
    }
}

}  // namespace tessel
