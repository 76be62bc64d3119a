// Dot shapes by name and from files.
#include "screens/shapes.h"

#include <algorithm>

#include "io/refusal.h"
#include "support/documents.h"
#include "support/riders_pieces.h"
#include "support/toolbox_test.h"

namespace {

using riders::screens::Shape;

std::string nameOf(const std::string &asked)
{
    const std::optional<Shape> shape = riders::screens::shapeNamed(asked);
    return shape ? shape->name + " in " + shape->file.filename().string() : "none";
}

std::string refusal(const std::filesystem::path &file)
{
    try {
        riders::screens::shapeNamed(file.string());
    } catch (const riders::io::Refusal &refused) {
        return refused.message;
    }
    return "not refused";
}

// Without comments, and with single blanks.
std::string bare(const std::string &postScript)
{
    std::string code;
    for (std::size_t at = 0; at < postScript.size(); ++at) {
        if (postScript[at] == '%')
            at = std::min(postScript.find('\n', at), postScript.size() - 1);
        const bool blank = std::isspace(static_cast<unsigned char>(postScript[at]));
        if (!blank)
            code += postScript[at];
        else if (!code.empty() && code.back() != ' ')
            code += ' ';
    }
    return code.substr(0, code.find_last_not_of(' ') + 1);
}

TEST(Shapes, TwentyOneAreInstalled)
{
    std::vector<std::string> names;
    for (const Shape &shape : riders::screens::installedShapes()) {
        names.push_back(shape.name);
        EXPECT_NE(riders::screens::aboutShape(shape), "") << shape.name;
        EXPECT_EQ(contentsOf(shape.file), "%!KT1_Spot\r" + shape.body) << "the line end that the plug-in wants";
    }
    EXPECT_EQ(names, (std::vector<std::string>{"CosineDot",
                                               "Cross",
                                               "Diamond",
                                               "Double",
                                               "DoubleDot",
                                               "Ellipse",
                                               "EllipseA",
                                               "EllipseB",
                                               "EllipseC",
                                               "InvertedDouble",
                                               "InvertedDoubleDot",
                                               "InvertedEllipseA",
                                               "InvertedEllipseC",
                                               "InvertedSimpleDot",
                                               "Line",
                                               "LineX",
                                               "LineY",
                                               "Rhomboid",
                                               "Round",
                                               "SimpleDot",
                                               "Square"}));
}

TEST(Shapes, AreFoundInUpperAndLowerCase)
{
    EXPECT_EQ(nameOf("CosineDot"), "CosineDot in CosineDot");
    EXPECT_EQ(nameOf("cosinedot"), "CosineDot in CosineDot");
    EXPECT_EQ(nameOf("ELLIPSE"), "Ellipse in Ellipse");
    EXPECT_EQ(nameOf("octagonal"), "none");
    EXPECT_EQ(nameOf(""), "none");
    EXPECT_EQ(nameOf("Cosine"), "none");
}

TEST(Shapes, NamesOfTheMenuMeanItsDots)
{
    EXPECT_EQ(nameOf("round"), "Round in SimpleDot");
    EXPECT_EQ(nameOf("euclidean"), "Euclidean in Round");
    // The plug-in's own pieces; the test of each formula compares values.
    for (const auto &[name, piece] : std::vector<std::pair<std::string, int>>{
             {"round", 16128}, {"square", 16131}, {"diamond", 16132}, {"cross", 16133}})
        EXPECT_EQ(bare(riders::screens::shapeNamed(name)->body), bare(pieceBytes(piece))) << name;
}

TEST(Shapes, EachInstalledOneHasAName)
{
    for (const Shape &shape : riders::screens::installedShapes())
        for (const std::string &name : riders::screens::namesOf(shape))
            EXPECT_EQ(nameOf(name), name + " in " + shape.name);
    EXPECT_EQ(riders::screens::namesOf({"SimpleDot", {}, {}}), (std::vector<std::string>{"SimpleDot", "Round"}));
    EXPECT_EQ(riders::screens::namesOf({"Round", {}, {}}), (std::vector<std::string>{"Euclidean"}));
    EXPECT_EQ(riders::screens::namesOf({"Line", {}, {}}), (std::vector<std::string>{"Line"}));
}

TEST(Shapes, AFileIsTakenWhereNoNameFits)
{
    TemporaryFolder folder;
    writeFile(folder / "mine", "% note\r%!KT1_Spot\rpop % by rows\r");
    const std::optional<Shape> shape = riders::screens::shapeNamed((folder / "mine").string());
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->name, "mine");
    EXPECT_EQ(shape->body, "%!KT1_Spot\rpop % by rows\r") << "all after the first return, as in the plug-in";
    EXPECT_EQ(shape->file, folder / "mine");
    EXPECT_EQ(nameOf((folder / "none").string()), "none");
}

TEST(Shapes, ABadFileIsRefusedWithWhatIsWrong)
{
    TemporaryFolder folder;
    const std::string file = (folder / "mine").string(), magic = "%!KT1_Spot";
    const auto with = [&](const std::string &bytes) {
        writeFile(file, bytes);
        const std::string words = refusal(file), start = file + " is no spot function file: ";
        return words.starts_with(start) ? words.substr(start.size()) : words;
    };
    EXPECT_EQ(with(""), "it is empty");
    EXPECT_EQ(with("pop\r"), "its first line does not hold %!KT1_Spot");
    EXPECT_EQ(with(std::string(87, ' ') + magic + "\rpop"), "its first line does not hold %!KT1_Spot");
    EXPECT_EQ(with(magic + "\npop"), "its first line ends in a line feed; it must end in a carriage return: riders shapes FILE --fix makes a "
              "copy in which it does");
    EXPECT_EQ(with(magic + " pop"), "no carriage return ends its first line within 96 bytes");
    EXPECT_EQ(with(magic + std::string(86, ' ') + "\rpop"),
              "no carriage return ends its first line within 96 bytes");
    EXPECT_EQ(with(magic + "\r \n"), "nothing follows its first line");
    EXPECT_EQ(with(magic + "\rpop %end-of-dot-shape% quit"),
              "it holds %end-of-dot-shape%, at which a riders file would take it to end");
    EXPECT_EQ(with(magic + "\rpop %" + std::string(64'895, '-')), "not refused") << "the longest";
    EXPECT_EQ(with(magic + "\rpop %" + std::string(64'896, '-')), "it is longer than 64900 bytes");
    EXPECT_EQ(with(magic + "\rpop %" + std::string(64'896 + (1 << 20), '-')), "it is longer than 64900 bytes");
    EXPECT_EQ(refusal(folder.path()), folder.path().string() + ": is a folder");
}

TEST(Shapes, WhatAShapeIsLikeIsItsFirstComment)
{
    const auto about = [](const std::string &body) { return riders::screens::aboutShape({{}, body, {}}); };
    EXPECT_EQ(about("% by rows\npop"), "by rows");
    EXPECT_EQ(about(" \n%% by rows\rpop"), "by rows");
    EXPECT_EQ(about("%\npop % by rows"), "");
    EXPECT_EQ(about("%"), "");
    EXPECT_EQ(about("pop % by rows"), "");
    EXPECT_EQ(about(""), "");
}

}  // namespace
