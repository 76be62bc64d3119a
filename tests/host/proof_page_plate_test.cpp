// What a proof asks of a page that is one plate, painted in black.
#include "host/proof_support.h"
#include "support/command.h"

namespace {

class ProofPagePlate : public ProofTest {
protected:
    // The proof's page of a job that begins with this, has a riders file, and then paints.
    std::string proofWith(const std::string &beginning, const std::string &page)
    {
        const CommandResult made = runRiders({"make", "-o", "riders", "--frequency", "60", "--angle", "45",
                                              "--spot", "round", "--plate", "Cyan:50@15"},
                                             "", folder.path());
        EXPECT_EQ(made.status, 0) << made.err;
        riders::proof::ProofRequest asked =
            request("%!PS-Adobe-3.0\n%%EndComments\n" + beginning + contentsOf(folder / "riders") + page +
                    "<</PageSize [144 144]>> setpagedevice .5 setgray 0 0 144 144 rectfill showpage\n");
        asked.dpi = 800;  // below, a proof warns of lighter tints
        EXPECT_EQ(proofOf(asked), "done");
        return contentsOf(out / "proof.html");
    }
};

TEST_F(ProofPagePlate, ThatACommentNamesHasThatPlatesScreen)
{
    EXPECT_NE(proofWith("", "%%Page: 1 1\n%%PlateColor: Cyan\n").find("Nothing to warn of"), std::string::npos);
}

TEST_F(ProofPagePlate, ThatTheJobNamesInUserdictHasThatPlatesScreen)
{
    EXPECT_NE(proofWith("userdict /Zu3_RidersPlate /Cyan put\n", "").find("Nothing to warn of"),
              std::string::npos);
}

}  // namespace
