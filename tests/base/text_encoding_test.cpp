// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text_encoding.h"

#include "support/utf16.h"

using namespace std::string_literals;

namespace tessel {

namespace {

constexpr auto kLittle = TextEncoding::kUtf16LittleEndian;
constexpr auto kBig = TextEncoding::kUtf16BigEndian;

}  // namespace

TEST(TextEncoding, IsKnownByItsMark) {
    EXPECT_EQ(recogniseTextEncoding("\xFF\xFE"), kLittle);
    EXPECT_EQ(recogniseTextEncoding("\xFE\xFF"), kBig);
    EXPECT_EQ(recogniseTextEncoding("\xEF\xBB\xBF,2,3"), TextEncoding::kBytes);
    EXPECT_EQ(byteOrderMarkLength("\xFF\xFE,"), 2U);
    EXPECT_EQ(byteOrderMarkLength("\xEF\xBB\xBF,"), 3U);
    EXPECT_EQ(byteOrderMarkLength("1,2,3"), 0U);
}

TEST(TextEncoding, IsKnownWithoutMarkByTheZeroBesideEachCharacter) {
    for (const std::u16string_view text :
         {u"1 2\r\n", u"468095.9,468750.0,36.1\n", u"Участок 7\r\n1.5,2.5,3.5,10,12\r\n100,200,300\r\n"}) {
        EXPECT_EQ(recogniseTextEncoding(utf16(text, false)), kLittle);
        EXPECT_EQ(recogniseTextEncoding(utf16(text, true)), kBig);
    }
}

TEST(TextEncoding, IsBytesForTextWithStrayZerosForNothingAndForNumbersOfTwoBytes) {
    EXPECT_EQ(recogniseTextEncoding(""), TextEncoding::kBytes);
    EXPECT_EQ(recogniseTextEncoding("1\0"s), TextEncoding::kBytes);
    EXPECT_EQ(recogniseTextEncoding("1\0,\0"s
                                    "22,33,44,55,66\r\n"),
              TextEncoding::kBytes);
    EXPECT_EQ(recogniseTextEncoding(std::string(1000, '\0')), TextEncoding::kBytes);
    EXPECT_EQ(recogniseTextEncoding("\1\0\2\0\3\0\4\0\5\0\6\0"s), TextEncoding::kBytes);
}

TEST(Utf16, IsDecodedWhereverTheBlocksEnd) {
    const std::u16string_view text = u"1,2 é € 𝄞\r\nУ";
    for (const bool big : {false, true}) {
        const std::string bytes = utf16(text, big);
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
            Utf16Decoder decoder(big ? kBig : kLittle);
            std::string out(100, '?');
            std::size_t length = decoder.decode(std::string_view(bytes).substr(0, cut), out.data());
            length += decoder.decode(std::string_view(bytes).substr(cut), out.data() + length);
            length += decoder.finish(out.data() + length);
            EXPECT_EQ(out.substr(0, length), "1,2 é € 𝄞\r\nУ") << cut;
        }
    }
}

TEST(Utf16, ShowsHalvesOfCharactersAsSuch) {
    EXPECT_EQ(decodedText(utf16(u"\xD834x", false), kLittle), "\uFFFDx");
    EXPECT_EQ(decodedText(utf16(u"\xDD1Ex", false), kLittle), "\uFFFDx");
    EXPECT_EQ(decodedText(utf16(u"a\xD834", true), kBig), "a\uFFFD");
    EXPECT_EQ(decodedText(utf16(u"a", false) + "b", kLittle), "a\uFFFD");
}

TEST(Utf16, NeverWritesMoreThanItSays) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        Utf16Decoder decoder(round % 2 == 0 ? kLittle : kBig);
        for (int block = 0; block < 3; ++block) {
            std::string bytes(random() % 9, ' ');
            for (char& c : bytes)
                c = static_cast<char>(random() % 4 == 0 ? 0xD8 + random() % 8 : random());
            std::string out(Utf16Decoder::mostBytes(bytes.size()), ' ');
            std::string guarded = out + "guard";
            ASSERT_LE(decoder.decode(bytes, guarded.data()), out.size());
            ASSERT_EQ(guarded.substr(out.size()), "guard");
        }
    }
}

TEST(LooksLikeText, ForLoggerFilesWithOddBytes) {
    const std::string line = "468095.918,468750.000,36.1359,20.6445\r\n";
    std::string file;
    for (int i = 0; i < 50; ++i)
        file += line + (i % 5 == 0 ? "\0\x01\x7F"s : "");
    EXPECT_TRUE(looksLikeText(file));
    EXPECT_TRUE(looksLikeText("\x02" + line + "\x03"));
    EXPECT_TRUE(looksLikeText(line + std::string(60'000, '\0'))) << "room given in advance";
    EXPECT_TRUE(looksLikeText("\xCF\xEE\xEB\xE5 7\r\n1,2,3\x1A"));
    EXPECT_TRUE(looksLikeText("\1\2\3 7\n")) << "a few";
    EXPECT_TRUE(looksLikeText(""));
}

TEST(LooksLikeText, NotForCompressedAndBinaryFiles) {
    for (const std::string& beginning :
         {"\x1F\x8B\x08"s, "PK\3\4"s,
          "\xFD"
          "7zXZ\0"s,
          "BZh91AY&SY"s, "7z\xBC\xAF\x27\x1C"s, "%PDF-1.7"s, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"s})
        EXPECT_FALSE(looksLikeText(beginning + "1,2,3\n")) << beginning;
    EXPECT_FALSE(looksLikeText("\1\2\3\4 7\n"));
    EXPECT_FALSE(looksLikeText(std::string(512, '\0') + std::string(1, '\1') + "\0\1\0\1\0\1"s));
    std::mt19937 random(5);
    std::string noise(4096, ' ');
    for (char& c : noise)
        c = static_cast<char>(random());
    EXPECT_FALSE(looksLikeText(noise));
    std::string doubles;
    for (int i = 0; i < 100; ++i) {
        const double value = i * 0.5;
        doubles.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    EXPECT_FALSE(looksLikeText(doubles));
}

}  // namespace tessel
