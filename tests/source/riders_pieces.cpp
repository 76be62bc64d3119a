#include "source/riders_pieces.h"

#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "support/toolbox_test.h"

static std::map<int, std::string> pieceFiles()
{
    std::map<int, std::string> files;
    std::istringstream lines(contentsOf(std::string(RIDERS_SOURCE_DIR) + "/resources/pieces.res"));
    const std::regex statement(R"re(^\s*text\s+(\d+)\s+file\s+"([^"]+)".*)re");
    for (std::string line; std::getline(lines, line);) {
        std::smatch parts;
        if (std::regex_match(line, parts, statement))
            files[std::stoi(parts[1])] = parts[2];
    }
    return files;
}

std::string pieceBytes(int id)
{
    static const std::map<int, std::string> files = pieceFiles();
    auto file = files.find(id);
    if (file == files.end())
        throw std::out_of_range("no piece " + std::to_string(id));
    return contentsOf(std::string(RIDERS_SOURCE_DIR) + "/resources/" + file->second);
}
