// Reading the documents in docs/ as data, for tests that compare them with the
// code.
#pragma once

#include <string>
#include <vector>

// A row of a table, one text per cell, without the bars and the blanks at its
// ends.
using TableRow = std::vector<std::string>;

// The text of a file of the source tree; the test fails where there is none.
std::string sourceText(const std::string &path);
// The rows of the table whose first heading is that, heading and rule left out.
// The test fails where there is no such table.
std::vector<TableRow> tableIn(const std::string &document, const std::string &firstHeading);
// The words between backquotes in a text, in order.
std::vector<std::string> quotedIn(const std::string &text);
