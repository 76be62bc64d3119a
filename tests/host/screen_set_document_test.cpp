// What docs/riders-file.md says of screen sets is what the program takes.
#include <sstream>

#include "io/refusal.h"
#include "screens/screen_limits.h"
#include "screens/screen_set.h"
#include "screens/set_file.h"
#include "support/documents.h"
#include "support/toolbox_test.h"

namespace {

namespace screens = riders::screens;

const char *const kPath = "docs/riders-file.md";

// The keys in the table whose first heading that is, as a refusal lists them.
std::string keysIn(const std::string &firstHeading)
{
    std::string keys;
    for (const TableRow &row : tableIn(sourceText(kPath), firstHeading))
        keys += (keys.empty() ? "" : ", ") + quotedIn(row.at(0)).at(0);
    return keys;
}

std::string refusalOf(const std::string &text)
{
    try {
        screens::setFromText(text, "set");
        return "taken";
    } catch (const riders::io::Refusal &refusal) {
        return refusal.message;
    }
}

std::string listed(const std::string &refusal)
{
    return refusal.substr(refusal.find("the keys are ") + 13);
}

std::string exampleIn(const std::string &document)
{
    std::istringstream lines(document.substr(document.find("    name = ")));
    std::string example;
    for (std::string line; std::getline(lines, line) && (line.empty() || line.starts_with("    "));)
        example += line.substr(std::min<size_t>(line.size(), 4)) + "\n";
    return example;
}

}  // namespace

TEST(ScreenSetDocument, NamesTheKeys)
{
    EXPECT_EQ(listed(refusalOf("x = 1")), keysIn("Key"));
    EXPECT_EQ(listed(refusalOf("name = \"a\"\n[plates]\nCyan = { x = 1 }")), keysIn("Key of a plate"));
}

TEST(ScreenSetDocument, HasAnExampleThatIsTaken)
{
    const screens::ScreenSet set = screens::setFromText(exampleIn(sourceText(kPath)), "example");
    EXPECT_EQ(set.name, "My offset");
    EXPECT_EQ(set.plates.size(), 4u);
}

TEST(ScreenSetDocument, NamesTheLimits)
{
    const std::string document = sourceText(kPath);
    const auto range = [](auto least, auto most) {
        std::ostringstream text;
        text << "| " << least << " to " << most;
        return text.str();
    };
    for (const std::string &words :
         {range(screens::kLeastFrequency, screens::kMostFrequency) + " |",
          range(-screens::kMostAngle, screens::kMostAngle) + " |",
          range(screens::kLeastFactor, screens::kMostFactor) + " |",
          range(1, screens::kLongestSetText) + " bytes |", range(1, screens::kMostSetPlates) + " plates |"})
        EXPECT_NE(document.find(words), std::string::npos) << words;
    EXPECT_EQ(screens::kMostSetBytes, 65'536u);
    EXPECT_EQ(screens::kLongestPlateName, 127u);
    EXPECT_NE(document.find("at most 65,536 bytes long"), std::string::npos);
    EXPECT_NE(document.find("1 to 127 bytes of UTF-8"), std::string::npos);
}
