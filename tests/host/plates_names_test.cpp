// The names of plates, for people and for files.
#include <gtest/gtest.h>

#include "plates/files/plate_names.h"

namespace {

namespace plates = riders::plates;

TEST(PlateNames, FilesAreNamedPlainly)
{
    std::set<std::string> taken = {"all"};
    EXPECT_EQ(plates::fileNameFor("PANTONE 185 C", taken), "pantone-185-c");
    EXPECT_EQ(plates::fileNameFor("Pantone-185-C", taken), "pantone-185-c-2");
    EXPECT_EQ(plates::fileNameFor("All", taken), "all-2");
    EXPECT_EQ(plates::fileNameFor("../..", taken), "ink");
    EXPECT_EQ(plates::fileNameFor("", taken), "ink-2");
    EXPECT_EQ(plates::fileNameFor(std::string(300, 'x'), taken).size(), 40u);
    EXPECT_EQ(plates::plateNameFrom("cyan0", 1), "cyan");
    EXPECT_EQ(plates::inkBytesFrom("BLACK12", 13), "BLACK");
    for (const char *name : {"Cyan", "Cyan2", "Gold 1", "gold2", "cyan0x", "12"})
        EXPECT_EQ(plates::plateNameFrom(name, 60), name);
    EXPECT_EQ(plates::plateNameFrom("a%2Fb%25 %zz%4", 1), "a/b% %zz%4");
}

// The interpreter numbers inks from 0: what is no number of one is part of the name.
TEST(PlateNames, NumbersOfTheJobsOwnStay)
{
    EXPECT_EQ(plates::plateNameFrom("CYAN1", 1), "CYAN1");
    EXPECT_EQ(plates::plateNameFrom("black12", 12), "black12");
    EXPECT_EQ(plates::plateNameFrom("cyan00", 5), "cyan00");
    EXPECT_EQ(plates::plateNameFrom("cyan", 5), "cyan");
    EXPECT_EQ(plates::plateNameFrom("cyan99999999999999999999", 5), "cyan99999999999999999999");
}

}  // namespace
