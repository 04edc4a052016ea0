// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/proj_library.h"

#include "base/run_time_error.h"
#include "geodesy/coordinate_systems.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

std::string failureOf(const std::string& name) {
    try {
        const ProjLibrary library(name);
    } catch (const RunTimeError& error) {
        return error.description();
    }
    return "";
}

TEST(ProjLibrary, TellsWhichFileIsMissing) {
    EXPECT_TRUE(failureOf("libproj.so.none").starts_with("libproj.so.none cannot be opened: "));
}

TEST(ProjLibrary, RefusesALibraryThatLacksAFunctionThatIsCalled) {
    const std::string failure = failureOf("libm.so.6");
    EXPECT_TRUE(failure.starts_with("libm.so.6 cannot be opened: ")) << failure;
    EXPECT_NE(failure.find("undefined symbol: proj_"), failure.npos) << failure;
}

TEST(ProjLibrary, IsTheOneThatTheProgramWasBuiltFor) {
    const ProjLibrary* const library = ProjLibrary::ofSystem();
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(library, ProjLibrary::ofSystem());
    PJ* const system = library->create(nullptr, "EPSG:32630");
    EXPECT_STREQ(library->get_name(system), "WGS 84 / UTM zone 30N");
    library->destroy(system);
}

void lookForSystemsInVain() {
    EXPECT_EQ(ProjLibrary::ofSystem(), nullptr);
    EXPECT_TRUE(coordinateSystems().empty());
    EXPECT_EQ(shownName(32630), "EPSG:32630");
    EXPECT_EQ(whyNotInMetres(32630), "This coordinate system is not known.");
    EXPECT_EQ(horizontalSystem(32630, "LOCAL_CS[\"field\"]").kind, SystemKind::kUnknown);
    EXPECT_EQ(definitionOf(32630).text, "undefined");
    EXPECT_THROW(Transformation(32630), RunTimeError);
    std::_Exit(testing::Test::HasFailure() ? 1 : 0);
}

TEST(ProjLibraryDeathTest, KnowsNoSystemWhereItCannotBeOpened) {
    // The process is another one from its beginning: no other test has opened the library there, and the
    // loader comes upon a file of its name that is none.
    const TemporaryFolder folder;
    writeFile(folder / TESSEL_PROJ_LIBRARY, "");
    const Environment libraries("LD_LIBRARY_PATH", folder.path());
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(lookForSystemsInVain(), testing::ExitedWithCode(0), "");
}

}  // namespace

}  // namespace tessel
