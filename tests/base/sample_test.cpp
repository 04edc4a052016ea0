// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/sample.h"

namespace tessel {

namespace {

double itself(std::int64_t i) {
    return static_cast<double>(i);
}

}  // namespace

TEST(Sample, IsAllWhereTheyAreFew) {
    EXPECT_TRUE(sampleOf(-1, itself).empty());
    EXPECT_TRUE(sampleOf(0, itself).empty());
    EXPECT_EQ(sampleOf(3, itself), (std::vector<double>{0, 1, 2}));
    const std::vector<double> all = sampleOf(kSampleSize, itself);
    ASSERT_EQ(std::ssize(all), kSampleSize);
    EXPECT_EQ(all.back(), static_cast<double>(kSampleSize - 1));
}

TEST(Sample, IsOneOfEachStretchAndNeverMoreThanItsSize) {
    for (const std::int64_t count : {kSampleSize + 1, 2 * kSampleSize - 1, 7 * kSampleSize + 3}) {
        const std::int64_t every = (count + kSampleSize - 1) / kSampleSize;
        const std::vector<double> sample = sampleOf(count, itself);
        EXPECT_LE(std::ssize(sample), kSampleSize);
        EXPECT_EQ(std::ssize(sample), (count + every - 1) / every);
        for (std::size_t i = 0; i < sample.size(); ++i)
            ASSERT_EQ(static_cast<std::size_t>(sample[i]) / static_cast<std::size_t>(every), i);
        EXPECT_LT(sample.back(), static_cast<double>(count));
        EXPECT_EQ(sample, sampleOf(count, itself));
    }
}

TEST(Sample, KeepsNoStepWithWhatRepeats) {
    for (const std::int64_t repeat : {2, 3, 5, 10})
        for (const std::int64_t count : {200000, 1000000})
            for (std::int64_t phase = 0; phase < repeat; ++phase) {
                const std::vector<double> isFirst =
                    sampleOf(count, [=](std::int64_t i) { return i % repeat == phase ? 1.0 : 0.0; });
                const auto firsts = std::count(isFirst.begin(), isFirst.end(), 1.0);
                const double share = static_cast<double>(firsts) / static_cast<double>(isFirst.size());
                EXPECT_NEAR(share * static_cast<double>(repeat), 1, 0.03) << repeat << ' ' << count;
            }
}

TEST(Medians, AreTheUpperOfTwoAndMayLeaveZeroOut) {
    std::vector<double> values = {4, 1, 3, 2};
    EXPECT_EQ(medianOf(values), 3);
    values = {0, 5, 0, 0, 7, 0, 9};
    EXPECT_EQ(medianBesideZero(values), 7);
    values = {0, 0};
    EXPECT_EQ(medianBesideZero(values), 0);
}

}  // namespace tessel
