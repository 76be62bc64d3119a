// What debian/ says agrees with what the rest of the tree says.
#include <regex>
#include <sstream>

#include "support/documents.h"
#include "support/toolbox_test.h"

namespace {

// Words without the line's own beginnings, in single blanks.
std::string flowing(const std::string &text)
{
    static const std::regex dots("\n \\.\n"), blanks("\\s+");
    return std::regex_replace(std::regex_replace(text, dots, "\n"), blanks, " ");
}

}  // namespace

TEST(DebianPackage, HasTheProgramsVersion)
{
    EXPECT_TRUE(sourceText("debian/changelog").starts_with("riders (" RIDERS_PROJECT_VERSION ") "));
}

TEST(DebianPackage, SaysTheLicence)
{
    const std::string licence = sourceText("LICENSE"), copyright = sourceText("debian/copyright");
    const std::size_t words = licence.find("Permission is");
    ASSERT_NE(words, std::string::npos);
    EXPECT_NE(flowing(copyright).find(flowing(licence.substr(words))), std::string::npos);
    const std::size_t year = licence.find("Copyright (c) ") + 14;
    const std::string holder = licence.substr(year, licence.find('\n', year) - year);
    EXPECT_NE(copyright.find("Copyright: " + holder), std::string::npos) << holder;
}

TEST(DebianPackage, NeedsForItsBuildWhatTheCommandsInstall)
{
    const std::string control = sourceText("debian/control"), packages = sourceText("tools/setup/packages.sh");
    const std::size_t begin = control.find("Build-Depends:") + 15;
    std::istringstream lines(control.substr(begin, control.find("\nStandards-Version", begin) - begin));
    int seen = 0;
    for (std::string line; std::getline(lines, line); ++seen) {
        std::string name = line.substr(1, line.find_first_of(" ,", 1) - 1);
        if (name == "debhelper-compat")
            name = "debhelper";
        EXPECT_TRUE(std::regex_search(packages, std::regex("[ (]" + name + "[ )\n]"))) << name;
    }
    EXPECT_GT(seen, 10);
}
