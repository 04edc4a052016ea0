// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/work_stream.h"

#include "base/program_version.h"
#include "rows/site_removal.h"
#include "storage/work_fields.h"
#include "support/journal_bits.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/random_acts.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

std::string bytesOf(const Journal& journal) {
    std::string bytes;
    ByteWriter out([&](std::string_view piece) { bytes += piece; });
    writeWork(out, journal, {});
    out.finish();
    return bytes;
}

std::string whyNotRead(std::string_view bytes) {
    try {
        ByteReader in(bytes);
        readWork(in);
    } catch (const DamagedBytes& damage) {
        return damage.what();
    }
    return "no error";
}

}  // namespace

TEST(ByteStream, WritesNumbersLittleEndianWhateverTheComputer) {
    std::string bytes;
    ByteWriter out([&](std::string_view piece) { bytes += piece; });
    out.number(std::uint32_t{0x01020304});
    out.number(1.0);
    const std::vector<double> list = {-2.0};
    out.numbers(std::span<const double>(list));
    out.finish();
    EXPECT_EQ(bytes, std::string("\x04\x03\x02\x01\0\0\0\0\0\0\xF0\x3F\0\0\0\0\0\0\0\xC0", 20));
}

TEST(ByteStream, ComesAndGoesInPieces) {
    std::vector<std::size_t> sizes;
    std::string all;
    ByteWriter out([&](std::string_view piece) {
        sizes.push_back(piece.size());
        all += piece;
    });
    const std::string much(2 * kPieceSize + 5, 'x');
    out.bytes(much);
    out.finish();
    EXPECT_EQ(sizes, (std::vector<std::size_t>{kPieceSize, kPieceSize, 5}));
    EXPECT_EQ(all, much);
}

TEST(ByteStream, ToldBytesFromOthersByTheirChecksum) {
    const std::string bytes = "0123456789abcdefg";
    for (std::size_t i = 0; i < bytes.size(); ++i)
        for (int bit = 0; bit < 8; ++bit) {
            std::string other = bytes;
            other[i] ^= static_cast<char>(1 << bit);
            EXPECT_NE(checksumOf(other), checksumOf(bytes));
        }
    EXPECT_NE(checksumOf(std::string("a\0", 2)), checksumOf("a"));
    // It stands in files: another version has to find the same.
    EXPECT_EQ(checksumOf("survey"), checksumOf(std::string("survey")));
}

TEST(WorkStream, TakesNoMemoryForAListThatTheBytesCannotHold) {
    const std::string bytes("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x0F", 8);
    ByteReader in(bytes);
    EXPECT_THROW(in.count(1), DamagedBytes);
}

TEST(WorkStream, OfAnotherVersionIsTold) {
    std::string bytes = bytesOf(randomSession(1, 3));
    bytes[0] = 2;
    EXPECT_EQ(whyNotRead(bytes),
              std::string("it is from a newer version of this program (") + kProgramVersion + ")");
    bytes[0] = 0;
    EXPECT_EQ(whyNotRead(bytes), "it does not begin as it should");
}

TEST(WorkStream, OfATimeThatIsNoneIsTold) {
    Journal journal = journalOf(madeSurvey({{0, 0, 1}}));
    Journal::forEachField(journal, [](auto&, auto&, auto& acts, auto&...) {
        acts[0].time = std::chrono::system_clock::time_point(std::chrono::system_clock::duration::min());
    });
    EXPECT_NE(whyNotRead(bytesOf(journal)), "no error");
}

// Fuzzers would get no further than the first byte otherwise.
TEST(WorkStream, IsStillThatOfTheFuzzersCorpora) {
    for (const char* const name :
         {"no_survey", "an_import", "deletions", "means_of_places", "converted", "taken_back", "two_imports"})
        EXPECT_EQ(whyNotRead(readFile(std::string(TESSEL_SOURCE_DIR "/tests/fuzz/survey_state/") + name)),
                  "no error")
            << name;
}

TEST(WorkStream, ThatIsCutShortOrGoesOnIsTold) {
    const std::string bytes = bytesOf(randomSession(2, 8));
    for (std::size_t length = 0; length < bytes.size(); length += 1 + bytes.size() / 301)
        EXPECT_NE(whyNotRead(std::string_view(bytes).substr(0, length)), "no error") << length;
    EXPECT_EQ(whyNotRead(bytes + "x"), "something stands behind its end");
    EXPECT_EQ(whyNotRead(bytes), "no error");
}

// A list of fields that forgets one would lose it: everything else that is compared comes back all the same.
TEST(WorkStream, IsToldWhenAStructHasAFieldMore) {
    struct Base {
        int a = 0;
    };
    struct Two : Base {
        double b = 0;
    };
    struct HiddenInAHole : Base {
        bool hidden = false;
        double b = 0;
    };
    EXPECT_TRUE((hasFields<Two, 2>));
    EXPECT_EQ(sizeof(Two), sizeof(HiddenInAHole));
    EXPECT_FALSE((hasFields<HiddenInAHole, 2>));
    EXPECT_FALSE((hasFields<HiddenInAHole, 4>));
}

// An act that has taken the middle of three sites out, and has changed the reading of the first.
TEST(WorkStream, WhoseActsReachBeyondTheSitesIsTold) {
    const auto whyNotReadWith = [](const auto& spoil) {
        Journal journal = journalOf(madeSurvey({{0, 0, 1}, {1, 0, 2}, {2, 0, 3}}));
        journal.perform({ActKind::kDeleteSuspects, "", "", {}}, [](Survey& survey) {
            Difference difference(survey);
            difference.keepRowNumbers(survey);
            difference.keepSites(survey, {{1, 2}});
            difference.keepEntries(kEM1, {0}, {9});
            difference.exchangeEntries(survey);
            removeSites(survey, {{1, 2}}, EmptiedRows::kCloseUp);
            return difference;
        });
        Journal::forEachField(journal, [&](auto&, auto&, std::deque<Act>& acts, auto&...) {
            Difference::forEachField(acts[1].difference,
                                     [&](auto&, auto&, auto& runs, auto&, auto&, auto&, auto& entries,
                                         auto&...) { spoil(runs, entries); });
        });
        return whyNotRead(bytesOf(journal));
    };
    EXPECT_EQ(whyNotReadWith([](auto&, auto&) {}), "no error");
    EXPECT_EQ(whyNotReadWith([](auto& runs, auto&) {
                  runs[0] = {3, 4};
              }),
              "an act takes out sites that there are not");
    EXPECT_EQ(whyNotReadWith([](auto&, auto& entries) { entries[0].sites[0] = 3; }),
              "an act changes entries that there are not");
    EXPECT_EQ(whyNotReadWith([](auto&, auto& entries) { entries[0].sites[0] = 1; }),
              "an act changes entries that there are not");
    EXPECT_EQ(whyNotReadWith([](auto&, auto& entries) { entries[0].sites[0] = -1; }),
              "an act changes entries that there are not");
}

// Whoever has made it and whatever it says: it is refused, or every state of it can be gone to and has its
// columns in step. (The sanitizers see what is touched beyond.)
TEST(WorkStream, ThatSaysAnythingElseIsRefusedOrFits) {
    std::mt19937 random(3);
    int refused = 0, taken = 0;
    for (int session = 0; session < 12; ++session) {
        const std::string whole = bytesOf(randomSession(20 + static_cast<unsigned>(session), 10));
        for (int turn = 0; turn < 400; ++turn) {
            std::string bytes = whole;
            const std::size_t at = random() % bytes.size();
            // Small numbers stand where counts and columns do.
            bytes[at] = static_cast<char>(turn % 2 == 0 ? random() % 8 : random());
            try {
                ByteReader in(bytes);
                SavedWork work = readWork(in);
                for (const Survey& survey : statesOf(work.journal))
                    ASSERT_LE(survey.NumSites, survey.SiteData.capacity());
                ++taken;
            } catch (const DamagedBytes&) {
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 200);
    EXPECT_GT(taken, 200);
}

}  // namespace tessel
