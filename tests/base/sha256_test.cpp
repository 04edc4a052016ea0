// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/sha256.h"

#include "support/reads.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

std::string digestOf(std::string_view bytes) {
    Sha256 sha;
    sha.add(bytes);
    return sha.digest();
}

std::string failureOf(const std::string& path) {
    return descriptionOf([&] { sha256OfFile(path); });
}

using Sha256OfAFile = FolderTest;

}  // namespace

// The examples that are published with the standard.
TEST(Sha256, OfTheStandardsExamplesIsTheStandards) {
    EXPECT_EQ(digestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(digestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(digestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(digestOf("abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmn"
                       "hijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu"),
              "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1");
    EXPECT_EQ(digestOf(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

// Where the padding just fits into the last block, and where it just does not; of zero bytes.
TEST(Sha256, OfSizesAroundTheEdgesOfABlockIsRight) {
    const std::pair<std::size_t, const char*> sizes[] = {
        {55, "02779466cdec163811d078815c633f21901413081449002f24aa3e80f0b88ef7"},
        {56, "d4817aa5497628e7c77e6b606107042bbba3130888c5f47a375e6179be789fbb"},
        {63, "c7723fa1e0127975e49e62e753db53924c1bd84b8ac1ac08df78d09270f3d971"},
        {64, "f5a5fd42d16a20302798ef6ed309979b43003d2320d9f0e8ea9831a92759fb4b"},
        {65, "98ce42deef51d40269d542f5314bef2c7468d401ad5d85168bfab4c0108f75f7"},
        {119, "f616b0d54e78571a9611f343c9f8e022e859e920381ab0e4d3da01e193a7bd7e"},
        {120, "6edd9f6f9cc92cded36e6c4a580933f9c9f1b90562b46903b806f21902a1a54f"},
        {128, "38723a2e5e8a17aa7950dc008209944e898f69a7bd10a23c839d341e935fd5ca"},
    };
    for (const auto& [size, digest] : sizes)
        EXPECT_EQ(digestOf(std::string(size, '\0')), digest) << size;
    EXPECT_EQ(digestOf(std::string_view("a\0b\0\0", 5)),
              "8810e7f8541fdfb6dd46a5f8414fd2e638432bac181da615a9ad293adee675e2");
}

TEST(Sha256, DoesNotDependOnThePartsInWhichBytesCome) {
    std::string bytes;
    for (int i = 0; i < 200; ++i)
        bytes += static_cast<char>(i * 37);
    for (std::size_t first = 0; first <= bytes.size(); ++first)
        for (const std::size_t second : {0U, 1U, 63U, 64U, 65U}) {
            Sha256 sha;
            sha.add(bytes.substr(0, first));
            sha.add(bytes.substr(first, second));
            sha.add(bytes.substr(std::min(first + second, bytes.size())));
            ASSERT_EQ(sha.digest(), digestOf(bytes)) << first << " " << second;
        }
}

TEST(Sha256, MayBeAskedForBetweenTwoParts) {
    Sha256 sha;
    EXPECT_EQ(sha.digest(), digestOf(""));
    sha.add("ab");
    EXPECT_EQ(sha.digest(), digestOf("ab"));
    sha.add("c");
    EXPECT_EQ(sha.digest(), digestOf("abc"));
}

TEST_F(Sha256OfAFile, IsThatOfItsBytesReadBlockByBlock) {
    std::string bytes(1'000'000, 'x');
    bytes += std::string("\0\r\n\xff", 4);
    writeFile(folder / "field.dat", bytes);
    writeFile(folder / "empty.dat", "");
    const BeforeReading fourth(4, [](int) {});
    EXPECT_EQ(sha256OfFile(folder / "field.dat"), digestOf(bytes));
    EXPECT_TRUE(fourth.happened());
    EXPECT_EQ(sha256OfFile(folder / "empty.dat"), digestOf(""));
}

TEST_F(Sha256OfAFile, ThatGrowsIsThatOfWhatWasThere) {
    writeFile(path, "before");
    const BeforeReading first(1, [&](int) { writeFile(path, "before and after"); });
    EXPECT_EQ(sha256OfFile(path), digestOf("before"));
}

TEST_F(Sha256OfAFile, ThatCannotBeReadSaysWhy) {
    EXPECT_EQ(failureOf(path), path + " cannot be opened: No such file or directory");
    EXPECT_EQ(failureOf(folder.path()), folder.path() + " cannot be read: it is a folder");
    EXPECT_EQ(failureOf("/dev/zero"), "/dev/zero cannot be read: it is not a regular file");
    writeFile(path, std::string(1'000'000, 'x'));
    {
        const BeforeReading second(2, breakDevice);
        EXPECT_EQ(failureOf(path), path + " cannot be read: Input/output error");
    }
    const BeforeReading second(2, [&](int) { std::filesystem::resize_file(path, 10); });
    EXPECT_EQ(failureOf(path), path + " cannot be read: it has become shorter meanwhile");
}

}  // namespace tessel
