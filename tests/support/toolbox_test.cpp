#include "support/toolbox_test.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (fs::temp_directory_path() / "riders-test-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string contentsOf(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void writeFile(const fs::path &file, const std::string &bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string plain(const unsigned char *pascalString)
{
    return std::string(toolbox::pascalView(pascalString));
}

void ToolboxTest::SetUp()
{
    configuration.preferencesFolder = folder / "preferences";
    configuration.startFolder = folder.path();
    const char *moving = getenv("RIDERS_MOVE_BLOCKS");
    configuration.moveBlocks = moving && *moving == '1';
    restart();
}

void ToolboxTest::restart()
{
    toolbox::stop();
    toolbox::faults::clear();
    trace.clear();
    toolbox::trace::setSink(toolbox::trace::into(trace));
    toolbox::start(configuration, machine);
}

void ToolboxTest::TearDown()
{
    toolbox::stop();
    toolbox::trace::setSink({});
    toolbox::trace::setDrawingSink({});
    toolbox::faults::clear();
}

bool ToolboxTest::traced(const std::string &part) const
{
    return tracedTimes(part) > 0;
}

int ToolboxTest::tracedTimes(const std::string &part) const
{
    return static_cast<int>(std::count_if(trace.begin(), trace.end(), [&](const std::string &line) {
        return line.find(part) != std::string::npos;
    }));
}
