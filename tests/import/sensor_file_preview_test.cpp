// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/sensor_file_preview.h"

#include "base/run_time_error.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using Lines = std::vector<std::string>;

Lines previewOf(std::string_view bytes, int minLineLength = 1) {
    const TemporaryFolder folder;
    writeFile(folder / "sensor.dat", bytes);
    return previewSensorFile(folder / "sensor.dat", minLineLength);
}

}  // namespace

TEST(SensorFilePreview, HoldsTheFirstFiveLinesThatAreLongEnough) {
    EXPECT_EQ(previewOf("\n\nx\r\n11\n\n22\r33\n \n44\n55\n66\n"), (Lines{"11", "22", "33", "44", "55"}));
    EXPECT_EQ(previewOf("1\n22\n333\n", 2), Lines{"333"});
    EXPECT_EQ(previewOf("11\n22"), (Lines{"11", "22"}));
    for (const char* nothing : {"", "\n\n"})
        EXPECT_EQ(previewOf(nothing), Lines{});
    EXPECT_THROW(previewSensorFile("/none/none.dat", 1), RunTimeError);
}

TEST(SensorFilePreview, KeepsBytesAndCutsVeryLongLines) {
    const std::string bytes("a\0\xFC\x01", 4);
    EXPECT_EQ(previewOf(bytes), Lines{bytes});
    EXPECT_EQ(previewOf(std::string(20'000, 'x')), Lines{std::string(kPreviewWidth, 'x')});
}

TEST(FixedColumnNotice, WarnsOfWhatColumnsOfCharactersDoNotFitAndTellsOfTheRest) {
    const std::tuple<std::function<void(FileKind&)>, const char*, bool> cases[] = {
        {[](FileKind&) {}, "", false},
        {[](FileKind& kind) { kind.isText = false; }, "This is not a text file.", true},
        {[](FileKind& kind) { kind.tabs = true; },
         "Tabs stand between the values: columns of characters will not line up; the generic import fits.",
         true},
        {[](FileKind& kind) { kind.decimalCommas = true; },
         "Semicolons stand between the values and commas in the numbers; the generic import fits.", true},
        {[](FileKind& kind) { kind.headerLines = 1; },
         "The first line is a header; it will be in the error log.", false},
        {[](FileKind& kind) { kind.headerLines = 3, kind.encoding = TextEncoding::kUtf16BigEndian; },
         "The text is UTF-16; it is read as what it says.\n"
         "The first 3 lines are a header; they will be in the error log.",
         false}};
    for (const auto& [change, text, isWarning] : cases) {
        FileKind kind;
        change(kind);
        EXPECT_EQ(fixedColumnNotice(kind).text, text);
        EXPECT_EQ(fixedColumnNotice(kind).isWarning, isWarning) << text;
        kind.tabs = true;
        EXPECT_TRUE(fixedColumnNotice(kind).isWarning);
    }
}

}  // namespace tessel
