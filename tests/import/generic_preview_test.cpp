// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/generic_preview.h"

namespace tessel {

namespace {

GenericPreview previewOf(const std::string& bytes, std::size_t layout, bool decimalCommas = false) {
    return previewGenericFile(bytes, recogniseFileKind(std::string_view(bytes)), kGenericLayouts[layout],
                              decimalCommas);
}

std::string sentenceOf(const std::string& bytes, std::size_t layout) {
    return fitSentence(previewOf(bytes, layout), kGenericLayouts[layout].columns());
}

// Line, then the values; those that are no numbers in brackets.
std::string recordsOf(const GenericPreview& preview) {
    std::string text;
    for (const PreviewRecord& record : preview.records) {
        text += std::to_string(record.line) + ":";
        for (const PreviewValue& value : record.values)
            text += value.numeric ? " " + value.text : " (" + value.text + ")";
        text += '\n';
    }
    return text;
}

}  // namespace

TEST(GenericPreview, ShowsTheRecordsAsTheLayoutReadsThem) {
    EXPECT_EQ(recordsOf(previewOf("X,Y,Ec1\n1,2,3\n4,,6\n7,8,\n9,10,11\n12\n", 4)),
              "1: (X) (Y) (Ec1)\n2: 1 2 3\n3: 4 () 6\n4: 7 8\n5: 9 10 11\n6: 12\n");
    EXPECT_EQ(recordsOf(previewOf("1,2,3,4\n5,6,7,8\n9,10,11,12\n", 4)),
              "1: 1 2 3\n1: 4 5 6\n2: 7 8 9\n3: 10 11 12\n");
    EXPECT_EQ(recordsOf(previewOf("1,5;2;3\n4;5;6,25\n", 4, true)), "1: 1,5 2 3\n2: 4 5 6,25\n");
}

TEST(GenericPreview, ShortensWhatCannotBeShown) {
    const std::string odd = std::string("a\x01", 2) + "b";
    EXPECT_EQ(recordsOf(previewOf(odd + " 2 3\n" + std::string(99, '7') + " 5 6", 4)),
              "1: (a?b) 2 3\n2: " + std::string(40, '7') + "... 5 6\n");
    std::string letters;
    while (letters.size() < 60)
        letters += "\u20AC";
    EXPECT_EQ(recordsOf(previewOf(letters + " 2 3\n", 4)), "1: (" + letters.substr(0, 39) + "...) 2 3\n");
}

TEST(GenericPreview, LooksAtThePartItIsGivenAndKeepsFiftyRecords) {
    std::string bytes;
    while (bytes.size() < kFirstBytes)
        bytes += "1,2,3\n";
    const GenericPreview preview = previewOf(bytes.substr(0, kFirstBytes), 4);
    EXPECT_EQ(preview.records.size(), 50U);
    EXPECT_EQ(preview.lines, static_cast<std::int64_t>(kFirstBytes / 6))
        << "without the line that is cut off";
    EXPECT_TRUE(preview.fits(3));
}

TEST(DoubtSentence, TellsOfNumbersThatCountNothing) {
    const auto doubt = [](const std::string& bytes, std::size_t layout) {
        return doubtSentence(previewOf(bytes, layout), kGenericLayouts[layout]);
    };
    const std::string places = "X,Y,Ec1,Ec2\n500100.5,4000100.25,12.5,13\n500101,4000101,12,14\n";
    const std::string end = " would be no whole numbers: another layout may be the right one.";
    EXPECT_EQ(doubt(places, 6), "Site numbers" + end);
    EXPECT_EQ(doubt(places, 5), "");
    EXPECT_EQ(doubt("1,2,3,4.5\n", 0), "Row numbers" + end);
    EXPECT_EQ(doubt("1.5,2,3,4,5.5\n", 2), "Site numbers and row numbers" + end);
    EXPECT_EQ(doubt("1,2.5,3.5,4.5,7\n-2,2.5,3.5,4.5,7.0\n", 2), "");
}

TEST(FitSentence, CountsTheValuesOfLinesAndLayoutAndNamesTheFirstLineThatDoesNotFit) {
    const std::string fits = "The lines hold 3 values, this layout takes 3";
    const std::string across = ", this layout takes 3: values would be read across line ends.";
    const std::string notFitting = " does not fit, values may be read across its end.";
    const std::pair<const char*, std::string> cases[] = {
        {"", "The file holds no values."},
        {"\n \t\n", "The file holds no values."},
        {"1,2,3\n4,5,6\n", fits + "."},
        {"1,2,\n,5,6\n7,,9\n", fits + "."},
        {"1,2,3,\n4,5,6,\n", fits + "."},
        {"1,2,3,4,5,6,7,8,9\n1,2,3,4,5,6,7,8,9\n", "The lines hold 9 values" + across},
        {"1\n2\n3\n", "The lines hold 1 value" + across},
        {"1,2,3,4\n1,2,3\n1,2,3,4\n", "Most lines hold 4 values" + across},
        {"Field 7\n1 2 3\n4 5 6\n", fits + "; line 1" + notFitting},
        {"1 2 3\n1 2 3 4\n", "Most lines hold 3 values, this layout takes 3; line 2" + notFitting},
        {"1 2 3\n4 5\n6\n7 8 9\n1 2 3\n",
         "Most lines hold 3 values, this layout takes 3; 2 lines of the beginning do not fit, the first is "
         "line 2: values may be read across their ends."}};
    for (const auto& [bytes, sentence] : cases)
        EXPECT_EQ(sentenceOf(bytes, 4), sentence) << bytes;
    EXPECT_TRUE(previewOf("", 4).records.empty());
}

TEST(FittingLayouts, TakeAsManyValuesAsTheLinesHold) {
    using Layouts = std::vector<std::size_t>;
    EXPECT_EQ(fittingLayouts(previewOf("1,2,3\n", 0)), Layouts({4}));
    EXPECT_EQ(fittingLayouts(previewOf("1,2,3,4\n", 4)), Layouts({0, 5, 6}));
    EXPECT_EQ(fittingLayouts(previewOf("1,2,3,4,5\n", 4)), Layouts({1, 2, 7}));
    EXPECT_EQ(fittingLayouts(previewOf("1,2,3,4,5,6\n", 4)), Layouts({3}));
    EXPECT_EQ(fittingLayouts(previewOf("1,2\n", 4)), Layouts());
}

TEST(FileKindNotice, SaysWhatIsUnusual) {
    EXPECT_EQ(fileKindNotice({}), "");
    FileKind kind;
    kind.tabs = true;
    kind.headerLines = 2;
    EXPECT_EQ(fileKindNotice(kind), "Tabs stand between its values. The first 2 lines are a header.");
    kind = {};
    kind.encoding = TextEncoding::kUtf16BigEndian;
    kind.decimalCommas = true;
    kind.headerLines = 1;
    EXPECT_EQ(fileKindNotice(kind),
              "The characters of this file are stored as UTF-16. Semicolons stand between its values, and "
              "its decimal "
              "signs are commas. The first line is a header.");
    kind.isText = false;
    EXPECT_EQ(fileKindNotice(kind), "This is not a text file.");
}

}  // namespace tessel
