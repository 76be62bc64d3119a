// What most tests are based on: a running Toolbox on the headless machine, a
// folder of its own, a scripted user, the session trace, and a look at what was
// left behind.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "toolbox/host/faults.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/session.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"

// A folder that exists for the length of a test.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    const std::filesystem::path &path() const { return path_; }
    std::filesystem::path operator/(const std::string &name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

std::string contentsOf(const std::filesystem::path &file);
void writeFile(const std::filesystem::path &file, const std::string &bytes);

// A Pascal string from a literal (Mac OS Roman, taken unchanged), for arguments.
struct P {
    unsigned char bytes[256];
    P(const std::string &text) { toolbox::setPascal(bytes, text); }
    operator unsigned char *() { return bytes; }
};
std::string plain(const unsigned char *pascalString);

class ToolboxTest : public ::testing::Test {
protected:
    // Change configuration and call this again to restart.
    void SetUp() override;
    void TearDown() override;
    void restart();

    // True where a trace line holds the text.
    bool traced(const std::string &part) const;
    int tracedTimes(const std::string &part) const;

    toolbox::Configuration configuration;
    toolbox::HeadlessMachine machine;
    TemporaryFolder folder;
    std::vector<std::string> trace;
};
