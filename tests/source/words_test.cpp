// Every message, in the dialog that shows it. If RIDERS_WORDS_PICTURES names a
// folder, a picture of each is put there.
#include <algorithm>
#include <cstdlib>
#include <set>

#include "source/errors.h"
#include "source/ktCustomDlg.h"
#include "source/open_settings.h"
#include "source/resource_names.h"
#include "textedit/lines.h"
#include "toolbox/host/dialog_text.h"
#include "toolbox/host/picture.h"

namespace fs = std::filesystem;

namespace
{

enum { kFailure = 16129, kSettingsWarning = 16131, kQuestion = 16132 };

struct Message {
    int16_t id;
    int16_t dialog;
    int32_t number;      // shown below it, 0 for none
    const char *context; // the longest that comes with it
};

// Those with a number, or in a dialog other than that for failures.
const Message kWithNumbers[] = {
    {16129, kFailure, 80, " (STR# resource)"},
    {16130, kSettingsWarning, 31, " (PrefsCheck)"},
    {16134, kFailure, -36, " (fsread -check)"},
    {16137, kFailure, -34, " (writefreq)"},
    {16138, kFailure, -44, " (writeangle)"},
    {16139, kFailure, -120, " (writeangle)"},
    {16146, kQuestion, 0, ""},
    {16149, kFailure, -43, " (fsdelete)"},
    {16150, kFailure, -39, " (fsread -check)"},
    {16152, kFailure, 95, " (newhandle -check)"},
    {16153, kSettingsWarning, 101, " (fsopen)"},
    {16154, kSettingsWarning, 98, " (newhandle)"},
    {16156, kFailure, -45, " (rename1)"},
    {16157, kFailure, -61, " (create)"},
    {16158, kFailure, -47, " (fsdelete)"},
    {16161, kFailure, 95, " (newhandle)"},
    {16164, kFailure, 52, " (no return offset)"},
};

std::vector<Message> everyMessage()
{
    std::vector<Message> all;
    for (const NamedNumber &each : namedResources()) {
        if (each.type != "STR ")
            continue;
        int16_t id = static_cast<int16_t>(each.number);
        const auto *found = std::find_if(std::begin(kWithNumbers), std::end(kWithNumbers),
                                         [&](const Message &about) { return about.id == id; });
        all.push_back(found == std::end(kWithNumbers) ? Message{id, kFailure, 0, ""} : *found);
    }
    return all;
}

class Words : public OpenSettings, public ::testing::WithParamInterface<Message>
{
protected:
    // The message's own box in the dialog in front.
    static Rect textBox()
    {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(FrontWindow(), 3, &type, &item, &box);
        return box;
    }

    // How high the text is when it is as wide as the box.
    static int heightOf(const std::string &text, Rect box)
    {
        auto lines = toolbox::textedit::breakLines(text, box.right - box.left, true);
        return static_cast<int>(lines.size()) * toolbox::textedit::lineHeight();
    }

    static void keepPicture(int16_t id)
    {
        const char *place = std::getenv("RIDERS_WORDS_PICTURES");
        if (!place || !*place)
            return;
        fs::create_directories(place);
        ASSERT_TRUE(toolbox::writePng(fs::path(place) / (std::to_string(id) + ".png"), toolbox::displayPicture(0)));
    }
};

class Messages : public PluginTest
{
};

} // namespace

TEST_P(Words, ShowWholeInTheirDialog)
{
    const Message &about = GetParam();
    SelectWindow(gCustomDialog);
    ShowWindow(gCustomDialog);
    std::string shown;
    int room = 0, needed = 0;
    user.in(about.dialog);
    user.type(""); // waits until the dialog is open
    user.then([&] {
        shown = toolbox::frontDialogText();
        room = textBox().bottom - textBox().top;
        std::string all = message(about.id);
        if (about.number)
            all += "\r\rID = " + std::to_string(about.number);
        needed = heightOf(all + about.context, textBox());
        keepPicture(about.id);
    });
    user.press(1);
    guarded([&] { TheErrorHandler(about.dialog, about.id, about.number, P(about.context), false); });
    EXPECT_TRUE(user.idle());
    EXPECT_EQ(shown.rfind(toolbox::utf8FromRoman(message(about.id)), 0), 0u) << shown;
    EXPECT_LE(needed, room) << "the text does not fit";
}

INSTANTIATE_TEST_SUITE_P(Every, Words, ::testing::ValuesIn(everyMessage()),
                         [](const auto &instance) { return std::to_string(instance.param.id); });

TEST_F(Messages, AreAllNamed)
{
    std::set<int> shown, there;
    for (const Message &about : everyMessage())
        shown.insert(about.id);
    for (int16_t index = 1; index <= Count1Resources('STR '); ++index) {
        int16_t id;
        ResType type;
        Str255 name;
        GetResInfo(Get1IndResource('STR ', index), &id, &type, name);
        there.insert(id);
    }
    EXPECT_EQ(shown, there);
}

TEST_F(Messages, AreWholeSentences)
{
    for (const Message &about : everyMessage()) {
        std::string text = message(about.id);
        ASSERT_GT(text.size(), 20u) << about.id;
        EXPECT_TRUE(std::isupper(static_cast<unsigned char>(text.front()))) << text;
        EXPECT_EQ(text.back(), '.') << text;
        EXPECT_EQ(text.find("  "), std::string::npos) << text;
    }
}
