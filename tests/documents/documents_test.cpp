// The files that the documents name exist, and the boundary header describes
// each call under the same headings.
#include "support/documents.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <sstream>

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = RIDERS_SOURCE_DIR;

std::vector<fs::path> documents()
{
    std::vector<fs::path> found = {kRoot / "README.md", kRoot / "CONTRIBUTING.md"};
    for (const auto &entry : fs::recursive_directory_iterator(kRoot / "docs"))
        if (entry.path().extension() == ".md")
            found.push_back(entry.path());
    return found;
}

// Without code, which is indented by four blanks.
std::string proseOf(const fs::path &document)
{
    std::istringstream lines(sourceText(fs::relative(document, kRoot).string()));
    std::string prose;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("    "))
            prose += line + '\n';
    return prose;
}

std::vector<std::string> linksIn(const std::string &text)
{
    static const std::regex link(R"(\]\(([^)# ]+)[^)]*\))");
    std::vector<std::string> targets;
    for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at)
        if (!(*at)[1].str().starts_with("http"))
            targets.push_back((*at)[1]);
    return targets;
}

// Whether a text between backquotes is meant as a path in this tree: it begins
// with one of the tree's folders. (Files that a how-to has you write are in
// bold.)
bool isPath(const std::string &text)
{
    static const std::regex path(
        R"((bench|docs|examples|host|include|resources|source|tests|toolbox|tools)/[\w./*{},-]+)");
    return std::regex_match(text, path) && text.find("*/") == std::string::npos;
}

bool matchesName(const std::string &name, const std::string &pattern)
{
    std::string expression;
    for (char c : pattern)
        expression += c == '*' ? std::string(".*") : c == '.' ? std::string("\\.") : std::string(1, c);
    return std::regex_match(name, std::regex(expression));
}

// For a path, perhaps with stars in its last part, or a header as it is included.
bool isThere(const std::string &text)
{
    for (const char *folder : {"", "toolbox/include", "include", "host", "toolbox", "tests"}) {
        const fs::path path = kRoot / folder / text;
        if (fs::exists(path))
            return true;
        if (text.find('*') == std::string::npos || !fs::is_directory(path.parent_path()))
            continue;
        for (const auto &entry : fs::directory_iterator(path.parent_path()))
            if (matchesName(entry.path().filename().string(), path.filename().string()))
                return true;
    }
    return false;
}

// The comment that ends right before the text.
std::string commentBefore(const std::string &source, size_t at)
{
    const size_t lineStart = source.rfind('\n', at) + 1;
    std::istringstream lines(source.substr(0, lineStart));
    std::string comment;
    static const std::regex isComment(R"( *//.*)");
    for (std::string line; std::getline(lines, line);)
        comment = std::regex_match(line, isComment) ? comment + line + '\n' : "";
    return comment;
}

}  // namespace

TEST(Documents, EveryLinkLeadsToAFile)
{
    int seen = 0;
    for (const fs::path &document : documents())
        for (const std::string &target : linksIn(proseOf(document))) {
            EXPECT_TRUE(fs::exists(document.parent_path() / target)) << document << " links to " << target;
            ++seen;
        }
    EXPECT_GT(seen, 20);
}

TEST(Documents, EveryPathNamedIsThere)
{
    int seen = 0;
    for (const fs::path &document : documents())
        for (const std::string &text : quotedIn(proseOf(document)))
            if (isPath(text)) {
                EXPECT_TRUE(isThere(text)) << document << " names " << text;
                ++seen;
            }
    EXPECT_GT(seen, 40);
}

TEST(Documents, TheBoundarySaysTheSameThingsOfEachCall)
{
    const std::string source = sourceText("include/riders/plugin.h");
    for (const char *call :
         {"kSelectIdentify =", "kSelectStartUp =", "kSelectAbout =", "kSelectIdle =", "kSelectCommand =",
          "(*AddMenuItemProc)", " HostFilterProc;", "main_entry(MessageBlock"}) {
        const size_t at = source.find(call);
        ASSERT_NE(at, std::string::npos) << call;
        const std::string comment = commentBefore(source, at);
        size_t last = 0;
        for (const char *word : {"Thread:", "When:", "May call:", "Frees:", "Pointers:"}) {
            const size_t found = comment.find(word);
            EXPECT_NE(found, std::string::npos) << call << " says nothing under " << word;
            EXPECT_GE(found, last) << call << " has " << word << " in another place";
            last = found;
        }
    }
}
