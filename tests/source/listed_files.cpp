#include "source/listed_files.h"

#include <algorithm>

#include "support/toolbox_test.h"
#include "toolbox/files.h"

std::vector<std::string> listedOfTwo(const std::filesystem::path &folder, toolbox::ScriptedUser &user,
                                     const std::function<void()> &ask)
{
    auto here = toolbox::folders::workingDirectory(folder);
    EXPECT_EQ(Create(P("A text"), *here, 'ttxt', 'TEXT'), noErr);
    EXPECT_EQ(Create(P("B other"), *here, 'ttxt', 'EPSF'), noErr);
    std::vector<std::string> drawn, listed;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawn));
    user.cancelFile();
    ask();
    toolbox::trace::setDrawingSink({});
    for (std::string name : {"A text", "B other"})
        if (std::any_of(drawn.begin(), drawn.end(),
                        [&](const std::string &line) { return line.find('"' + name + '"') != std::string::npos; }))
            listed.push_back(name);
    return listed;
}
