// What CMake says about the build, and where includes are looked for.
#include "architecture/planted_tree.h"

#include <gtest/gtest.h>

namespace {

using namespace architecture;

TEST(CompileCommands, AreRead)
{
    PlantedTree planted;
    std::string top = planted.top();
    planted.put("build/test/compile_commands.json",
                "[\n{\n  \"directory\": \"" + top +
                    "/build/test\",\n  \"command\": \"/usr/bin/c++ -DNAME=\\\\\\\"x\\\\\\\" -I" + top +
                    "/host -iquote " + top + "/source/.. -I/usr/include/x -flto -o host/x.o -c " + top +
                    "/host/x.cpp\",\n  \"file\": \"" + top + "/host/x.cpp\"\n},\n{\n  \"directory\": \"" + top +
                    "/build/test\",\n  \"command\": \"/usr/bin/c++ -c y.cpp\",\n  \"file\": \"" + top +
                    "/build/test/y.cpp\"\n}\n]\n");
    std::vector<Compiled> read = readCompileCommands(top + "/build/test/compile_commands.json", top);
    ASSERT_EQ(read.size(), 1u) << "what the build makes itself is left out";
    EXPECT_EQ(read[0].source, "host/x.cpp");
    EXPECT_EQ(read[0].object, top + "/build/test/host/x.o");
    EXPECT_EQ(read[0].lookedIn, (std::vector<std::string>{"host", "."}));
    EXPECT_TRUE(read[0].keepsTypes);
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
