#include "support/kept_sessions.h"

#include <algorithm>
#include <sstream>

namespace fs = std::filesystem;

namespace kept {

const fs::path sessions = fs::path(RIDERS_SOURCE_DIR) / "examples" / "sessions";

namespace {

// The words after "# options:" in the first line.
std::vector<std::string> optionsOf(const fs::path &script)
{
    std::istringstream in(contentsOf(script));
    std::string line;
    std::getline(in, line);
    const std::string mark = "# options:";
    return line.starts_with(mark) ? wordsOf(line.substr(mark.size())) : std::vector<std::string>();
}

}  // namespace

std::vector<std::string> scriptsIn(const fs::path &folder)
{
    std::vector<std::string> all;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".play")
            all.push_back(entry.path().stem());
    std::sort(all.begin(), all.end());
    return all;
}

std::vector<std::string> wordsOf(const std::string &line)
{
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

std::vector<std::string> names()
{
    return scriptsIn(sessions);
}

CommandResult Session::play(const std::string &name)
{
    fs::path script = sessions / (name + ".play");
    fs::remove_all(work_ / "there");
    fs::copy(sessions / "files", work_ / "there", fs::copy_options::recursive);
    std::vector<std::string> command = {RIDERS_BINARY_DIR "/" + program_,
                                        "play",
                                        script,
                                        "--preferences",
                                        work_ / "preferences",
                                        "--trace",
                                        work_ / "trace",
                                        "--pictures",
                                        work_ / "pictures"};
    for (const std::string &option : optionsOf(script))
        command.push_back(option);
    return runProgram(command, {}, work_ / "there");
}

std::vector<std::string> Session::names() const
{
    std::vector<std::string> all;
    for (const fs::directory_entry &entry : fs::directory_iterator(work_ / "there"))
        all.push_back(entry.path().filename());
    return all;
}

fs::path traceOf(const std::string &name)
{
    return sessions / (name + ".trace");
}

std::string difference(const std::string &is, const std::string &should)
{
    std::istringstream isLines(is), shouldLines(should);
    for (int number = 1;; ++number) {
        std::string isLine, shouldLine;
        bool more = static_cast<bool>(std::getline(isLines, isLine));
        bool moreWanted = static_cast<bool>(std::getline(shouldLines, shouldLine));
        if (!more && !moreWanted)
            return {};
        if (more != moreWanted || isLine != shouldLine)
            return "line " + std::to_string(number) + "\n  is:     " + (more ? isLine : "(the end)") +
                   "\n  should: " + (moreWanted ? shouldLine : "(the end)");
    }
}

}  // namespace kept
