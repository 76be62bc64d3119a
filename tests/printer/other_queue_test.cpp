// Films that a queue sends on to another queue, of CUPS.
#include "printer/own_service.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

using printing_tests::OwnCupsd;
using printing_tests::PrinterPipe;

// What is printed there is, to the byte, what `riders film --printer` prints, each pixel of which is one of the
// film's.
TEST(OtherQueueTest, GetsTheFilmsDotForDot)
{
    TemporaryFolder folder;
    writeFile(folder / "job.ps", kJob);
    const PrinterPipe pipe(folder / "pipe");
    const OwnCupsd server{{{"inkjet", printing_tests::gutenprintPpd("escp2-1400"), pipe.uri()}}};
    const CommandResult plain = runRiders(
        {"film", "job.ps", "--frequency", "40", "--angle", "30", "--dpi", "360", "--printer", "inkjet", "--quiet"},
        "", folder.path());
    ASSERT_EQ(plain.status, 0) << plain.err;
    const std::string expected = pipe.read();
    ASSERT_GT(expected.size(), 1000U);
    for (const char *sandbox : {"never", "auto"}) {
        OwnService service(folder.path(), {"--queue", "through:printer=inkjet,frequency=40,angle=30,dpi=360",
                                           "--sandbox", sandbox});
        const Answer answer = service.send(folder / "job.ps", "job.ps", {}, "through");
        ASSERT_EQ(answer.status, IPP_STATUS_OK) << answer.message;
        service.waitFor(answer.job, IPP_JSTATE_COMPLETED, "through");
        EXPECT_EQ(pipe.read() == expected, true) << "sandbox " << sandbox << "\n" << service.log();
        EXPECT_TRUE(filmsIn(service.films()).empty());
    }
}

TEST(OtherQueueTest, ThatIsNotThereIsSaid)
{
    TemporaryFolder folder;
    writeFile(folder / "job.ps", kJob);
    const OwnCupsd server{{}};
    const OwnService service(folder.path(), {"--queue", "through:printer=nowhere", "--sandbox", "never"});
    const Answer answer = service.send(folder / "job.ps", "job.ps", {}, "through");
    ASSERT_EQ(answer.status, IPP_STATUS_OK) << answer.message;
    service.waitFor(answer.job, IPP_JSTATE_ABORTED, "through");
    EXPECT_NE(service.messageOf(answer.job, "through").find("nowhere"), std::string::npos)
        << service.messageOf(answer.job, "through");
}

}  // namespace
}  // namespace printer_tests
