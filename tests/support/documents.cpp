#include "support/documents.h"

#include <sstream>

#include "support/toolbox_test.h"

namespace {

std::string trimmed(const std::string &text)
{
    const size_t start = text.find_first_not_of(' ');
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(' ') + 1 - start);
}

TableRow cellsOf(const std::string &line)
{
    TableRow cells;
    std::istringstream rest(line.substr(1));
    for (std::string cell; std::getline(rest, cell, '|');)
        cells.push_back(trimmed(cell));
    return cells;
}

}  // namespace

std::string sourceText(const std::string &path)
{
    const std::filesystem::path file = std::filesystem::path(RIDERS_SOURCE_DIR) / path;
    EXPECT_TRUE(std::filesystem::is_regular_file(file)) << path << " is not there";
    return contentsOf(file);
}

std::vector<TableRow> tableIn(const std::string &document, const std::string &firstHeading)
{
    std::istringstream lines(document);
    std::string line;
    while (std::getline(lines, line) && !line.starts_with("| " + firstHeading + " |"))
        ;
    std::getline(lines, line);  // the rule
    std::vector<TableRow> rows;
    while (std::getline(lines, line) && line.starts_with('|'))
        rows.push_back(cellsOf(line));
    EXPECT_FALSE(rows.empty()) << "no table begins with " << firstHeading;
    return rows;
}

std::vector<std::string> quotedIn(const std::string &text)
{
    std::vector<std::string> found;
    for (size_t at = text.find('`'); at != std::string::npos;) {
        const size_t end = text.find('`', at + 1);
        if (end == std::string::npos)
            break;
        found.push_back(text.substr(at + 1, end - at - 1));
        at = text.find('`', end + 1);
    }
    return found;
}
