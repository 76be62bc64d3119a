// What CMake says about the build, and where includes are looked for.
#include "architecture/planted_tree.h"

#include <gtest/gtest.h>

namespace {

using namespace architecture;

TEST(CompileCommands, AreRead)
{
    PlantedTree planted;
    std::string top = planted.top(), build = top + "/build/test";
    auto entry = [&](const std::string &command, const std::string &file) {
        return "{\n  \"directory\": \"" + build + "\",\n  \"command\": \"/usr/bin/c++ " + command +
               "\",\n  \"file\": \"" + file + "\"\n}";
    };
    planted.put("host/proof/page.html", "");
    planted.put("build/test/compile_commands.json",
                "[\n" +
                    entry("-DNAME=\\\\\\\"x\\\\\\\" -I" + top + "/host -iquote " + top +
                              "/source/.. -I/usr/include/x -flto -o host/x.o -c " + top + "/host/x.cpp",
                          top + "/host/x.cpp") +
                    ",\n" + entry("-c y.cpp", build + "/y.cpp") + ",\n" +
                    entry("-o host/page.o -c page.html.cpp", build + "/host/proof/page.html.cpp") + "\n]\n");
    std::vector<Compiled> read = readCompileCommands(build + "/compile_commands.json", top);
    ASSERT_EQ(read.size(), 2u) << "what the build makes itself is left out";
    EXPECT_EQ(read[0].source, "host/x.cpp");
    EXPECT_EQ(read[0].object, top + "/build/test/host/x.o");
    EXPECT_EQ(read[0].lookedIn, (std::vector<std::string>{"host", "."}));
    EXPECT_TRUE(read[0].keepsTypes);
    EXPECT_EQ(read[1].source, "host/proof/page.html.cpp") << "made of a file of the tree";
    EXPECT_EQ(read[1].object, build + "/host/page.o");
}

std::vector<std::string> targets(const Tree &tree, const std::string &file)
{
    std::vector<std::string> found;
    for (const Include &include : tree.files.at(file).includes)
        found.push_back(include.target);
    return found;
}

TEST(Includes, AreLookedForAsTheCompilerDoes)
{
    PlantedTree planted;
    planted.put("host/app/bytes.h", "");
    planted.put("host/app/bar.h",
                "#include \"bytes.h\"\n#include <bytes.h>\n#include \"host/io/bytes.h\"\n"
                "#include \"../io/bytes.h\" // \"near\"\n/*\n#include \"no.h\"\n*/\n# include <vector>\n");
    Tree tree = readTree(planted.top(), {{"host/app/start.cpp", "", {"host/io", "."}, false}});
    EXPECT_EQ(targets(tree, "host/app/bar.h"),
              (std::vector<std::string>{"host/app/bytes.h", "host/io/bytes.h", "host/io/bytes.h",
                                        "host/io/bytes.h", ""}));
    tree = readTree(planted.top(), {{"source/spot.cpp", "", {"host/io"}, false}});
    EXPECT_EQ(targets(tree, "host/app/bar.h")[1], "host/io/bytes.h") << "nothing nearer is compiled";
}

}  // namespace
