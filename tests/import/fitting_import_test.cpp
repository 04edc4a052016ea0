// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/fitting_import.h"

namespace tessel {

TEST(FittingImports, AreThoseThatReadMostLines) {
    EXPECT_EQ(fittingImport("1,2,3\n4,5,6\n"), FittingImport::kGeneric);
    EXPECT_EQ(fittingImport("site x y ec\n1 2 3 4\n5 6 7 8\n"), FittingImport::kGeneric);
    EXPECT_EQ(fittingImport("1,5;2;3\n4;5,5;6\n"), FittingImport::kGeneric);
    EXPECT_EQ(fittingImport("a\tb\tc\td\te\tf\tg\n1\t2\t3\t4\t5\t6\t7\n1\t2\t3\t4\t5\t6\t7\n"),
              FittingImport::kTable);
    EXPECT_EQ(fittingImport("lat;lon;ec\n5224.4N;00220.6W;3\n5224.4N;00220.6W;3\n"), FittingImport::kTable);
    EXPECT_EQ(fittingImport("GPS 436000.12N4812000.00E00123\n"), FittingImport::kTrimble);
    EXPECT_EQ(fittingImport("12 13\n14 15\n"), FittingImport::kTrimble);
    EXPECT_EQ(fittingImport(""), FittingImport::kTrimble);
    EXPECT_EQ(fittingImport("PK\x03\x04 binary"), FittingImport::kGeneric);
}

}  // namespace tessel
