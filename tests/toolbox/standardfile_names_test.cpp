// Names and folders as people have them today, in the file dialogs.
#include <algorithm>

#include "toolbox/standardfile_fixture.h"

#include <stdlib.h>

#include "toolbox/files.h"

namespace {

class NamesInDialogs : public StandardFileTest {
protected:
    void put(const std::string &name, const std::string &bytes = "text") { writeFile(here() / name, bytes); }

    // What the list shows of the Linux name.
    static std::string shownAs(const std::string &linuxName)
    {
        auto state = toolbox::standardfile::state();
        for (const auto &row : state->rows)
            if (row.linuxName == linuxName)
                return row.name;
        return {};
    }

    static std::string bytesOf(const SFReply &reply)
    {
        int16_t refNum;
        if (FSOpen(reply.fName, reply.vRefNum, &refNum) != noErr)
            return "not opened";
        char bytes[64];
        int32_t count = sizeof bytes;
        FSRead(refNum, &count, bytes);
        FSClose(refNum);
        return std::string(bytes, static_cast<std::size_t>(count));
    }
};

// The folder that HOME names for the duration of a test.
class Home {
public:
    explicit Home(const fs::path &folder)
    {
        const char *before = getenv("HOME");
        before_ = before ? before : "";
        setenv("HOME", folder.c_str(), 1);
    }
    ~Home() { setenv("HOME", before_.c_str(), 1); }
    Home(const Home &) = delete;
    Home &operator=(const Home &) = delete;

private:
    std::string before_;
};

}  // namespace

TEST_F(NamesInDialogs, AreSortedAsPeopleSort)
{
    for (const char *name : {"film 10", "Film 9", "apple", "Zebra", "Étude", "film 2"})
        put(name);
    for (const char *name : {"plates 10", "Plates 9", "aside"})
        fs::create_directory(here() / name);
    user.then([] {
        EXPECT_EQ(names(), (std::vector<std::string>{"aside/", "Plates 9/", "plates 10/", "apple", "\x83tude",
                                                     "film 2", "Film 9", "film 10", "Zebra"}));
    });
    user.key("escape");
    open();
}

TEST_F(NamesInDialogs, HiddenFilesAndFoldersAreNotListed)
{
    put(".profile");
    put("seen");
    fs::create_directory(here() / ".git");
    user.then([] { EXPECT_EQ(names(), std::vector<std::string>{"seen"}); });
    user.key("escape");
    open();
    user.then([] { EXPECT_EQ(names(), std::vector<std::string>{"seen (dim)"}); });
    user.key("escape");
    save();
}

TEST_F(NamesInDialogs, OutsideMacOSRomanAreSeenChosenAndOpened)
{
    put("日本語.txt", "one");
    put("中文.txt", "two");
    put("Москва", "three");
    user.then([] {
        EXPECT_FALSE(shownAs("日本語.txt").empty());
        EXPECT_NE(shownAs("日本語.txt"), shownAs("中文.txt"));
        EXPECT_FALSE(shownAs("Москва").empty());
    });
    user.answerOpen("中文.txt");
    SFReply reply = open();
    ASSERT_TRUE(reply.good);
    EXPECT_EQ(chosen(reply), here() / "中文.txt");
    EXPECT_EQ(bytesOf(reply), "two");
    user.answerOpen("Москва");
    EXPECT_EQ(bytesOf(open()), "three");
}

// In the font's letters if it has them, otherwise as the alias.
TEST_F(NamesInDialogs, OutsideMacOSRomanAreDrawnExactlyWhereTheFontCan)
{
    put("Плёнка № 3.ps", "one");
    put("日本語.txt", "two");
    put(std::string("Ω") + "мегаплёночный растр для трафаретной печати.ps", "three");
    std::vector<std::string> drawn;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawn));
    user.cancelFile();
    open();
    auto isDrawn = [&](const std::string &text) {
        return std::any_of(drawn.begin(), drawn.end(),
                           [&](const std::string &line) { return line.find('"' + text) != std::string::npos; });
    };
    EXPECT_TRUE(isDrawn("Плёнка № 3.ps\""));
    EXPECT_TRUE(isDrawn("???#1.txt\""));
    EXPECT_TRUE(isDrawn("Ωмегаплёноч"));
    EXPECT_FALSE(isDrawn("Ωмегаплёночный растр для трафаретной печати.ps")) << "longer than the list is wide";
    EXPECT_TRUE(std::any_of(drawn.begin(), drawn.end(), [](const std::string &line) {
        return line.find("Ωмега") != std::string::npos && line.find("…\"") != std::string::npos;
    }));
}

TEST_F(NamesInDialogs, FoldersOutsideMacOSRomanAreEnteredAndSavedInto)
{
    fs::create_directory(here() / "印刷");
    user.answerSave(here() / "印刷" / "film");
    SFReply reply = save();
    ASSERT_TRUE(reply.good);
    EXPECT_EQ(chosen(reply), here() / "印刷" / "film");
}

TEST_F(NamesInDialogs, ThatAreNotUtf8CanBeOpened)
{
    const std::string odd = "old\xFF\xFEname";
    put(odd, "bytes");
    user.answerOpen(odd);
    SFReply reply = open();
    ASSERT_TRUE(reply.good);
    EXPECT_EQ(bytesOf(reply), "bytes");
}

TEST_F(NamesInDialogs, WithAColonAreOpenedAndShownWithASlash)
{
    put("10:30", "colon");
    user.then([] { EXPECT_EQ(shownAs("10:30"), "10/30"); });
    user.answerOpen("10:30");
    EXPECT_EQ(bytesOf(open()), "colon");
}

TEST_F(NamesInDialogs, FirstDialogOpensAtHome)
{
    fs::create_directory(folder / "home");
    Home home(folder / "home");
    configuration.startFolder.clear();
    restart();
    openDialogs();
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, fs::canonical(folder / "home")); });
    user.key("escape");
    open();
}

TEST_F(NamesInDialogs, OpenDialogGoesUpByThePopupAndRemembersTheFolder)
{
    fs::create_directory(here() / "deep");
    writeFile(here() / "deep" / "inner", "text");
    put("outer");
    user.answerOpen(here() / "deep" / "inner");
    EXPECT_TRUE(open().good);
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, fs::canonical(here() / "deep")); });
    user.choose(4, 2);
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, fs::canonical(here())); });
    user.answerOpen("outer");
    EXPECT_TRUE(open().good);
}

TEST_F(NamesInDialogs, ManyFilesAreListedAndTheLastIsReached)
{
    for (int i = 0; i < 2000; ++i)
        put("film " + std::to_string(i));
    user.type("film 1999");
    user.then([] { EXPECT_EQ(selectedName(), "film 1999"); });
    user.key("return");
    SFReply reply = open();
    EXPECT_EQ(plain(reply.fName), "film 1999");
}

TEST_F(NamesInDialogs, FolderThatVanishesIsReportedHereToo)
{
    fs::create_directory(here() / "sub");
    user.then([this] { fs::remove(here() / "sub"); });
    user.type("sub");
    user.key("return");
    user.in(16402);
    user.press(1);
    user.in(16400);
    user.key("escape");
    EXPECT_FALSE(open().good);
}
