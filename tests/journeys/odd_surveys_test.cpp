// SPDX-License-Identifier: GPL-3.0-or-later
// Odd sensor files on their way through the whole program: imported, looked at in every view, and exported.
#include "desktop/FileDialogs.h"
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

const std::string kFolder = std::string(TESSEL_SOURCE_DIR) + "/tests/import/data/odd_input/";

// Lines of the form "iiii xxxxxxxx yyyyyyyy 11111111".
TrimbleEntries entries(const std::string& file) {
    return {fromPath(file),     u"50"_s, {u"1"_s, u"4"_s}, {u"6"_s, u"13"_s}, {u"15"_s, u"22"_s},
            {u"24"_s, u"31"_s}, {}};
}

class OddSurveys : public testing::Test, protected RunningProgram {
  protected:
    OddSurveys() { theSession().AppDir = TESSEL_SOURCE_DIR; }

    void import(const std::string& file, int sites, int rejected) {
        expectTrimbleReport(sites, rejected);
        importTrimbleFile(*main, entries(file));
        EXPECT_EQ(theSurvey().NumSites, sites);
    }

    // No view may complain, or end the program.
    void lookAtEverything() {
        for (const char16_t* item : {u"mnuX", u"mnuY", u"mnuGrid", u"mnuTrue_Dis", u"mnuX_Dis", u"mnuY_Dis",
                                     u"mnuStat", u"mnuHist", u"mnuIDEW", u"mnuData", u"mnuAdjust"}) {
            SCOPED_TRACE(QString::fromUtf16(item).toStdString());
            chooseItem(*main, QString::fromUtf16(item));
            EXPECT_FALSE(main->grab().isNull());
            for (QWidget* window : QApplication::topLevelWidgets())
                if (window->isVisible() && window != main.get() && window->isWindow()) {
                    EXPECT_FALSE(window->grab().isNull());
                    window->close();
                }
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    void exportAndCount() {
        exportTo(folder / "out.txt");
        const std::string lines = readFile(folder / "out.txt");
        EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), theSurvey().NumSites);
    }
};

}  // namespace

TEST_F(OddSurveys, GoAllTheWay) {
    const std::tuple<const char*, int, int> files[] = {{"one_line_without_end.dat", 1, 0},
                                                       {"carriage_returns_alone.dat", 4, 0},
                                                       {"line_feeds_alone.dat", 4, 0},
                                                       {"mixed_line_ends.dat", 4, 0},
                                                       {"byte_order_mark.dat", 4, 0},
                                                       {"latin1_and_utf8_text.dat", 2, 1},
                                                       {"nul_bytes.dat", 2, 1},
                                                       {"fields_cut_by_line_end.dat", 1, 3},
                                                       {"fields_behind_line_end.dat", 1, 2},
                                                       {"number_forms.dat", 6, 6},
                                                       {"all_at_one_place.dat", 30, 0},
                                                       {"missing_fixes_at_zero.dat", 11, 0},
                                                       {"negative_coordinates_only.dat", 5, 0},
                                                       {"rows_250.dat", 500, 0},
                                                       {"rows_of_one_site.dat", 20, 0},
                                                       {"coordinates_of_1e300.dat", 2, 0}};
    for (const auto& [name, sites, rejected] : files) {
        SCOPED_TRACE(name);
        import(kFolder + name, sites, rejected);
        lookAtEverything();
        exportAndCount();
    }
}

TEST_F(OddSurveys, WithoutASiteLeaveNothingToLookAtAndGiveAnEmptyFile) {
    for (const auto& [name, rejected] : {std::pair{"empty.dat", 0}, {"binary_logger_file.dat", 17}}) {
        SCOPED_TRACE(name);
        import(kFolder + name, 0, rejected);
        EXPECT_THROW(chooseItem(*main, u"mnuX"_s), DriverError);
        exportAndCount();
    }
}

TEST_F(OddSurveys, OfOneRowTooManyAreToldAndExportedOnlyWhenTheUserSaysSo) {
    expectTrimbleReport(502, 0);
    expectTooManyRows();
    importTrimbleFile(*main, entries(kFolder + "rows_251.dat"));
    shownWindow(u"frmDataEdit"_s).close();
    EXPECT_EQ(theSurvey().NumSites, 502);
    exportAndCount();
}

}  // namespace tessel
