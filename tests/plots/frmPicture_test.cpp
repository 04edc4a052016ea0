// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/frmPicture.h"

#include "desktop/FileDialogs.h"
#include "plots/Chart2D.h"
#include "support/ExpectedBoxes.h"
#include "support/UserDriver.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

class PictureWindow : public testing::Test {
  protected:
    PictureWindow() {
        chart.resize(500, 400);
        chart.show();
        setFileResponder([this](const FileQuestion& question) {
            question_ = question;
            return fromPath(file);
        });
        window = std::make_unique<frmPicture>(&chart, PlotPicture({&chart}));
        window->show();
    }

    Chart2D chart;
    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::string file = folder / "plot";
    FileQuestion question_;
    std::unique_ptr<frmPicture> window;
};

}  // namespace

TEST_F(PictureWindow, SavesDotsTwiceAsWideAsTheScreenOrAsWideAsChosen) {
    clickOn(*window, u"cmdSave"_s);
    EXPECT_EQ(question_.suffix, u"png"_s);
    EXPECT_TRUE(question_.toSave);
    EXPECT_EQ(QImage(fromPath(file)).size(), QSize(1000, 800));
    EXPECT_FALSE(window->isVisible());
    window->show();
    window->spinWidth->selectAll();
    QTest::keyClicks(window->spinWidth, u"750"_s);
    QTest::keyClick(window->spinWidth, Qt::Key_Return);
    EXPECT_EQ(QImage(fromPath(file)).size(), QSize(750, 600));
}

TEST_F(PictureWindow, SavesLines) {
    clickOn(*window, u"optSVG"_s);
    EXPECT_FALSE(window->spinWidth->isEnabled()) << "lines have no dots";
    clickOn(*window, u"cmdSave"_s);
    EXPECT_EQ(question_.suffix, u"svg"_s);
    EXPECT_TRUE(readFile(file).starts_with("<?xml"));
    window->show();
    clickOn(*window, u"optPDF"_s);
    clickOn(*window, u"cmdSave"_s);
    EXPECT_EQ(question_.suffix, u"pdf"_s);
    EXPECT_TRUE(readFile(file).starts_with("%PDF"));
}

TEST_F(PictureWindow, SavesTheKindThatTheNameEndsIn) {
    for (const auto& [chosen, name, beginning] :
         {std::tuple{u"optPNG"_s, "plot.svg", "<?xml"}, std::tuple{u"optPNG"_s, "plot.PDF", "%PDF"},
          std::tuple{u"optPDF"_s, "plot.png", "\x89PNG"}, std::tuple{u"optSVG"_s, "plot.2", "<?xml"}}) {
        clickOn(*window, chosen);
        file = folder / name;
        clickOn(*window, u"cmdSave"_s);
        EXPECT_TRUE(readFile(file).starts_with(beginning)) << name;
        window->show();
    }
}

TEST_F(PictureWindow, SavesNothingWhenNoFileIsChosenOrWithCancel) {
    file.clear();
    clickOn(*window, u"cmdSave"_s);
    EXPECT_TRUE(window->isVisible()) << "another file can be chosen";
    clickOn(*window, u"cmdCancel"_s);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(PictureWindow, SaysWhereItCannotSave) {
    file = folder / "gone/plot.png";
    boxes.tell(QString::fromStdString(file) + u" cannot be written: No such file or directory"_s);
    clickOn(*window, u"cmdSave"_s);
    EXPECT_TRUE(window->isVisible());
}

}  // namespace tessel
