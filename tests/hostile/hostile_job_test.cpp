// What the program makes of riders files with annotations of any bytes: `make` makes the same, `apply` and `strip`
// find their own marker lines only, and a proof shows the job.
#include "apply/apply.h"
#include "hostile/hostile_riders.h"
#include "hostile/trials.h"
#include "io/refusal.h"
#include "support/command.h"

namespace {

namespace fs = std::filesystem;
namespace apply = riders::apply;

const std::string kJob = "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%BeginProlog\n%%EndProlog\n%%BeginSetup\n"
                         "%%EndSetup\n%%Page: 1 1\n9 9 9 9 rectfill showpage\n%%Trailer\n%%EOF\n";

class HostileJob : public HostileRiders {
protected:
    void SetUp() override
    {
        HostileRiders::SetUp();
        writeFile(job, kJob);
    }

    const fs::path job = folder / "job.ps", applied = folder / "applied.ps", stripped = folder / "stripped.ps";
};

TEST_F(HostileJob, RidersFilesAreTakenOutByteForByte)
{
    const Trials trials(40);
    HostileTexts texts(trials.seed);
    for (size_t i = 0; i < trials.count && !HasFailure(); ++i) {
        const HostileAnnotation annotation = texts.annotation();
        const std::string riders = ridersOf(annotation);
        SCOPED_TRACE(shownOf(annotation));
        apply::applyRiders({file(), job, applied});
        EXPECT_NE(contentsOf(applied).find(riders), std::string::npos);
        EXPECT_THROW(apply::applyRiders({file(), applied, stripped}), riders::io::Refusal);
        apply::stripRiders({applied, stripped});
        EXPECT_EQ(contentsOf(stripped), kJob);
    }
}

// Of the control characters a command line and a dialog have only some.
std::string typable(const std::string &roman)
{
    std::string text;
    for (const char c : roman)
        if (static_cast<unsigned char>(c) >= 32 && c != 127)
            text += c;
    return text.substr(0, 254);
}

TEST_F(HostileJob, MakeMakesTheSameFiles)
{
    const Trials trials(4);
    HostileTexts texts(trials.seed);
    for (size_t i = 0; i < std::min<size_t>(trials.count, 500) && !HasFailure(); ++i) {
        HostileAnnotation annotation = texts.annotation();
        annotation.text = typable(annotation.text) + (annotation.text.empty() ? "x" : "");
        annotation.font = "Courier-Bold";
        if (annotation.text.empty())
            continue;
        const CommandResult made =
            runRiders({"make", "-o", "made.riders", "--font", annotation.font, "--size", annotation.size,
                       "--annotation=" + toolbox::utf8FromRoman(annotation.text)},
                      {}, folder.path().string());
        EXPECT_EQ(made.status, 0) << made.err << shownOf(annotation);
        EXPECT_EQ(contentsOf(folder / "made.riders"), ridersOf(annotation)) << shownOf(annotation);
    }
}

}  // namespace
