// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/FileNames.h"

#include "support/temporary_folder.h"

namespace tessel {

namespace {

// The address that a file manager gives for a path.
QUrl addressOf(const std::string& path) {
    return QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
}

}  // namespace

TEST(FileNames, OfUtf8AreTheirTexts) {
    for (const QString& name : {u"survey.dat"_s, u"Grüße Ω 測量.dat"_s, u"\U0001F33E field.dat"_s, u"�"_s,
                                u"\U00010480"_s, QString()}) {
        EXPECT_EQ(fromPath(name.toStdString()), name);
        EXPECT_EQ(toPath(name), name.toStdString());
        EXPECT_EQ(legible(name), name);
    }
}

TEST(FileNames, OfAnyBytesComeBackAsTheyWere) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string one{'a', static_cast<char>(byte), 'b'};
        EXPECT_EQ(toPath(fromPath(one)), one) << byte;
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(toPath(fromPath(all)), all);
    // Overlong, a half of a pair, beyond Unicode, cut off, and a mark at the beginning.
    for (const std::string name : {"\xC0\xAF", "\xED\xB3\xBC", "\xED\xA0\x81\xED\xB2\x80", "\xF5\x80\x80\x80",
                                   "a\xE2\x82", "\xEF\xBB\xBF-", "\xFC\xC3\xBC", "\xC3\xBC\xFC"})
        EXPECT_EQ(toPath(fromPath(name)), name);
}

TEST(FileNames, OfRandomBytesComeBackAsTheyWere) {
    std::mt19937 random(7);
    const std::string pieces[] = {"a", "/", "ü", "測", "\U0001F33E", "\xFC", "\xE4", "\xED", "\xB2", "\x80"};
    for (int i = 0; i < 20'000; ++i) {
        std::string name;
        for (auto length = random() % 9; length > 0; --length)
            name += pieces[random() % std::size(pieces)];
        ASSERT_EQ(toPath(fromPath(name)), name);
    }
}

TEST(FileNames, AreLegibleWithForeignBytes) {
    EXPECT_EQ(legible(fromPath("/Gel\xE4nde/\xFC ü.dat")), u"/Gel\\xE4nde/\\xFC ü.dat"_s);
}

TEST(FileNames, OfAddressesAreTakenByteForByte) {
    for (const std::string path : {"/a b/Gel\xE4nde/ü 100%25.dat", "/x#y?z.dat", "/\xFC"})
        EXPECT_EQ(toPath(localPath(addressOf(path))), path);
    EXPECT_EQ(localPath(QUrl(u"https://example.org/a"_s)), QString());
    EXPECT_EQ(localPath(QUrl(u"file:///a%00b"_s)), QString());
    EXPECT_EQ(localPath(QUrl(u"file:///home/fr%C3%BCh.dat"_s)), u"/home/früh.dat"_s);
}

TEST(FileNames, AreMeantByPathsAddressesAndShownBytes) {
    const TemporaryFolder folder;
    const std::string foreign = folder / "fr\xFCh.dat";
    writeFile(foreign, "x");
    for (const QString& text :
         {fromPath(foreign), u"  "_s + fromPath(foreign) + u"\n"_s, legible(fromPath(foreign)),
          u" "_s + legible(fromPath(foreign)), QString::fromLatin1(addressOf(foreign).toEncoded())})
        EXPECT_EQ(pathMeantBy(text), foreign) << text.toStdString();
    EXPECT_EQ(pathMeantBy(u"fr\\xFCh.dat"_s, folder.path()), foreign);
    EXPECT_EQ(pathMeantBy(u"fr\\xfch.dat"_s, folder.path()), foreign);
    EXPECT_EQ(pathMeantBy(QString()), "");
    EXPECT_EQ(pathMeantBy(u" /no/such file "_s), "/no/such file");
    EXPECT_EQ(pathMeantBy(u"/no/such\\x41\\xG1\\x9"_s), "/no/such\\x41\\xG1\\x9");
}

TEST(FileNames, ThatExistAsTheyStandAreTakenAsTheyStand) {
    const TemporaryFolder folder;
    for (const char* name : {"a\\xFC.dat", " blanks .dat "}) {
        writeFile(folder / name, "x");
        EXPECT_EQ(pathMeantBy(fromPath(folder / name)), folder / name);
    }
    writeFile(folder / "a\xFC.dat", "x");
    EXPECT_EQ(pathMeantBy(fromPath(folder / "a\\xFC.dat")), folder / "a\\xFC.dat");
}

}  // namespace tessel
