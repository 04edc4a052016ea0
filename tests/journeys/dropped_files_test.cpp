// SPDX-License-Identifier: GPL-3.0-or-later
// Files dropped on the main window.
#include "support/RunningProgram.h"

namespace tessel {

namespace {

class DroppedFiles : public testing::Test, protected RunningProgram {
  protected:
    // Whether the window takes a file of these bytes.
    bool dropBytes(std::string_view bytes) {
        writeFile(path(), bytes);
        return drop(path());
    }
    std::string path() const { return folder / "dropped file.dat"; }
};

}  // namespace

TEST_F(DroppedFiles, StartTheGenericImportWithTheirNameFilledIn) {
    EXPECT_TRUE(dropBytes("1,2,3\n4,5,6\n"));
    QWidget& window = shownWindow(u"frmGeneric"_s);
    EXPECT_EQ(controlAs<QLineEdit>(window, u"txtGFile"_s).text(), fromPath(path()));
    EXPECT_FALSE(dropBytes("1,2,3\n")) << "a window is open";
}

TEST_F(DroppedFiles, StartTheImportOfTablesWithTheirNameFilledIn) {
    EXPECT_TRUE(dropBytes("lat;lon;ec\n5224.4N;00220.6W;3\n5224.4N;00220.6W;3\n"));
    QWidget& window = shownWindow(u"frmTable"_s);
    EXPECT_EQ(controlAs<QLineEdit>(window, u"txtFile"_s).text(), fromPath(path()));
}

TEST_F(DroppedFiles, StartTheImportOfFixedColumnsWhichAsksForNoFileThen) {
    EXPECT_TRUE(dropBytes("AB0001CD0002EF0003\n"));
    QWidget& control = shownWindow(u"frmDataControl"_s);
    typeInto(control, u"Text2"_s, u"3"_s);
    clickOn(control, u"Command1"_s);
    EXPECT_EQ(theSession().InputFileName, path());
    clickOn(shownWindow(u"frmIniDisplay"_s), u"Command2"_s);
}

TEST_F(DroppedFiles, ThatAreNoneAreRefused) {
    EXPECT_FALSE(drop(QList<QUrl>{}));
    EXPECT_FALSE(drop({QUrl(u"https://example.org/a.csv"_s)}));
    boxes.tell(fromPath(folder / "gone") + u" cannot be opened: No such file or directory"_s);
    EXPECT_TRUE(drop(folder / "gone"));
}

}  // namespace tessel
