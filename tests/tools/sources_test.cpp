// The language apart from the kinds of resource: texts, options, includes,
// layout.
#include "toolbox/host/resource_fork.h"
#include "toolbox/resources.h"
#include "tools/compile.h"

TEST_F(Compile, TextsAreMacRomanWithEscapes)
{
    EXPECT_EQ(bytes("string 1 \"\xC3\xA4\xE2\x80\xA6\\\"\\\\\\r\\n\\t\\xF0\""), "\x08\x8A\xC9\"\\\r\n\t\xF0");
}

TEST_F(Compile, DecomposedLettersAreComposed)
{
    EXPECT_EQ(bytes("string 1 \"a\xCC\x88\""), "\x01\x8A");
}

TEST_F(Compile, NeighbouringTextsAreJoinedOverLinesToo)
{
    EXPECT_EQ(bytes("string 1 \"one \" \"two \"\n\n   # between\n   \"three\""), "\x0Done two three");
}

TEST_F(Compile, CommentsCarriageReturnsAndAByteOrderMarkAreSkipped)
{
    EXPECT_EQ(bytes("\xEF\xBB\xBF# first\r\nstring 1 \"#x\" # last\r\n"), "\x02#x");
}

TEST_F(Compile, NumbersAreDecimalNegativeOrHexadecimal)
{
    rescomp::Resources resources = compiled("string -7 \"\" ; string 0x10 \"\" ; string 12 \"\"");
    ASSERT_EQ(resources.all().size(), 3u);
    EXPECT_EQ(resources.all()[0].id, -7);
    EXPECT_EQ(resources.all()[1].id, 16);
    EXPECT_EQ(resources.all()[2].id, 12);
}

TEST_F(Compile, EverythingButAMenuIsPurgeableUnlessFixed)
{
    rescomp::Resources resources = compiled("string 1 \"\"\n"
                                            "menu 1 \"m\" { }\n"
                                            "string 2 fixed locked preload named \"x\" \"\"\n"
                                            "menu 2 purgeable \"m\" { }");
    EXPECT_EQ(resources.all()[0].attributes, resPurgeable);
    EXPECT_FALSE(resources.all()[0].name);
    EXPECT_EQ(resources.all()[1].attributes, 0);
    EXPECT_EQ(resources.all()[2].attributes, resLocked | resPreload);
    EXPECT_EQ(resources.all()[2].name, "x");
    EXPECT_EQ(resources.all()[3].attributes, resPurgeable);
}

TEST_F(Compile, BracesMayStandOnLinesOfTheirOwn)
{
    EXPECT_EQ(asHex(bytes("strings 1\n\n{\n\"a\"\n}\n")), "00010161");
}

TEST_F(Compile, IncludedFilesAreLookedForBesideTheirSource)
{
    std::filesystem::create_directory(folder / "sub");
    writeFile(folder / "sub" / "part.res", "text 1 file \"body.ps\"");
    writeFile(folder / "sub" / "body.ps", "%!");
    EXPECT_EQ(bytes("include \"sub/part.res\""), "%!");
}

TEST_F(Compile, TheForkHoldsTheResourcesInOrder)
{
    std::string fork = compiled("string 2 \"b\"\nmenu 1 \"m\" { }\nstring 1 named \"n\" \"a\"").fork({});
    std::vector<toolbox::resources::ForkEntry> entries;
    ASSERT_EQ(toolbox::resources::parseFork(fork, entries), noErr);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].id, 2);
    EXPECT_EQ(entries[1].name, "n");
    EXPECT_EQ(entries[2].type, ResType{'MENU'});
}

TEST_F(Compile, NothingMakesAnEmptyFork)
{
    EXPECT_EQ(compiled("# nothing\n").fork({}), "");
}
