// A large job with a riders file, and without it again, on file systems that let files share blocks and on others.
#include <fcntl.h>
#include <sys/stat.h>

#include <map>
#include <random>

#include "apply/markers.h"
#include "host/apply_support.h"
#include "support/mounted_disk.h"

namespace fs = std::filesystem;

namespace {

namespace apply = riders::apply;

constexpr size_t kBlock = 4096;

std::string largeJob(size_t size, const std::string &orientation = "Portrait")
{
    std::string job =
        "%!PS-Adobe-3.0\n%%Orientation: " + orientation + "\n%%EndComments\n%%BeginSetup\n%%EndSetup\n";
    std::mt19937 random(1);
    std::string part(4093, '\0');
    for (char &byte : part)
        byte = static_cast<char>(random());
    while (job.size() < size)
        job += part;
    return job.substr(0, size);
}

// Disks are made once for all tests of a suite: each takes half a second.
std::map<std::string, MountedDisk> disks;

class SharedBlocks : public testing::TestWithParam<const char *> {
protected:
    static void TearDownTestSuite() { disks.clear(); }

    void SetUp() override
    {
        if (!disk.missing().empty())
            GTEST_SKIP() << GetParam() << ": " << disk.missing();
        for (const fs::path &file : {job, out, plain})
            fs::remove(file);
        writeFile(riders, fragment);
    }

    std::string apply(const std::string &bytes)
    {
        writeFile(job, bytes);
        apply::applyRiders({riders, job, out});
        return contentsOf(out);
    }

    const MountedDisk &disk = disks.try_emplace(GetParam(), GetParam()).first->second;
    fs::path riders = disk / "film", job = disk / "job.ps", out = disk / "out.ps", plain = disk / "plain.ps";
    std::string fragment = "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n";
};

class NotSharedBlocks : public SharedBlocks {};

TEST_P(SharedBlocks, ALargeJobTakesNoMoreSpaceWithARidersFile)
{
    const std::string bytes = largeJob(5'000'001);
    writeFile(job, bytes);
    EXPECT_GE(bytesOfItsOwn(job), bytes.size());
    const std::string both = apply(bytes);
    EXPECT_EQ((both.size() - bytes.size()) % kBlock, 0u);
    EXPECT_LT(both.size() - bytes.size(), 2 * kBlock);
    EXPECT_LE(bytesOfItsOwn(out), 4 * kBlock);
}

TEST_P(SharedBlocks, NorDoesItWithoutOneAgain)
{
    const std::string bytes = largeJob(5'000'001);
    apply(bytes);
    apply::stripRiders({out, plain});
    EXPECT_TRUE(contentsOf(plain) == bytes);
    EXPECT_LE(bytesOfItsOwn(plain), 4 * kBlock);
}

TEST_P(SharedBlocks, TheJobIsTheSameAroundTheRidersFile)
{
    for (const size_t size : {2'000'001, 2'097'152}) {
        const std::string bytes = largeJob(size, "Landscape"), both = apply(bytes);
        const size_t at = both.find("%RidersBegin"), end = both.find("%RidersEnd") + 11;
        EXPECT_TRUE(both.substr(0, at) + both.substr(end) == bytes) << size;
        EXPECT_NE(both.find(", landscape, padded: "), both.npos);
        EXPECT_NE(both.find(fragment + "%   "), both.npos);
    }
}

TEST_P(SharedBlocks, RidersFilesOfAllLengthsArePadded)
{
    const std::string bytes = largeJob(2 << 20);
    // The number of bytes of padding gets shorter, and the whole, by the number's own length, too short again.
    for (size_t more :
         {0, 900, 2900, 2990, 2996, 2997, 2998, 2999, 3000, 3001, 3890, 3980, 3988, 3989, 4090, 9000}) {
        fragment = "%!Zu3_Riders\n" + std::string(more, '%') + "\n%Zu3_RidersEnd\n";
        writeFile(riders, fragment);
        ASSERT_EQ((apply(bytes).size() - bytes.size()) % kBlock, 0u) << more;
        apply::stripRiders({out, plain});
        ASSERT_TRUE(contentsOf(plain) == bytes) << more;
    }
}

TEST_P(SharedBlocks, PlacesFarIntoTheJob)
{
    for (const size_t before : {513 << 10, (4 << 20) - 100}) {
        std::string bytes = "%!PS-Adobe-3.0\n%%EndComments\n%%BeginSetup\n";
        while (bytes.size() < before)
            bytes += "/x 1 def % a definition among thousands\n";
        bytes += "%%EndSetup\n" + largeJob(3 << 20);
        apply(bytes);
        EXPECT_LE(bytesOfItsOwn(out), before + 3 * kBlock);
        apply::stripRiders({out, plain});
        EXPECT_TRUE(contentsOf(plain) == bytes) << before;
    }
}

TEST_P(SharedBlocks, InPlaceAndByStandardFiles)
{
    const std::string bytes = largeJob(3 << 20), both = apply(bytes);
    apply::applyRiders({riders, job, job});
    EXPECT_TRUE(contentsOf(job) == both);
    const int in = open(job.c_str(), O_RDONLY | O_CLOEXEC);
    const int to = open(plain.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    EXPECT_EQ(runOn(in, to, [] { apply::stripRiders({}); }).exitCode, 0);
    EXPECT_TRUE(contentsOf(plain) == bytes);
    EXPECT_LE(bytesOfItsOwn(plain), 4 * kBlock);
    EXPECT_EQ(lseek(in, 0, SEEK_SET), 0);
    // Behind what is there already nothing can be shared.
    EXPECT_EQ(runOn(in, to, [] { apply::stripRiders({}); }).exitCode, 0);
    EXPECT_TRUE(contentsOf(plain) == bytes + bytes);
    close(in);
    close(to);
}

TEST_P(SharedBlocks, ASmallJobIsNotPadded)
{
    EXPECT_EQ(apply(largeJob(900'000)).find("padded"), std::string::npos);
    EXPECT_NE(apply(largeJob(1'200'000)).find("padded"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Disks, SharedBlocks, testing::Values("xfs", "btrfs"),
                         [](const auto &kind) { return std::string(kind.param); });

TEST_P(NotSharedBlocks, NothingIsPadded)
{
    const std::string bytes = largeJob(5'000'001), both = apply(bytes);
    const size_t at = both.find("%RidersBegin"), end = both.find("%RidersEnd") + 11;
    EXPECT_EQ(both.substr(at, end - at),
              "%RidersBegin: 37 bytes, line ends added: none\n" + fragment + "%RidersEnd\n");
    EXPECT_TRUE(both.substr(0, at) + both.substr(end) == bytes);
    apply::stripRiders({out, plain});
    EXPECT_TRUE(contentsOf(plain) == bytes);
}

INSTANTIATE_TEST_SUITE_P(Disks, NotSharedBlocks, testing::Values("ext4"),
                         [](const auto &kind) { return std::string(kind.param); });

}  // namespace
