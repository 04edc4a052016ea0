// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_system.h"

#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

namespace tessel {

TEST(NamesBesideAFile, AreThoseThatNothingHas) {
    const TemporaryFolder folder;
    EXPECT_EQ(freeNameBeside(folder / "a.field.dat", "gpkg"), folder / "a.field.gpkg");
    EXPECT_EQ(freeNameBeside(folder / "field", "record.yaml"), folder / "field.record.yaml");
    writeFile(folder / "field.csv", "x");
    EXPECT_EQ(freeNameBeside(folder / "field.csv", "csv"), folder / "field-2.csv");
    // A link that leads nowhere has a name, too.
    std::filesystem::create_symlink(folder / "none", folder / "field-2.csv");
    EXPECT_EQ(freeNameBeside(folder / "field.dat", "csv"), folder / "field-3.csv");
}

TEST(NamesBesideAFile, AreNotGivenWhereNothingCanBeWritten) {
    const TemporaryFolder folder;
    EXPECT_EQ(freeNameBeside(folder / "none/field.dat", "csv"), "");
    EXPECT_EQ(freeNameBeside("", "csv"), "");
    ::chmod(folder.path().c_str(), 0555);
    const UnprivilegedUser user;
    EXPECT_EQ(freeNameBeside(folder / "field.dat", "csv"), "");
}

}  // namespace tessel
