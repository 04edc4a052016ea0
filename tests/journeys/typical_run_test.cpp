// SPDX-License-Identifier: GPL-3.0-or-later
// The typical run as one journey through the real windows, beside a plain second implementation that derives
// the file it must end with from the bytes of the sensor file.
#include "drawing/PictureBox.h"
#include "journal/journal.h"
#include "support/PlotWindow.h"
#include "support/RunningProgram.h"
#include "support/plain_survey.h"

namespace tessel {

namespace {

const std::string kSamples = TESSEL_SOURCE_DIR "/samples/";

class TypicalRun : public testing::Test, protected RunningProgram {
  protected:
    void importSerpentine();
    void reviewStatistics();
    void plotGrid();
    void deleteOnTheMap(QPointF from, QPointF to);
    void deleteHighestReadingOfRow(int row);
    void adjust();
    void plotReadings();

    PlainSurvey plain;
};

void TypicalRun::importSerpentine() {
    const std::string file = kSamples + "serpentine_two_readings.dat";
    expectTrimbleReport(6070, 14);
    importTrimbleFile(*main, {file, u"3"_s, {1, 8}, {10, 21}, {23, 34}, {36, 43}, {45, 52}});
    PlainTrimbleOptions options{{1, 8}, {10, 21}, {23, 34}, {36, 43}, {45, 52}};
    options.minDistance = 3;
    const PlainImport import = plainTrimbleImport(readFile(file), options);
    plain = import.survey;
    EXPECT_EQ(plain.sites.size(), 6070U);
    EXPECT_EQ(import.rejected, 14);
    EXPECT_EQ(readFile(folder / "error_log.dat"), import.log);
}

void TypicalRun::reviewStatistics() {
    chooseItem(*main, u"mnuStat"_s);
    QWidget& statistics = shownWindow(u"frmStat"_s);
    EXPECT_EQ(controlAs<QLabel>(statistics, u"lblInfo"_s).text(), u"Total # of detected rows = 40"_s);
    chooseItem(statistics, u"mnuStatExit"_s);
}

void TypicalRun::plotGrid() {
    chooseItem(*main, u"mnuGrid"_s);
    const auto& chart = controlAs<Chart2D>(*main, u"Chart2D2"_s);
    ASSERT_EQ(chart.seriesCount(Chart2D::kData), 40);
    EXPECT_EQ(chart.pointCount(Chart2D::kData, 7), plain.rowSizes()[6]);
}

// A rectangle on the full map at the true scale, with corners in parts of the picture.
void TypicalRun::deleteOnTheMap(QPointF from, QPointF to) {
    chooseItem(*main, u"mnuIDEW"_s);
    QWidget& map = shownWindow(u"frmClip"_s);
    main->hide();  // on a small screen the pointer would find it through the map
    chooseItem(map, u"mnuFullMapTrue"_s);
    QCoreApplication::processEvents();
    clickOn(map, u"cmdClipOn"_s);
    auto& box = controlAs<PictureBox>(map, u"picMapZoom"_s);
    const auto pixel = [&](QPointF part) {
        return QPointF(part.x() * box.width(), part.y() * box.height()).toPoint();
    };
    for (const QPoint& corner : {pixel(from), pixel(to)}) {
        QTest::mouseMove(&box, corner);
        QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, corner);
    }
    clickOn(map, u"cmdClipOff"_s);

    const auto by = [](double PlainSite::*c) {
        return [c](const PlainSite& a, const PlainSite& b) { return a.*c < b.*c; };
    };
    const auto [west, east] = std::minmax_element(plain.sites.begin(), plain.sites.end(), by(&PlainSite::x));
    const auto [south, north] =
        std::minmax_element(plain.sites.begin(), plain.sites.end(), by(&PlainSite::y));
    const double side = std::max(east->x - west->x, north->y - south->y);
    const double left = (west->x + east->x - side) / 2, bottom = (south->y + north->y - side) / 2;
    const auto surveyX = [&](int x) { return left + side * (1.1 * x / box.width() - 0.05); };
    const auto surveyY = [&](int y) { return bottom + side * (1.05 - 1.1 * y / box.height()); };
    std::vector<bool> marks;
    for (const PlainSite& site : plain.sites)
        marks.push_back(site.x > surveyX(pixel(from).x()) && site.x < surveyX(pixel(to).x()) &&
                        site.y < surveyY(pixel(from).y()) && site.y > surveyY(pixel(to).y()));
    const auto masked = std::count(marks.begin(), marks.end(), true);
    EXPECT_GT(masked, 10);
    EXPECT_EQ(controlAs<QLabel>(map, u"lblMS"_s).text(), QString::number(masked));
    deleteMarkedPlainSites(plain, marks);

    boxes.ask(true,
              u"This action will permanently delete all currently masked site.\n"
              u"Are you sure you wish to delete these sites?"_s);
    boxes.tell(u"All masked sites have been deleted."_s);
    clickOn(map, u"cmdDelete"_s);
    chooseItem(map, u"mnuDone"_s);
    waitUntilClosed(u"frmClip"_s);
    main->show();
}

// A piece of metal, picked on the profile.
void TypicalRun::deleteHighestReadingOfRow(int row) {
    clickOn(*main, u"Option2"_s);
    typeInto(*main, u"Text1"_s, QString::number(row));
    clickOn(*main, u"Command3"_s);
    const auto sites = plain.sitesOfRow(row);
    const auto highest = std::max_element(sites.begin(), sites.end(), [this](std::size_t a, std::size_t b) {
        return plain.sites[a].em1 < plain.sites[b].em1;
    });
    clickPoint(controlAs<Chart2D>(*main, u"Chart2D3"_s), 1, highest - sites.begin() + 1);
    clickOn(*main, u"Command5"_s);
    deletePlainSites(plain, row, {*highest});
}

void TypicalRun::adjust() {
    chooseItem(*main, u"mnuAdjust"_s);
    QWidget& window = shownWindow(u"frmAdjustData"_s);
    typeInto(window, u"txtAdjEC1"_s, u"-2.5"_s);
    clickOn(window, u"cmdCompute"_s);
    clickOn(window, u"optScale"_s);
    typeInto(window, u"txtScale1"_s, u"1.1"_s);
    typeInto(window, u"txtScale2"_s, u"0.9"_s);
    clickOn(window, u"cmdCompute"_s);
    clickOn(window, u"cmdFinished"_s);
    for (PlainSite& site : plain.sites) {
        site.em1 = (site.em1 - 2.5) * 1.1;
        site.em2 *= 0.9;
    }
}

void TypicalRun::plotReadings() {
    chooseItem(*main, u"mnuHist"_s);
    QWidget& histograms = shownWindow(u"frmHistForm"_s);
    chooseItem(histograms, u"mnuPlot"_s);
    EXPECT_TRUE(control(histograms, u"HG2"_s).isVisible());
    chooseItem(histograms, u"mnuDone"_s);
    chooseItem(*main, u"mnuSigCorr"_s);
    QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
    chooseItem(correlation, u"mnuPlot1"_s);
    const auto point = controlAs<Chart2D>(correlation, u"Chart2D1"_s).point(Chart2D::kData, 1, 1);
    EXPECT_EQ(point, (Chart2D::Point{plain.sites[0].em1, plain.sites[0].em2}));
    chooseItem(correlation, u"mnuExit"_s);
}

}  // namespace

TEST_F(TypicalRun, EndsWithTheFileThatAPlainSecondImplementationDerives) {
    importSerpentine();
    reviewStatistics();
    plotGrid();
    deleteOnTheMap({0.3, 0.3}, {0.42, 0.36});
    EXPECT_TRUE(isVisible(u"Chart2D2"_s)) << "the grid plot follows";
    chooseItem(*main, u"mnuY"_s);
    for (const int row : {1, 4, 9, 40})
        deleteHighestReadingOfRow(row);
    clickOn(*main, u"Command4"_s);
    adjust();
    plotReadings();

    exportTo(folder / "transect.txt", u"5"_s);
    const std::string expected = plainTransect(plain, true, 5);
    EXPECT_GT(expected.size(), 400'000U);
    EXPECT_TRUE(readFile(folder / "transect.txt") == expected);
    EXPECT_TRUE(main->close());
}

namespace {

struct GenericSample {
    const char* file;
    int layout;
    bool ids, two, rows;
    int dropped;
};

class GenericSamples : public TypicalRun, public testing::WithParamInterface<GenericSample> {
  protected:
    // The survey that all samples hold, from the one with every column; readings below 0 and what is no
    // number are dropped.
    static std::vector<PlainSite> wholeSurvey() {
        std::vector<PlainSite> sites;
        std::istringstream lines(readFile(kSamples + "generic_4_site_xy_ec1_ec2_row.csv"));
        for (std::string line; std::getline(lines, line);) {
            std::istringstream fields(line);
            std::vector<double> values;
            double value = 0;
            for (std::string field; std::getline(fields, field, ',');)
                if (plainNumeric(field.substr(0, field.find('\r')), value)) values.push_back(value);
            if (values.size() == 6 && values[3] >= 0 && values[4] >= 0)
                sites.push_back({values[1], values[2], values[3], values[4], values[0], int(values[5])});
        }
        return sites;
    }

    void importSample() {
        expectGenericReport(600, GetParam().dropped);
        importGeneric(kSamples + GetParam().file, GetParam().layout);
    }
};

}  // namespace

TEST_P(GenericSamples, GiveTheSameSurveyAsFarAsTheirLayoutCarriesIt) {
    importSample();
    EXPECT_EQ(theSurvey().NumRows, GetParam().rows ? 12 : 1);
    if (!GetParam().rows) findRows(u"3"_s);

    plain.sites = wholeSurvey();
    ASSERT_EQ(plain.sites.size(), 600U);
    plain.ids = GetParam().ids;
    plain.two = GetParam().two;
    exportTo(folder / "out.txt");
    EXPECT_EQ(readFile(folder / "out.txt"), plainTransect(plain, true, 1));
}

INSTANTIATE_TEST_SUITE_P(
    EveryLayout, GenericSamples,
    testing::Values(GenericSample{"generic_1_xy_ec1_row.csv", 0, false, false, true, 3},
                    GenericSample{"generic_2_xy_ec1_ec2_row.txt", 1, false, true, true, 4},
                    GenericSample{"generic_3_site_xy_ec1_row.txt", 2, true, false, true, 3},
                    GenericSample{"generic_4_site_xy_ec1_ec2_row.csv", 3, true, true, true, 5},
                    GenericSample{"generic_5_xy_ec1.txt", 4, false, false, false, 3},
                    GenericSample{"generic_6_xy_ec1_ec2.csv", 5, false, true, false, 4},
                    GenericSample{"generic_7_site_xy_ec1.txt", 6, true, false, false, 3},
                    GenericSample{"generic_8_site_xy_ec1_ec2.txt", 7, true, true, false, 4}),
    [](const testing::TestParamInfo<GenericSample>& sample) {
        return "Layout" + std::to_string(sample.index + 1);
    });

}  // namespace tessel
