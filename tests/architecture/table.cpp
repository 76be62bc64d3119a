#include "architecture/table.h"

#include <fnmatch.h>

#include <sstream>

namespace architecture {

namespace {

std::string trimmed(const std::string &text)
{
    size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The cells of a line of a table; none where the line is not of a table.
std::vector<std::string> cells(const std::string &line)
{
    std::vector<std::string> found;
    std::string rest = trimmed(line);
    if (rest.empty() || rest[0] != '|')
        return found;
    std::istringstream text(rest.substr(1));
    for (std::string cell; std::getline(text, cell, '|');)
        found.push_back(trimmed(cell));
    return found;
}

std::vector<std::string> inBackticks(const std::string &cell)
{
    std::vector<std::string> found;
    for (size_t from = cell.find('`'); from != std::string::npos; from = cell.find('`', from)) {
        size_t to = cell.find('`', from + 1);
        if (to == std::string::npos)
            break;
        found.push_back(cell.substr(from + 1, to - from - 1));
        from = to + 1;
    }
    return found;
}

bool isRule(const std::vector<std::string> &row)
{
    return row[0].find_first_not_of("-: ") == std::string::npos;
}

bool startsWith(const std::string &text, const std::string &start)
{
    return text.compare(0, start.size(), start) == 0;
}

bool isFolder(const std::string &path)
{
    return !path.empty() && path.back() == '/';
}

void addRoom(Table &table, const std::vector<std::string> &row, int line)
{
    for (const std::string &path : inBackticks(row[0]))
        table.rooms.push_back({path, line, startsWith(row[2], "everything"), inBackticks(row[2])});
}

}  // namespace

const Room *Table::roomOf(const std::string &file) const
{
    const Room *best = nullptr;
    for (const Room &room : rooms)
        if ((isFolder(room.path) ? startsWith(file, room.path) : file == room.path) &&
            (!best || room.path.size() > best->path.size()))
            best = &room;
    return best;
}

Table readTable(const std::string &document, const std::string &text)
{
    Table table{document, {}, {}};
    std::istringstream lines(text);
    enum { Prose, Rooms, Libraries, Other } inside = Prose;
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        std::vector<std::string> row = cells(line);
        if (row.size() < 3)
            inside = Prose;
        else if (inside == Prose)
            inside = row[0] == "Room" && row[2] == "May know"     ? Rooms
                     : row[1] == "Headers" && row[2] == "Used in" ? Libraries
                                                                  : Other;
        else if (inside == Rooms && !isRule(row))
            addRoom(table, row, number);
        else if (inside == Libraries && !isRule(row))
            table.libraries.push_back({row[0], inBackticks(row[1]), inBackticks(row[2])});
    }
    return table;
}

bool covers(const std::vector<std::string> &entries, const Room &room, const std::string &file)
{
    for (const std::string &entry : entries)
        if (entry == room.path || entry == file ||
            (entry.size() > 2 && entry.ends_with("/*") && startsWith(file, entry.substr(0, entry.size() - 1))))
            return true;
    return false;
}

bool matches(const std::string &pattern, const std::string &name)
{
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

}  // namespace architecture
