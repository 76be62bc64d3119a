// What is reported about wrong sources, and where.
#include "tools/compile.h"

TEST_F(Compile, EachMistakeIsReportedWithItsLine)
{
    const std::pair<const char *, const char *> mistakes[] = {
        {"\nstrng 1 \"x\"", "2: expected one of include, string, "},
        {"string \"x\"", "1: expected a resource number"},
        {"string 40000 \"x\"", "1: a resource number must be from -32768 to 32767"},
        {"string 1\n", "1: expected a text in quotes"},
        {"string 1 \"x\" 5", "1: did not expect anything more here"},
        {"# fine\nstring 1 \"x", "2: a text that does not end on its line"},
        {"string 1 \"\\q\"", "1: after a backslash only"},
        {"string 1 \"\\xG0\"", "1: \\x wants two hexadecimal digits"},
        {"string 1 \"\xE4\xB8\xAD\"", "1: a character that has no place in Mac OS Roman"},
        {"string 1 \"\xFF\"", "1: a character that has no place in Mac OS Roman"},
        {"string 1 @", "1: a character that means nothing outside quotes"},
        {"string 1 \"a\"\nstring 1 \"b\"", "2: 'STR ' 1 is there already, at "},
        {"strings 1 {\n\"a\"\n\"b\"", "1: this { has no }"},
        {"strings 1\n\"a\"\n", "1: expected {"},
        {"strings 1 { 5 }", "1: expected a text in quotes"},
        {"menu 1 { }", "1: expected the menu's title in quotes"},
        {"menu 1 \"m\" {\n\"\"\n}", "2: an item without text would end the menu"},
        {"menu 1 \"m\" {\n\"a\" key \"ab\"\n}", "2: a key is one character"},
        {"menu 1 \"m\" {\n\"a\" mark 256\n}", "2: a mark must be from 0 to 255"},
        {"menu 1 \"m\" {\n\"a\" grey\n}", "2: did not expect anything more here"},
        {"dialog 1 {\nitems 1\n}", "3: the size is missing"},
        {"dialog 1 { size 10 }", "1: expected a height"},
        {"dialog 1 {\nsize 10 10\nsize 10 10\n}", "3: size stands here twice"},
        {"dialog 1 {\ncolour 3\n}", "2: expected one of size, at, kind"},
        {"dialog 1 {\nkind round\n}", "2: expected dBox, plain"},
        {"dialog 1 { at 32000 0 ; size 1000 10 }", "1: the right or bottom edge is beyond 32767"},
        {"alert 1 { size 1 1 ; title \"x\" }", "1: expected one of size, at, items, stages, not title"},
        {"items 1 {\nslider 0 0 1 1\n}", "2: expected button, checkbox"},
        {"items 1 {\nbutton 0 0 1\n}", "2: expected a height"},
        {"items 1 {\nbutton 0 0 1 1\n}", "2: expected the item's text in quotes"},
        {"items 1 {\nicon 0 0 1 1 \"x\"\n}", "2: expected a resource number"},
        {"version 1 { number 1 2 3 }", "1: expected a part of the number"},
        {"version 1 { number 1 2 3 256 }", "1: a part of the number must be from 0 to 255"},
        {"version 1 { name \"x\" }", "1: expected number, region, short or long"},
        {"colors 1 { }", "1: expected a type such as 'TEXT'"},
        {"colors 'TEXT' 1 { }", "1: a colour table is 'dctb', 'cctb', 'wctb' or 'actb'"},
        {"colors 'dctb' 1 {\npart 0 0 0\n}", "2: expected blue"},
        {"hex 'ABC' 1 { }", "1: a type is four characters"},
        {"hex 'ABCD' 1 {\n00\n0\n}", "3: expected pairs of hexadecimal digits, not 0"},
        {"hex 'ABCD' 1 { xy }", "1: expected pairs of hexadecimal digits, not xy"},
        {"text 1 \"x\"", "1: expected file \"name\""},
        {"\ntext 1 file \"missing.ps\"", "2: cannot read \""},
        {"text 1 files {\n\"missing.ps\" }", "2: cannot read \""},
        {"text 1 files { 7 }", "1: expected a file's name in quotes"},
        {"\n\ninclude \"missing.res\"", "3: cannot read \""},
        {"data 'ABCD' 1 file \".\"", "1: cannot read \""},
        {"include \"main.res\"", "1: \""},
        {"picture 1 file \"main.res\"", "1: the picture is no PNG file"},
        {"sound 1 file \"main.res\"", "1: the sound is no WAV file"},
        {"string 1 named \"x", "1: a text that does not end on its line"},
    };
    for (const auto &[source, said] : mistakes) {
        std::string message = complaint(source);
        EXPECT_TRUE(message.starts_with(said)) << source << "\n  said: " << message;
    }
}

TEST_F(Compile, TextsAreTwoHundredFiftyFiveBytesAtMost)
{
    std::string most(255, 'x');
    EXPECT_EQ(complaint("string 1 \"" + most + "\""), "compiled");
    EXPECT_EQ(complaint("string 1 \"" + most + "\"\n\"x\""), "1: a text of 256 bytes; 255 is the most");
    EXPECT_EQ(complaint("strings 1 {\n\"" + most + "x\"\n}"), "2: a text of 256 bytes; 255 is the most");
    EXPECT_EQ(complaint("items 1 {\ntext 0 0 1 1 \"" + most + "x\"\n}"),
              "2: a text of 256 bytes; 255 is the most");
    // Letters that take two bytes in UTF-8 take one here.
    std::string umlauts;
    for (int i = 0; i < 255; ++i)
        umlauts += "\xC3\xBC";
    EXPECT_EQ(complaint("string 1 \"" + umlauts + "\""), "compiled");
}

TEST_F(Compile, AnErrorInAnIncludedSourceNamesThatSource)
{
    std::filesystem::create_directory(folder / "sub");
    writeFile(folder / "sub" / "part.res", "\nstring x");
    EXPECT_EQ(complaint("include \"sub/part.res\""),
              (folder / "sub" / "part.res").string() + ":2: expected a resource number");
}

TEST_F(Compile, IncludingInACircleIsRefused)
{
    writeFile(folder / "other.res", "include \"main.res\"");
    EXPECT_NE(complaint("include \"other.res\"").find("other.res:1: "), std::string::npos);
    EXPECT_NE(complaint("include \"other.res\"").find("includes itself"), std::string::npos);
}

TEST_F(Compile, TooMuchForOneForkIsRefused)
{
    std::string source;
    for (int i = 0; i < 2728; ++i)
        source += "string " + std::to_string(i) + " \"\"\n";
    rescomp::Resources resources = compiled(source);
    EXPECT_THROW(resources.fork({"main.res", 1}), rescomp::SourceError);
}
