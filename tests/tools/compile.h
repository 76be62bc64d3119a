// A folder of sources to compile, and what the compiler says about them.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "compiler.h"
#include "support/hex.h"
#include "support/toolbox_test.h"

std::string asHex(const std::string &bytes);

class Compile : public ::testing::Test {
protected:
    // The resources of a source with this text, main.res in the folder.
    rescomp::Resources compiled(const std::string &text);
    // The data of the only resource.
    std::string bytes(const std::string &text);
    // The message, from the line number on; "compiled" if nothing is wrong.
    std::string complaint(const std::string &text);

    TemporaryFolder folder;
};
