// Sessions in which a riders file is made or deleted, played in a folder of their own.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include "host/play_fixture.h"

namespace keeping {

inline constexpr const char *make = "start\ncommand 0\nchoose 4 3\npress 1\nsave work/made\n";
inline constexpr const char *deleteIt = "start\ncommand 1\nopen work/made\n";

class Kept : public Play {
protected:
    void SetUp() override { std::filesystem::create_directory(work); }

    std::vector<std::string> names(const std::string &in = "work") const
    {
        std::vector<std::string> all;
        for (const auto &entry : std::filesystem::directory_iterator(folder / in))
            all.push_back(entry.path().filename());
        std::sort(all.begin(), all.end());
        return all;
    }
    static bool isWhole(const std::string &riders)
    {
        return riders.starts_with("%!Zu3_Riders") && riders.find("%Zu3_RidersEnd") != riders.npos;
    }
    struct stat statusOf(const std::string &name) const
    {
        struct stat status = {};
        EXPECT_EQ(lstat((work / name).c_str(), &status), 0) << name;
        return status;
    }
    // The program as somebody who is not root.
    CommandResult playAsNobody(const std::string &script)
    {
        writeFile(folder / "session.play", script);
        return runProgram({"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups",
                           RIDERS_BINARY_DIR "/riders", "play", "session.play", "--preferences", "preferences"},
                          {}, folder.path());
    }

    std::filesystem::path work = folder / "work";
};

}  // namespace keeping
