#include "support/plugin_test.h"

#include "source/errors.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "source/ktSpot.h"
#include "support/documents.h"
#include "toolbox/memory.h"

namespace fs = std::filesystem;

namespace {

// The boundary's records hold 32-bit addresses, so they are static: a test
// program's own data lies below 4 GiB.
MessageBlock block;
HostProcs hostProcs;

using Register = std::function<void(ConstStr255Param, ConstStr255Param, int32_t)>;
using Filter = std::function<bool(DialogPtr, EventRecord *, int16_t *)>;
Register onRegister;
Filter onEvent;

int32_t addMenuItem(ConstStr255Param group, ConstStr255Param text, int32_t number)
{
    if (onRegister)
        onRegister(group, text, number);
    return 0;
}

Boolean dialogFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    return onEvent && onEvent(dialog, event, itemHit);
}

std::string versionInSources()
{
    const std::string texts = sourceText("resources/strings.res"), before = "short \"";
    const size_t begin = texts.find(before, texts.find("\nversion 1 ")) + before.size();
    return texts.substr(begin, texts.find('"', begin) - begin);
}

void forgetGlobals()
{
    gEnvirInfo = nullptr;
    gPrefsPtr = nullptr;
    gSavedPrefs = nullptr;
    gCustomDialog = nullptr;
    gTheDialog = nullptr;
    gSpotHandle = nullptr;
    gSpotLength = 0;
    gSavedSpotHandle = nullptr;
    gSavedSpotLength = 0;
    gHaveWriteError = false;
}

toolbox::LeakReport difference(const toolbox::LeakReport &now, const toolbox::LeakReport &then)
{
    return {now.pointers - then.pointers, now.handles - then.handles, now.openFiles - then.openFiles,
            now.openWindows - then.openWindows, now.loadedResources - then.loadedResources};
}

}  // namespace

const std::string kPluginVersion = versionInSources();

void PluginTest::SetUp()
{
    fs::copy_file(fs::path(RIDERS_BINARY_DIR) / "._riders.so", folder / "._riders.so");
    writeFile(folder / "riders.so", "");
    onRegister = [this](ConstStr255Param group, ConstStr255Param text, int32_t number) {
        registered.push_back({plain(group), plain(text), number});
    };
    onEvent = [this](DialogPtr dialog, EventRecord *event, int16_t *itemHit) {
        return hostFilter && hostFilter(dialog, event, itemHit);
    };
    ToolboxTest::SetUp();
    openPlugin();
}

void PluginTest::TearDown()
{
    forgetGlobals();
    onRegister = {};
    onEvent = {};
    ToolboxTest::TearDown();
}

void PluginTest::restartPlugin()
{
    restart();
    openPlugin();
}

void PluginTest::openPlugin()
{
    forgetGlobals();
    ended = false;
    auto here = toolbox::folders::workingDirectory(folder.path());
    ASSERT_TRUE(here);
    ASSERT_NE(HOpenResFile(*here, 0, P("riders.so"), 0), -1) << "error " << ResError();
    atOpening_ = toolbox::leftBehind();
}

toolbox::LeakReport PluginTest::leftBehind() const
{
    return difference(toolbox::leftBehind(), atOpening_);
}

bool PluginTest::guarded(const std::function<void()> &action)
{
    try {
        action();
        return true;
    } catch (const toolbox::ProcessEnded &) {
        ended = true;
    } catch (const toolbox::ScriptError &error) {
        ADD_FAILURE() << "the scripted user: " << error.message;
        ended = true;
    }
    return false;
}

int32_t PluginTest::call(int selector, int command)
{
    block = MessageBlock{};
    hostProcs = HostProcs{};
    hostProcs.addMenuItem.set(&addMenuItem);
    hostProcs.dialogFilter.set(&dialogFilter);
    block.hostProcs.set(&hostProcs);
    block.selector = static_cast<int16_t>(selector);
    block.command = static_cast<int16_t>(command);
    int16_t current = CurResFile();
    int32_t result = 0;
    if (guarded([&] { result = main_entry(&block); })) {
        EXPECT_EQ(leftBehind().text(), toolbox::LeakReport{}.text()) << "after selector " << selector;
        EXPECT_EQ(CurResFile(), current) << "the plug-in's fork is no longer the current one";
    }
    return result;
}

void PluginTest::makeRecords()
{
    gEnvirInfo = &environment;
    gPrefsPtr = &settings;
    gSavedPrefs = &savedSettings;
    GetEnvirInfo();
    SetDefaults();
}

void PluginTest::removeResource(ResType type, int16_t id)
{
    Handle resource = Get1Resource(type, id);
    ASSERT_NE(resource, nullptr) << "no such resource " << id;
    RmveResource(resource);
    DisposeHandle(resource);
    UpdateResFile(CurResFile());
}

void PluginTest::replaceResource(ResType type, int16_t id, const std::string &bytes)
{
    removeResource(type, id);
    addResource(type, id, bytes);
}

void PluginTest::addResource(ResType type, int16_t id, const std::string &bytes)
{
    Handle data = NewHandle(static_cast<Size>(bytes.size()));
    ASSERT_NE(data, nullptr);
    BlockMove(bytes.data(), *data, static_cast<Size>(bytes.size()));
    AddResource(data, type, id, P(""));
    ASSERT_EQ(ResError(), noErr);
    SetResAttrs(data, resPurgeable);
    WriteResource(data);
    ReleaseResource(data);
    UpdateResFile(CurResFile());
}

std::string PluginTest::text(int16_t listID, int16_t index) const
{
    Str255 string;
    GetIndString(string, listID, index);
    return plain(string);
}

std::string PluginTest::message(int16_t id) const
{
    StringHandle string = GetString(id);
    return string ? plain(*string) : std::string();
}

void PluginTest::dismiss(int16_t dialogID, int item)
{
    user.in(dialogID);
    user.press(item);
    user.in(0);
}

std::string PluginTest::params(const std::string &p0, const std::string &p1, const std::string &p2,
                               const std::string &p3)
{
    std::string line = "params";
    for (const std::string &part : {p0, p1, p2, p3})
        line += " " + toolbox::trace::quoted(P(part));
    return line;
}

std::filesystem::path PluginTest::preferencesFile() const
{
    return configuration.preferencesFolder / toolbox::utf8FromRoman(text(16131, 1));
}
