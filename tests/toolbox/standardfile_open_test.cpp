#include "toolbox/standardfile_fixture.h"
#include "toolbox/host/opened_file.h"

#include "toolbox/files.h"
#include "toolbox/host/listed_files.h"

namespace {

class OpenDialog : public StandardFileTest {
protected:
    void SetUp() override
    {
        StandardFileTest::SetUp();
        writeFile(here() / "beta", "plain text\n");
        writeFile(here() / "alpha", "more text\n");
        writeFile(here() / "gamma", std::string("\0\1\2\3\xFF", 5));
        fs::create_directory(here() / "sub");
        writeFile(here() / "sub/inner", "text");
    }
};

TEST_F(OpenDialog, ListsFoldersThenFilesOfTheTypesAskedFor)
{
    user.then([] { EXPECT_EQ(names(), (std::vector<std::string>{"sub/", "alpha", "beta"})); });
    user.key("escape");
    EXPECT_FALSE(open().good);
    expectNothingLeft();
}

TEST_F(OpenDialog, AllFilesAreListedForACountOfMinusOne)
{
    user.then([] { EXPECT_EQ(names(), (std::vector<std::string>{"sub/", "alpha", "beta", "gamma"})); });
    user.key("escape");
    SFReply reply;
    SFPGetFile({100, 100}, P(""), nullptr, -1, nullptr, nullptr, &reply, 16400, nullptr);
}

TEST_F(OpenDialog, FinderTypesCount)
{
    int16_t wd = *toolbox::folders::workingDirectory(here());
    FInfo info{};
    ASSERT_EQ(GetFInfo(P("beta"), wd, &info), noErr);
    info.fdType = 'PICT';
    ASSERT_EQ(SetFInfo(P("beta"), wd, &info), noErr);
    user.then([] { EXPECT_EQ(names(), (std::vector<std::string>{"sub/", "beta"})); });
    user.answerOpen("beta");
    SFReply reply = open({'PICT'});
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(reply.fType, OSType('PICT'));
}

Boolean leaveOutAlpha(void *name)
{
    return plain(static_cast<unsigned char *>(name)) == "alpha";
}

TEST_F(OpenDialog, FileFilterLeavesFilesOut)
{
    user.then([] { EXPECT_EQ(names(), (std::vector<std::string>{"sub/", "beta"})); });
    user.key("escape");
    open({'TEXT'}, 16400, &leaveOutAlpha);
}

TEST_F(OpenDialog, ReturnsTheFileChosen)
{
    user.answerOpen(here() / "sub" / "inner");
    SFReply reply = open();
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(reply.fType, OSType('TEXT'));
    EXPECT_EQ(chosen(reply), here() / "sub/inner");
    EXPECT_TRUE(traced("dialog 16400 shown at 120,100 348x221"));
    expectNothingLeft();
}

TEST_F(OpenDialog, TheFileOpenedLastIsKnownByItsNameAndPath)
{
    EXPECT_TRUE(toolbox::lastOpenedFile().path.empty());
    user.answerOpen(here() / "sub" / "inner");
    open();
    EXPECT_EQ(toolbox::lastOpenedFile().path, here() / "sub/inner");
    EXPECT_EQ(toolbox::lastOpenedFile().name, "inner");
    user.cancelFile();
    open();
    EXPECT_EQ(toolbox::lastOpenedFile().name, "inner") << "after a dialog that was cancelled";
    restart();
    EXPECT_TRUE(toolbox::lastOpenedFile().path.empty());
}

TEST_F(OpenDialog, NothingIsSelectedAtFirstAndOpenIsDim)
{
    user.then([] {
        EXPECT_EQ(selectedName(), "");
        EXPECT_TRUE(dimmed(1));
    });
    user.key("return");
    user.then([this] { EXPECT_EQ(machine.beeps(), 1); });
    user.key("escape");
    EXPECT_FALSE(open().good);
}

TEST_F(OpenDialog, DoubleClickOpens)
{
    clickRow("sub", 2);
    clickRow("inner", 2);
    SFReply reply = open();
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(chosen(reply), here() / "sub/inner");
}

TEST_F(OpenDialog, TwoSlowClicksOnlySelect)
{
    clickRow("beta");
    user.wait(100);
    clickRow("beta");
    user.then([] { EXPECT_EQ(selectedName(), "beta"); });
    user.key("escape");
    EXPECT_FALSE(open().good);
}

TEST_F(OpenDialog, SelectionFollowsTheMouse)
{
    clickRow("alpha");
    user.then([this] {
        toolbox::Input input{toolbox::Input::Kind::mouseDown};
        input.where = middleOfRow("sub");
        machine.push(input);
        input.kind = toolbox::Input::Kind::mouseMoved;
        input.where = middleOfRow("beta");
        machine.push(input);
        input.kind = toolbox::Input::Kind::mouseUp;
        machine.push(input);
    });
    user.wait(5);
    user.then([] { EXPECT_EQ(selectedName(), "beta"); });
    user.press(1);
    EXPECT_EQ(plain(open().fName), "beta");
}

TEST_F(OpenDialog, ArrowsMoveAndReturnOpens)
{
    user.key("down");
    user.then([] { EXPECT_EQ(selectedName(), "sub"); });
    user.key("down");
    user.key("down");
    user.key("down");
    user.then([] { EXPECT_EQ(selectedName(), "beta"); });
    user.key("up");
    user.key("return");
    EXPECT_EQ(plain(open().fName), "alpha");
    EXPECT_TRUE(traced("flash \"Remove\""));
}

TEST_F(OpenDialog, ReturnOnAFolderOpensTheFolder)
{
    user.key("down");
    user.key("return");
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, here() / "sub"); });
    user.key("escape");
    EXPECT_FALSE(open().good);
}

TEST_F(OpenDialog, TypingSelectsWhatBeginsWithIt)
{
    writeFile(here() / "bravo", "x");
    user.type("BR");
    user.then([] { EXPECT_EQ(selectedName(), "bravo"); });
    user.wait(120);
    user.type("al");
    user.then([] { EXPECT_EQ(selectedName(), "alpha"); });
    user.wait(120);
    user.type("qq");
    user.then([] { EXPECT_EQ(selectedName(), "alpha"); });
    user.key("return");
    EXPECT_EQ(plain(open().fName), "alpha");
}

TEST_F(OpenDialog, LongListsScrollByArrowsPageAndThumb)
{
    for (int i = 10; i < 60; ++i)
        writeFile(here() / ("file " + std::to_string(i)), "x");
    auto firstShown = [] {
        auto state = toolbox::standardfile::state();
        for (std::size_t i = 0; i < state->rowRects.size(); ++i)
            if (!EmptyRect(&state->rowRects[i]))
                return static_cast<int>(i);
        return -1;
    };
    auto clickIn = [this](int h, int v) { user.clickAt({static_cast<int16_t>(v), static_cast<int16_t>(h)}); };
    const int h = 120 + 234, top = 100 + 48, bottom = 100 + 210;
    clickIn(h, bottom - 8);
    user.then([=] { EXPECT_EQ(firstShown(), 1); });
    clickIn(h, bottom - 20);
    user.then([=] { EXPECT_EQ(firstShown(), 10); });
    clickIn(h, top + 8);
    user.then([=] { EXPECT_EQ(firstShown(), 9); });
    clickIn(h, top + 18);
    user.then([=] { EXPECT_EQ(firstShown(), 0); });
    user.then([=, this] {
        toolbox::Input input{toolbox::Input::Kind::mouseDown};
        input.where = {static_cast<int16_t>(top + 20), static_cast<int16_t>(h)};
        machine.push(input);
        input.where.v = static_cast<int16_t>(bottom);
        input.kind = toolbox::Input::Kind::mouseUp;
        machine.push(input);
    });
    user.wait(5);
    user.then([=] { EXPECT_EQ(firstShown(), 53 - 10); });
    user.answerOpen("alpha");
    EXPECT_EQ(plain(open().fName), "alpha");
}

TEST_F(OpenDialog, HeldScrollArrowRepeats)
{
    for (int i = 10; i < 60; ++i)
        writeFile(here() / ("file " + std::to_string(i)), "x");
    user.then([this] {
        toolbox::Input input{toolbox::Input::Kind::mouseDown};
        input.where = {100 + 202, 120 + 234};
        machine.push(input);
    });
    user.wait(60);
    user.then([this] {
        toolbox::Input input{toolbox::Input::Kind::mouseUp};
        input.where = {100 + 202, 120 + 234};
        machine.push(input);
    });
    user.wait(2);
    user.then([] { EXPECT_TRUE(EmptyRect(&toolbox::standardfile::state()->rowRects[3])); });
    user.key("escape");
    open();
}

TEST_F(OpenDialog, NamesTooLongForTheFileManagerCanBeOpened)
{
    const std::string longName(150, 'l');
    writeFile(here() / longName, "text");
    user.answerOpen(longName);
    SFReply reply = open();
    EXPECT_TRUE(reply.good);
    EXPECT_LE(reply.fName[0], 63);
    EXPECT_EQ(chosen(reply), here() / longName);
}

TEST_F(OpenDialog, ShortDialogShowsFourRows)
{
    for (int i = 0; i < 9; ++i)
        writeFile(here() / ("file " + std::to_string(i)), "x");
    user.then([] {
        auto state = toolbox::standardfile::state();
        EXPECT_FALSE(EmptyRect(&state->rowRects[3]));
        EXPECT_TRUE(EmptyRect(&state->rowRects[4]));
    });
    user.answerOpen("file 8");
    EXPECT_EQ(plain(open({'TEXT'}, 16401).fName), "file 8");
    EXPECT_TRUE(traced("dialog 16401 shown at 120,100 348x136"));
}

TEST_F(OpenDialog, LookingIsNotAFileCall)
{
    user.key("escape");
    open();
    EXPECT_FALSE(traced("file "));
    EXPECT_EQ(toolbox::faults::count(toolbox::FileCall::getFInfo), 0);
}

TEST_F(OpenDialog, FullMemoryAnywhereLeavesADialogThatCanBeCancelledOrNone)
{
    bool met = true;
    for (int nth = 1; met && nth < 500; ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        user.clickAt({100 + 36, 120 + 100});   // the folder popup
        user.key("escape");                    // its menu, or the dialog where there was no room for one
        user.key("down");
        user.key("escape");
        toolbox::faults::failAllocation(nth);
        EXPECT_FALSE(open().good);
        met = toolbox::faults::met();
        toolbox::faults::clear();
        user.forgetRest();
        EXPECT_EQ(FrontWindow(), nullptr);
    }
    EXPECT_FALSE(met);
    expectNothingLeft();
}

TEST_F(OpenDialog, HostMayLeaveFilesOut)
{
    toolbox::setListedFiles([](const fs::path &file) { return file.filename() != "beta"; });
    user.then([] {
        EXPECT_EQ(names(), (std::vector<std::string>{"sub/", "alpha"}));
        toolbox::setListedFiles({});
        toolbox::listFilesAgain();
        EXPECT_EQ(names(), (std::vector<std::string>{"sub/", "alpha", "beta"}));
    });
    user.cancelFile();
    EXPECT_FALSE(open().good);
    toolbox::listFilesAgain();  // nothing is open
}

}  // namespace
