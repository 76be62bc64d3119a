// Dot shapes by name, and the spot function files that they are read from.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace riders::screens {

struct Shape {
    std::string name;            // the one it was asked for by, as it is usually written; of a file its file name
    std::string body;            // of the spot function: what stands in the file after the first carriage return
    std::filesystem::path file;  // that file
};

// Longer bodies have no room in a riders file.
inline constexpr std::size_t kLongestShape = 64'900;

// The shapes that come with the program, in the order of their names, each named as its file is; none where their
// folder is not there. Throws Refusal where one of the files is no spot function file, and
// std::filesystem::filesystem_error where the folder cannot be read; so do the calls that look for names in it.
std::vector<Shape> installedShapes();

// The installed shape that shapeNamed finds by that name; nothing for files. Throws Refusal as installedShapes.
std::optional<Shape> installedShape(const std::string &name);

// The shape that `riders make --spot`, `--plate` and screen sets mean by that name, in upper or lower case: one of
// the plug-in's menu, even where a file of that name holds other dots (Round), or one that is installed; otherwise
// a spot function file (docs/riders-file.md). Nothing where there is neither. Throws Refusal, which names the file
// and says what is wrong with it.
std::optional<Shape> shapeNamed(const std::string &nameOrFile);

// A spot function file. Throws Refusal, which names the file and says what is wrong with it.
Shape shapeIn(const std::filesystem::path &file);
// The same from its bytes.
Shape shapeFrom(const std::filesystem::path &file, const std::string &bytes);

// The names by which shapeNamed finds that installed shape, the most usual first.
std::vector<std::string> namesOf(const Shape &installed);

// "; did you mean NAME?" where somebody has mistyped the name of an installed shape, or nothing.
std::string shapeMeant(const std::string &typed);

// What the shape is like, in a few words: the comment that its body begins with; empty where there is none.
std::string aboutShape(const Shape &shape);

}  // namespace riders::screens
