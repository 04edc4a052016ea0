// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/sensor_file_preview.h"

#include "base/run_time_error.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

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
}

TEST(SensorFilePreview, OfAShortFileHoldsItsLines) {
    EXPECT_EQ(previewOf(""), Lines{});
    EXPECT_EQ(previewOf("\n\n"), Lines{});
    EXPECT_EQ(previewOf("11\n22"), (Lines{"11", "22"}));
}

TEST(SensorFilePreview, KeepsBytesAndCutsVeryLongLines) {
    const std::string bytes("a\0\xFC\x01", 4);
    EXPECT_EQ(previewOf(bytes), Lines{bytes});
    EXPECT_EQ(previewOf(std::string(20'000, 'x')), Lines{std::string(kPreviewWidth, 'x')});
}

TEST(SensorFilePreview, OfAFileThatIsGoneIsAnError) {
    EXPECT_THROW(previewSensorFile("/none/none.dat", 1), RunTimeError);
}

}  // namespace tessel
