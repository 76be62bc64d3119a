#include "toolbox/standardfile_fixture.h"

#include "toolbox/host/save_place.h"
#include "toolbox/host/standardfile_folder.h"

namespace {

using SaveDialog = StandardFileTest;

TEST_F(SaveDialog, ReturnsNameAndFolder)
{
    user.answerSave("my riders");
    SFReply reply = save();
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(plain(reply.fName), "my riders");
    EXPECT_EQ(chosen(reply), here() / "my riders");
    EXPECT_FALSE(fs::exists(here() / "my riders"));
    EXPECT_TRUE(traced("dialog 16399 shown at 120,100 328x148"));
    EXPECT_TRUE(traced("dialog 16399 closed"));
    expectNothingLeft();
}

TEST_F(SaveDialog, StartsWithPromptAndWholeNameSelected)
{
    user.then([] {
        auto *dialog = reinterpret_cast<DialogPeek>(FrontWindow());
        EXPECT_EQ((**dialog->textH).selStart, 0);
        EXPECT_EQ((**dialog->textH).selEnd, 8);
        int16_t type;
        Handle item;
        Rect box;
        Str255 text;
        GetDItem(FrontWindow(), 3, &type, &item, &box);
        GetIText(item, text);
        EXPECT_EQ(plain(text), "Save it as:");
    });
    user.key("return");
    SFReply reply = save("untitled");
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(plain(reply.fName), "untitled");
}

TEST_F(SaveDialog, HostMayProposeAnotherNameAndFolder)
{
    fs::create_directory(here() / "jobs");
    toolbox::proposeToSave(here() / "jobs/poster.riders");
    user.then([] {
        auto *dialog = reinterpret_cast<DialogPeek>(FrontWindow());
        EXPECT_EQ((**dialog->textH).selStart, 0);
        EXPECT_EQ((**dialog->textH).selEnd, 6) << "all but the ending";
    });
    user.key("return");
    EXPECT_EQ(chosen(save()), here() / "jobs/poster.riders");
    toolbox::proposeToSave("plain");
    user.key("return");
    EXPECT_EQ(chosen(save()), here() / "jobs/plain") << "where the last file was saved";
    toolbox::proposeToSave({});
    user.key("return");
    EXPECT_EQ(plain(save().fName), "untitled");
}

// The message that ends a session in which memory runs out at the step that
// plans it.
std::string endOf(const std::function<void()> &session)
{
    try {
        session();
    } catch (const toolbox::ScriptError &error) {
        toolbox::faults::clear();
        return error.message;
    }
    toolbox::faults::clear();
    return "no error";
}

TEST_F(SaveDialog, ANameThatCannotBeTypedEndsTheScriptWithAMessage)
{
    user.key("backspace");
    user.then([] { toolbox::faults::failAllocation(1, true); });
    user.answerSave("my riders");
    EXPECT_EQ(endOf([this] { save(); }), "\"my riders\" cannot be typed: the field shows \"\"");
}

TEST_F(SaveDialog, ANameWithoutOneOfItsLettersIsNotSaved)
{
    user.key("backspace");
    user.then([] { toolbox::faults::failAllocation(3); });
    user.answerSave("my riders");
    EXPECT_EQ(endOf([this] { save(); }), "\"my riders\" cannot be typed: the field shows \"myriders\"");
}

TEST_F(SaveDialog, AQuestionThatFindsNoMemoryEndsTheScriptWithAMessage)
{
    writeFile(here() / "u", "old");
    user.then([] { toolbox::faults::failAllocation(1, true); });
    user.answerSave("u");   // one letter instead of eight fits
    const std::string message = endOf([this] { save("untitled"); });
    EXPECT_NE(message.find("dialog 16399"), std::string::npos) << message;
    EXPECT_EQ(contentsOf(here() / "u"), "old");
}

TEST_F(SaveDialog, CommandAndArrowsGoToTheEndsOfTheName)
{
    user.key("left", cmdKey);
    user.type("my ");
    user.key("end");
    user.type("!");
    user.key("return");
    EXPECT_EQ(plain(save("riders").fName), "my riders!");
}

TEST_F(SaveDialog, CancelsByButtonEscapeAndCommandPeriod)
{
    user.cancelFile();
    EXPECT_FALSE(save().good);
    EXPECT_TRUE(traced("press \"Cancel\""));
    user.key("escape");
    EXPECT_FALSE(save().good);
    user.key(".", cmdKey);
    EXPECT_FALSE(save().good);
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 2);
    expectNothingLeft();
}

TEST_F(SaveDialog, ReturnAndEnterFlashSaveForEightTicks)
{
    for (const char *key : {"return", "enter"}) {
        trace.clear();
        uint32_t start = 0;
        user.then([&] { start = TickCount(); });
        user.key(key);
        EXPECT_TRUE(save().good);
        EXPECT_TRUE(traced("flash \"Save\""));
        EXPECT_GE(TickCount() - start, 8u);
    }
}

TEST_F(SaveDialog, SaveIsDimWhileTheNameIsEmpty)
{
    user.key("backspace");
    user.wait(2);
    user.then([] { EXPECT_TRUE(dimmed(1)); });
    user.key("return");
    user.then([this] { EXPECT_EQ(machine.beeps(), 1); });
    user.type("x");
    user.wait(2);
    user.then([] { EXPECT_FALSE(dimmed(1)); });
    user.press(1);
    SFReply reply = save();
    EXPECT_EQ(plain(reply.fName), "x");
}

TEST_F(SaveDialog, EmptyProposalStartsDim)
{
    user.then([] { EXPECT_TRUE(dimmed(1)); });
    user.key("escape");
    EXPECT_FALSE(save("").good);
}

TEST_F(SaveDialog, NamesThatNoFileCanHaveAreRefusedWithAMessage)
{
    const std::string words[] = {"a:b", "a/b", std::string(64, 'x'), ".", "._x"};
    for (const std::string &name : words) {
        user.key("tab");
        user.type(name);
        user.key("return");
        user.in(16402);
        user.press(1);
        user.in(0);
    }
    user.key("escape");
    EXPECT_FALSE(save().good);
    EXPECT_EQ(tracedTimes("alert 16402 shown"), 5);
    EXPECT_EQ(tracedTimes("colon or a slash"), 2);
    EXPECT_EQ(tracedTimes("up to 63 characters"), 1);
    expectNothingLeft();
}

TEST_F(SaveDialog, LongestNameIsAccepted)
{
    user.answerSave(std::string(63, 'n'));
    SFReply reply = save();
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(plain(reply.fName), std::string(63, 'n'));
}

TEST_F(SaveDialog, AccentedNamesAreFoundAgain)
{
    user.answerSave("Übung für café");
    SFReply reply = save();
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(chosen(reply), here() / "Übung für café");
}

TEST_F(SaveDialog, AsksBeforeAnExistingFileIsReplaced)
{
    writeFile(here() / "old", "precious");
    user.answerSave("old", true);
    SFReply reply = save();
    EXPECT_TRUE(reply.good);
    EXPECT_TRUE(traced("alert 16403 gave 1"));
    EXPECT_TRUE(traced("params \"old\""));
    EXPECT_EQ(contentsOf(here() / "old"), "precious");
}

TEST_F(SaveDialog, NotReplacingGoesBackToTheDialog)
{
    writeFile(here() / "old", "precious");
    user.answerSave("old", false);
    user.answerSave("new");
    SFReply reply = save();
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(plain(reply.fName), "new");
    EXPECT_TRUE(traced("alert 16403 gave 2"));
}

TEST_F(SaveDialog, ReturnInTheReplaceQuestionKeepsTheOldFile)
{
    writeFile(here() / "old", "precious");
    user.key("return");
    user.in(16403);
    user.key("return");
    user.in(16399);
    user.key("escape");
    EXPECT_FALSE(save("old").good);
}

TEST_F(SaveDialog, EscapeAndCommandPeriodInTheReplaceQuestionKeepTheOldFile)
{
    for (uint16_t modifiers : {0, int(cmdKey)}) {
        user.key("return");
        user.in(16403);
        user.key(modifiers ? "." : "escape", modifiers);
        user.in(16399);
        user.key("escape");
        writeFile(here() / "old", "precious");
        EXPECT_FALSE(save("old").good);
        user.in(0);
    }
    EXPECT_EQ(tracedTimes("alert 16403 gave 2"), 2);
}

TEST_F(SaveDialog, AFolderIsNeverReplaced)
{
    fs::create_directory(here() / "inner");
    user.key("return");
    user.in(16402);
    user.key("return");
    user.in(0);
    user.key("escape");
    EXPECT_FALSE(save("inner").good);
    EXPECT_TRUE(traced("is a folder"));
    EXPECT_TRUE(fs::is_directory(here() / "inner"));
}

TEST_F(SaveDialog, ListsFoldersFirstAndFilesDimmed)
{
    writeFile(here() / "alpha", "");
    writeFile(here() / ".hidden", "");
    writeFile(here() / "._alpha", "");
    fs::create_directory(here() / "zeta");
    fs::create_directory(here() / "beta");
    user.then([] { EXPECT_EQ(names(), (std::vector<std::string>{"beta/", "zeta/", "alpha (dim)"})); });
    clickRow("alpha");
    user.then([] { EXPECT_EQ(selectedName(), ""); });
    clickRow("zeta");
    user.then([] { EXPECT_EQ(selectedName(), "zeta"); });
    user.key("escape");
    save();
}

TEST_F(SaveDialog, GoesIntoFoldersAndUpByThePopup)
{
    fs::create_directories(here() / "one/two");
    fs::create_directories(folder / "other/deep");
    user.answerSave(here() / "one/two/inner");
    SFReply reply = save();
    EXPECT_EQ(chosen(reply), here() / "one/two/inner");
    user.answerSave(folder / "other/deep/elsewhere");
    reply = save();
    EXPECT_EQ(chosen(reply), folder / "other/deep/elsewhere");
    EXPECT_TRUE(traced("popup -4000 gave 4"));
    expectNothingLeft();
}

TEST_F(SaveDialog, FolderPopupListsAllFoldersUpToTheRoot)
{
    user.chooseWhere(4, [&](const std::vector<std::string> &items) {
        EXPECT_EQ(items.front(), "files");
        EXPECT_EQ(items.at(1), folder.path().filename());
        EXPECT_EQ(items.back(), "/");
        return static_cast<int>(items.size());
    });
    user.then([] { EXPECT_EQ(toolbox::standardfile::state()->folder, "/"); });
    user.key("escape");
    save();
}

TEST_F(SaveDialog, OpensWhereTheLastFileWas)
{
    fs::create_directory(here() / "sub");
    user.answerSave(here() / "sub/x");
    save();
    user.key("return");
    EXPECT_EQ(chosen(save("y")), here() / "sub/y");
    fs::remove(here() / "sub");
    user.key("return");
    EXPECT_EQ(chosen(save("y")), here() / "y");
}

TEST_F(SaveDialog, CancellingForgetsTheFolder)
{
    fs::create_directory(here() / "sub");
    clickRow("sub", 2);
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, here() / "sub"); });
    user.key("escape");
    save();
    user.key("return");
    EXPECT_EQ(chosen(save("y")), here() / "y");
}

TEST_F(SaveDialog, HostCanSetTheFolder)
{
    fs::create_directory(folder / "chosen");
    toolbox::setStandardFileFolder(folder / "chosen");
    user.key("return");
    EXPECT_EQ(chosen(save("y")), folder / "chosen/y");
}

// A loop of links stands for a disk that fails for a moment.
TEST_F(SaveDialog, AFolderThatCannotBeLookedAtIsNotLeftForAnother)
{
    fs::create_directory_symlink("loop", folder / "loop");
    toolbox::setStandardFileFolder(folder / "loop");
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, folder / "loop"); });
    user.key("escape");
    save();
}

TEST_F(SaveDialog, FolderThatVanishesIsReportedAndLeft)
{
    fs::create_directory(here() / "sub");
    clickRow("sub", 2);
    user.then([this] { fs::remove(here() / "sub"); });
    user.key("return");
    user.in(16402);
    user.press(1);
    user.in(16399);
    user.key("return");
    EXPECT_EQ(chosen(save("y")), here() / "y");
    EXPECT_TRUE(traced("no longer there"));
}

TEST_F(SaveDialog, CommandArrowsGoUpAndDown)
{
    fs::create_directory(here() / "sub");
    user.key("down");
    user.key("down", cmdKey);
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, here() / "sub"); });
    user.key("up", cmdKey);
    user.key("up", cmdKey);
    user.then([this] { EXPECT_EQ(toolbox::standardfile::state()->folder, folder.path()); });
    user.key("escape");
    save();
}

TEST_F(SaveDialog, ManyFoldersScroll)
{
    for (int i = 10; i < 40; ++i)
        fs::create_directory(here() / ("folder " + std::to_string(i)));
    user.answerSave(here() / "folder 33" / "x");
    EXPECT_EQ(chosen(save()), here() / "folder 33/x");
}

TEST_F(SaveDialog, NameIsCutCopiedAndPasted)
{
    user.key("c", cmdKey);
    user.then([this] { EXPECT_EQ(machine.clipboardText(), "original"); });
    user.key("x", cmdKey);
    user.putOnClipboard("pasted");
    user.key("v", cmdKey);
    user.key("return");
    EXPECT_EQ(plain(save("original").fName), "pasted");
}

TEST_F(SaveDialog, MissingDialogCountsAsCancel)
{
    SFReply reply;
    reply.good = true;
    SFPPutFile({100, 100}, P(""), P("x"), nullptr, &reply, 999, nullptr);
    EXPECT_FALSE(reply.good);
    EXPECT_EQ(machine.beeps(), 1) << "it is not silent";
}

int16_t cancelInsteadOfSave(int16_t item, DialogPtr)
{
    return item == 1 ? 2 : item;
}

TEST_F(SaveDialog, HookDecidesWhatAnItemDoes)
{
    user.key("return");
    EXPECT_FALSE(save("x", &cancelInsteadOfSave).good);
}

TEST_F(SaveDialog, FullMemoryAnywhereLeavesADialogThatCanBeCancelledOrNone)
{
    writeFile(here() / "old", "precious");
    bool met = true;
    for (int nth = 1; met && nth < 500; ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        user.type("x");
        user.key("backspace");
        user.type("old");
        user.key("return");
        for (int i = 0; i < 3; ++i)
            user.key("escape");
        user.then([this] {
            if (toolbox::standardfile::state() && FrontWindow() != toolbox::standardfile::state()->dialog)
                user.insertNext([this] { user.key("return"); });
        });
        user.key("escape");
        toolbox::faults::failAllocation(nth);
        SFReply reply = save();
        met = toolbox::faults::met();
        toolbox::faults::clear();
        user.forgetRest();
        EXPECT_FALSE(reply.good && plain(reply.fName) == "old");
        EXPECT_EQ(FrontWindow(), nullptr);
    }
    EXPECT_FALSE(met);
    EXPECT_EQ(contentsOf(here() / "old"), "precious");
    expectNothingLeft();
}

TEST_F(SaveDialog, TheHostMayGiveAnotherFolder)
{
    fs::create_directory(here() / "elsewhere");
    fs::path asked;
    toolbox::setSavePlace([&](const fs::path &file) {
        asked = file;
        return toolbox::SavePlace{here() / "elsewhere", {}};
    });
    user.answerSave("my riders");
    SFReply reply = save();
    EXPECT_TRUE(reply.good);
    EXPECT_EQ(asked, here() / "my riders");
    EXPECT_EQ(chosen(reply), here() / "elsewhere" / "my riders");
    EXPECT_EQ(toolbox::standardFileFolder(), here()) << "the next dialog opens where the user was";
}

TEST_F(SaveDialog, TheHostIsAskedOnlyWhenTheFileMayBeReplaced)
{
    writeFile(here() / "old", "old");
    int asked = 0;
    toolbox::setSavePlace([&](const fs::path &) {
        ++asked;
        return toolbox::SavePlace{};
    });
    user.answerSave("old", false);
    user.answerSave("old");
    SFReply reply = save();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(chosen(reply), here() / "old") << "no other folder was named";
}

TEST_F(SaveDialog, TheHostsRefusalIsShownAndTheDialogStays)
{
    bool refuses = true;
    toolbox::setSavePlace([&](const fs::path &) {
        return toolbox::SavePlace{{}, refuses ? "the door is locked" : ""};
    });
    user.answerSave("my riders");
    user.in(16402);
    user.then([&] {
        EXPECT_TRUE(traced("params \"the door is locked\""));
        refuses = false;
    });
    user.press(1);
    user.in(0);
    user.answerSave("my riders");
    EXPECT_TRUE(save().good);
}

TEST_F(SaveDialog, TheHostsFolderEndsWithTheSession)
{
    toolbox::setSavePlace([](const fs::path &) { return toolbox::SavePlace{{}, "no"}; });
    restart();
    openDialogs();
    user.answerSave("my riders");
    EXPECT_TRUE(save().good);
}

}  // namespace
