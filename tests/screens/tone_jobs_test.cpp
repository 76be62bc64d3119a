// The jobs that programs write, in continuous tone: to the bit what plain separations are. Those of three programs
// are tried, those of all with RIDERS_TONES=all.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "printed/tones_support.h"
#include "screens/job_producers.h"

namespace {

class ToneJobsTest : public TonesTest, public ::testing::WithParamInterface<Producer> {};

TEST_P(ToneJobsTest, AreThoseOfPlainSeparations)
{
    GetParam().make(folder, folder / "written.ps", GetParam().colours);
    expectPlain(folder / "written.ps", {.across = 180, .down = 120});
}

std::vector<Producer> producers()
{
    const char *const wanted = std::getenv("RIDERS_TONES");
    std::vector<Producer> some = jobProducers();
    if (!wanted || wanted != std::string("all"))
        some.erase(std::remove_if(some.begin(), some.end(),
                                  [](const Producer &producer) {
                                      const std::string name = producer.name;
                                      return name != "cairo" && name != "gnuplot" && name != "ps2write";
                                  }),
                   some.end());
    return some;
}

INSTANTIATE_TEST_SUITE_P(Debian, ToneJobsTest, ::testing::ValuesIn(producers()),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(TonesTest, OfAPdfAreThoseOfPlainSeparations)
{
    makePdf(folder, folder / "written.pdf", true);
    expectPlain(folder / "written.pdf", {.across = 180, .down = 120, .pages = {2}});
}

}  // namespace
