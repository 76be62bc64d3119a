// The piece for single plates: where it goes, and what is refused. What it does in an interpreter is seen in
// tests/printed and tests/screens.
#include "make/plates_piece.h"

#include <gtest/gtest.h>

#include <cmath>

#include "apply/riders_file.h"
#include "io/refusal.h"
#include "support/riders_pieces.h"

namespace {

namespace make = riders::make;

std::string beginning()
{
    return pieceBytes(16499) + pieceBytes(16500);
}

std::string ridersWith(const std::string &between)
{
    return beginning() + between + pieceBytes(16600);
}

std::string refusalOf(const std::string &riders, const std::vector<make::PlatePiece> &plates)
{
    try {
        make::withPlates(riders, plates);
    } catch (const riders::io::Refusal &refusal) {
        return refusal.message;
    }
    return {};
}

TEST(PlatesPiece, GoesBeforeTheLastPiece)
{
    const std::string riders = ridersWith(""), made = make::withPlates(riders, {{"Cyan", 60, 15}});
    EXPECT_TRUE(made.starts_with(beginning() + "%Zu3_RidersPlates\n"));
    EXPECT_TRUE(made.ends_with("\n" + pieceBytes(16600)));
    EXPECT_TRUE(riders::apply::isWholeRiders(made));
    EXPECT_EQ(make::withPlates(riders, {}), riders);
}

// A shape or an annotation may hold the line with which the last piece begins.
TEST(PlatesPiece, IsNotLedAstrayByATextOfTheUsers)
{
    const std::string shape = pieceBytes(16506) + "\n%Zu3_RidersSetup\n" + pieceBytes(16507);
    const std::string made = make::withPlates(ridersWith(shape), {{"Cyan", 60, 15}});
    EXPECT_TRUE(made.starts_with(beginning() + shape + "%Zu3_RidersPlates\n"));
    const std::string earlierSetup = "\n/setglobal riderHas {riderGlobal setglobal} if\nend end\n";
    EXPECT_NE(refusalOf(beginning() + shape + earlierSetup, {{"Cyan", 60, 15}}).find("make it again"),
              std::string::npos);
}

TEST(PlatesPiece, HoldsNamesInHexAndOnlyWhatIsChosen)
{
    const std::string made =
        make::withPlates(ridersWith(""), {{"a)\n", 62.5, {}}, {"B", {}, -7.5}, {"C", {}, {}, "pop"}});
    EXPECT_NE(made.find("\n3 riderAddPlates\n<61290A> 0 62.5 riderOnPlate\n<42> 1 -7.5 riderOnPlate\n"
                        "<43> riderShapeOnPlate pop\n%end-of-dot-shape%\n%Zu3_RidersSetup\n"),
              std::string::npos);
}

TEST(PlatesPiece, NeedsAWholeRidersFile)
{
    const std::string riders = ridersWith("");
    for (const std::string &text : {std::string(), std::string("%!PS\n"), riders.substr(0, riders.size() - 9),
                                    riders.substr(2), "%!Zu3_Riders\n\nend end\n%Zu3_RidersEnd\n" + std::string()})
        EXPECT_NE(refusalOf(text, {{"Cyan", 60, 15}}), "") << text.substr(0, 20);
}

TEST(PlatesPiece, RefusesWhatNoPlateCanHave)
{
    const std::string riders = ridersWith("");
    EXPECT_EQ(refusalOf(riders, {{std::string(127, 'x'), 60, 15}}), "");
    for (const make::PlatePiece &plate : std::vector<make::PlatePiece>{{"", 60, 15},
                                                                       {"*", 60, 15},
                                                                       {std::string(128, 'x'), 60, 15},
                                                                       {"Cyan", std::nan(""), 15},
                                                                       {"Cyan", 60, HUGE_VAL}})
        EXPECT_NE(refusalOf(riders, {plate}), "") << plate.plate;
    EXPECT_NE(refusalOf(riders, {{"Cyan", 60, 15, std::string(1 << 20, ' ')}}).find("1 MiB"), std::string::npos);
}

}  // namespace
