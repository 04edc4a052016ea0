// SPDX-License-Identifier: GPL-3.0-or-later
// What the window of the generic import shows of a file before it is imported.
#include "import/GenericWindow.h"
#include "journal/journal.h"
#include "support/reads.h"

namespace tessel {

TEST_F(GenericImport, ShowsTheColumnsOfTheLayoutBeforeAFileIsChosen) {
    EXPECT_EQ(previewColumns(), u"Site_# X-cord Y-cord Ec1"_s);
    EXPECT_EQ(window.tblPreview->model()->rowCount(), 0);
    EXPECT_TRUE(window.lblFit->text().startsWith(u"Choose a file"_s));
    EXPECT_FALSE(window.chkDecimalComma->isVisible());
    EXPECT_FALSE(window.lblKind->isVisible());
    click(option(3));
    EXPECT_EQ(previewColumns(), u"Site_# X-cord Y-cord Ec1 Ec2 Row_#"_s);
    click(option(5));
    EXPECT_EQ(previewColumns(), u"X-cord Y-cord Ec1 Ec2"_s);
}

TEST_F(GenericImport, CopiesNothingFromAPreviewWithoutLines) {
    EXPECT_FALSE(window.tblPreview->model()->data(QModelIndex(), Qt::DisplayRole).isValid());
    QTest::keyClick(window.tblPreview, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(GenericImport, ShowsTheBeginningOfTheFileAsTheLayoutReadsIt) {
    look("Site,X,Y,Ec1\n1,2,3,4\n5,6,,8\n9,10,11,\n12,13,14,15\n");
    EXPECT_EQ(previewLine(0), u"1: [Site] [X] [Y] [Ec1]"_s);
    EXPECT_EQ(previewLine(1), u"2: 1 2 3 4"_s);
    EXPECT_EQ(previewLine(2), u"3: 5 6 [(missing)] 8"_s);
    EXPECT_EQ(previewLine(3), u"4: 9 10 11 [(missing)]"_s);
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    EXPECT_EQ(fitColour(), captionColour(kBlack, window));
    EXPECT_EQ(window.lblKind->text(), u"The first line is a header."_s);
    EXPECT_TRUE(window.lblKind->isVisible());
    expectSurveyUntouched();
}

TEST_F(GenericImport, NamesTheLayoutsThatWouldFit) {
    look("1,2,3,4\n5,6,7,8\n9,10,11,12\n");
    click(option(4));
    EXPECT_EQ(previewLine(1), u"1: 4 5 6"_s);
    EXPECT_EQ(window.lblFit->text(),
              u"The lines hold 4 values, this layout takes 3: values would be read across line ends. These "
              u"layouts would fit: “X-cord, Y-cord, Ec1, Row_#”; “X-cord, Y-cord, Ec1, Ec2 (Verris 3100 "
              u"file)”; “Site_#, X-cord, Y-cord, Ec1”."_s);
    EXPECT_EQ(fitColour(), captionColour(kWarningColour, window));
    click(option(0));
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    EXPECT_EQ(fitColour(), captionColour(kBlack, window));
    look("1,2,3,4,5,6,7\n");
    EXPECT_TRUE(window.lblFit->text().endsWith(u"line ends. No layout takes as many."_s));
}

TEST_F(GenericImport, DoubtsPlacesAsSiteNumbers) {
    look("X,Y,Ec1,Ec2\n500100.5,4000100.25,12.5,13\n500101.5,4000100.25,12.5,13\n");
    EXPECT_EQ(
        window.lblFit->text(),
        u"The lines hold 4 values, this layout takes 4. Site numbers would be no whole numbers: another "
        u"layout may be the right one."_s);
    EXPECT_EQ(fitColour(), captionColour(kWarningColour, window));
    click(option(5));
    EXPECT_EQ(fitColour(), captionColour(kBlack, window));
}

TEST_F(GenericImport, LooksAtTheFileOnceItsNameHasBeenTyped) {
    writeFile(folder / "a", "1 2 3 4\n");
    writeFile(folder / "ab", "5 6 7 8\n");
    QSignalSpy shown(window.tblPreview->model(), &QAbstractItemModel::modelReset);
    window.txtGFile->setText(fromPath(folder / "a"));
    EXPECT_EQ(shown.count(), 0);
    QTest::keyClick(window.txtGFile, Qt::Key_B);
    EXPECT_EQ(shown.count(), 0);
    EXPECT_TRUE(shown.wait());
    EXPECT_EQ(shown.count(), 1);
    EXPECT_EQ(previewLine(0), u"1: 5 6 7 8"_s);
    window.txtGFile->setText(fromPath(folder / "a"));
    click(option(4));
    EXPECT_EQ(previewLine(0), u"1: 1 2 3"_s) << "at once when a layout is chosen";
    type(*window.txtGFile, fromPath(folder / "abc"));
    EXPECT_TRUE(shown.wait());
    EXPECT_EQ(window.tblPreview->model()->rowCount(), 0);
    EXPECT_TRUE(window.lblFit->text().startsWith(u"There is no such file"_s));
}

TEST_F(GenericImport, ShowsTheFileThatWasReadHoweverFastItWasGiven) {
    look("7,8,9,1\n");
    click(option(0));
    type(*window.txtGFile, fromPath(sensorFile("1,2,3,2\n")));
    expectReport(1);
    boxes.tell(u"Fatal Error! Initial row # not equal to 1. Input aborted."_s);
    QTest::keyClick(window.txtGFile, Qt::Key_Return);
    EXPECT_EQ(previewLine(0), u"1: 1 2 3 2"_s);
}

TEST_F(GenericImport, SaysWhatKindOfFileItIs) {
    look("\x1F\x8B\x08 compressed");
    EXPECT_EQ(window.lblKind->text(), u"This is not a text file."_s);
    EXPECT_EQ(colourOf(*window.lblKind), captionColour(kWarningColour, window));
    look("1\t2\t3\t4\n");
    EXPECT_EQ(window.lblKind->text(), u"Tabs stand between its values."_s);
    EXPECT_EQ(colourOf(*window.lblKind), captionColour(kBlack, window));
    look("1 2 3 4\n");
    EXPECT_FALSE(window.lblKind->isVisible());
}

TEST_F(GenericImport, OffersDecimalCommasWhereTheyAreAndTakesThemWhenTicked) {
    const std::string bytes = "1;2,5;3,5;4,25\n2;3,5;4,5;-1,5\n";
    look(bytes);
    EXPECT_TRUE(window.chkDecimalComma->isVisible());
    EXPECT_FALSE(window.chkDecimalComma->isChecked());
    EXPECT_EQ(window.chkDecimalComma->text().remove(u'&'),
              u"values are separated by semicolons, decimal signs are commas"_s);
    EXPECT_EQ(window.lblFit->text(),
              u"No value with a decimal comma is read as a number unless the box above is ticked."_s);
    EXPECT_EQ(fitColour(), captionColour(kWarningColour, window));
    click(*window.chkDecimalComma);
    EXPECT_EQ(previewLine(0), u"1: 1 2,5 3,5 4,25"_s);
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    expectReport(1, 1);
    click(*window.cmdImport);
    EXPECT_EQ(theSurvey().SiteData(kX, 0), 2.5);
    EXPECT_EQ(theSurvey().SiteData(kEM1, 0), 4.25);
    EXPECT_EQ(errorLog(), "Line # 2 2 3,5 4,5 -1,5  -> 1st EM reading below cut-off\r\n");
}

TEST_F(GenericImport, ForgetsTheTickForDecimalCommasWithAnotherFile) {
    writeFile(folder / "other.csv", "1;2,5;3;4\n");
    look("1;2,5;3,5;4,25\n");
    click(*window.chkDecimalComma);
    window.txtGFile->setText(fromPath(folder / "other.csv"));
    EXPECT_FALSE(window.chkDecimalComma->isChecked());
    click(option(6));
    EXPECT_TRUE(window.chkDecimalComma->isVisible());
    look("1,2,3,4\n");
    EXPECT_FALSE(window.chkDecimalComma->isVisible());
}

TEST_F(GenericImport, ReadsAFileOfDecimalCommasByPointsUnlessItIsTicked) {
    look("1;2,5;3,5;4,25\n");
    expectReport(0, 1);
    click(*window.cmdImport);
    EXPECT_EQ(errorLog(), "Line # 1 1;2 5;3 5;4 25  -> non-numeric site ID\r\n");
}

TEST_F(GenericImport, LooksIntoNothingButFiles) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {folder / "pipe", std::string("/dev/zero"), std::string("/proc/self/status"), folder.path()}) {
        type(*window.txtGFile, fromPath(path));
        click(option(4));
        EXPECT_TRUE(window.lblFit->text().startsWith(u"There is no such file"_s)) << path;
        click(option(6));
        refuse(u"Please enter a valid input filename."_s);
    }
}

TEST_F(GenericImport, LooksAtNoMoreThan64KiB) {
    const std::string path = folder / "long.csv";
    std::ofstream file(path);
    for (int line = 0; line < 200'000; ++line)
        file << (line < 12'000 ? "1,2,3,4\n" : "no number\n");
    file.close();
    const BeforeReading third(3, [](int) {});
    type(*window.txtGFile, fromPath(path));
    click(option(0));
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    for (int layout = 0; layout < 8; ++layout)
        click(option(layout));
    EXPECT_FALSE(third.happened());
}

}  // namespace tessel
