#include "support/riders_pieces.h"

#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "support/toolbox_test.h"

namespace {

const std::string resources = std::string(RIDERS_SOURCE_DIR) + "/resources/";

// Each piece's bytes. A statement names one file, or between braces several.
std::map<int, std::string> readPieces()
{
    std::map<int, std::string> pieces;
    std::istringstream lines(contentsOf(resources + "pieces.res"));
    const std::regex statement(R"re(^text (\d+) files?.*)re"), name(R"re("([^"]+)")re");
    std::string *piece = nullptr;
    for (std::string line; std::getline(lines, line);) {
        std::smatch parts;
        if (line.starts_with('#'))
            continue;
        if (std::regex_match(line, parts, statement))
            piece = &pieces[std::stoi(parts[1])];
        if (std::regex_search(line, parts, name) && piece)
            *piece += contentsOf(resources + parts[1].str());
    }
    return pieces;
}

}  // namespace

std::string pieceBytes(int id)
{
    static const std::map<int, std::string> pieces = readPieces();
    auto found = pieces.find(id);
    if (found == pieces.end())
        throw std::out_of_range("no piece " + std::to_string(id));
    return found->second;
}
