// The program on a display, with a scripted user in front of it.
#pragma once

#include <algorithm>
#include <vector>

#include "app/application.h"
#include "support/toolbox_test.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/user.h"
#include "toolbox/controls.h"
#include "toolbox/dialogs.h"
#include "toolbox/windows.h"

namespace app {

inline constexpr const char *program = "\x13";  // the first menu's title, a diamond
enum { settingsDialog = 16300, window = 1000, problem = 1010 };
enum { addButton = 1, closeButton, takeOutButton };
enum { allFiles = 10 };  // in the dialogs that ask for a file to open

inline std::string itemText(int16_t item)
{
    int16_t type;
    Handle text;
    Rect box;
    Str255 words;
    GetDItem(FrontWindow(), item, &type, &text, &box);
    GetIText(text, words);
    return plain(words);
}

inline bool isDimmed(int16_t item)
{
    int16_t type;
    Handle control;
    Rect box;
    GetDItem(FrontWindow(), item, &type, &control, &box);
    return (**reinterpret_cast<ControlHandle>(control)).contrlHilite == 255;
}

inline std::string windowTitle()
{
    Str255 title;
    GetWTitle(FrontWindow(), title);
    return plain(title);
}

// The display's pixels within an item of the window in front.
inline std::vector<std::uint32_t> pixelsOf(int16_t item)
{
    int16_t type;
    Handle handle;
    Rect box;
    GetDItem(FrontWindow(), item, &type, &handle, &box);
    Point corner{box.top, box.left};
    SetPort(FrontWindow());
    LocalToGlobal(&corner);
    const toolbox::Picture display = toolbox::displayPicture(0);
    std::vector<std::uint32_t> pixels;
    for (int v = 1; v < box.bottom - box.top - 1; ++v)
        for (int h = 1; h < box.right - box.left - 1; ++h)
            pixels.push_back(display.pixels.at(static_cast<std::size_t>((corner.v + v) * display.width + corner.h + h)));
    return pixels;
}

// Of them, how many are black, and how many are neither black nor white.
inline double darkShare(int16_t item)
{
    const std::vector<std::uint32_t> pixels = pixelsOf(item);
    return static_cast<double>(std::count(pixels.begin(), pixels.end(), 0u)) / static_cast<double>(pixels.size());
}
inline double shadeOf(int16_t item)
{
    const std::vector<std::uint32_t> pixels = pixelsOf(item);
    return static_cast<double>(std::count_if(pixels.begin(), pixels.end(),
                                             [](std::uint32_t pixel) { return pixel != 0 && pixel != 0xFFFFFF; })) /
           static_cast<double>(pixels.size());
}

class App : public ToolboxTest {
protected:
    void SetUp() override
    {
        configuration.preferencesFolder = folder / "preferences";
        configuration.startFolder = folder.path();
        setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
        ToolboxTest::SetUp();
        writeFile(folder / "job.ps",
                  "%!PS-Adobe-3.0\n%%Title: (Poster \\(front\\))\n%%Pages: (atend)\n%%EndComments\n"
                  "%%Page: 1 1\nshowpage\n%%Trailer\n%%Pages: 7\n%%EOF\n");
        writeFile(folder / "film", "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n");
    }
    void TearDown() override
    {
        ToolboxTest::TearDown();
        unsetenv("XDG_DATA_HOME");
    }
    // Runs until the program ends by itself.
    void run(const std::filesystem::path &job = {}, std::optional<riders::app::DisplaySettings> display = {})
    {
        std::filesystem::path built = RIDERS_BINARY_DIR;
        try {
            riders::app::Application({built / "riders", built / "riders.so", job, waits}, std::move(display)).run();
        } catch (const toolbox::ScriptError &error) {
            ADD_FAILURE() << error.message;
        }
    }
    void quitByMenu() { user.chooseFromBar("File", "Quit"); }
    void quit()
    {
        user.then([this] { machine.push({.kind = toolbox::Input::Kind::quit}); });
    }
    std::string added() { return contentsOf(folder / "job-riders.ps"); }
    // Writes a picture for whoever wants to look, if RIDERS_LOOK names a folder.
    static void keepPicture(const std::string &name)
    {
        if (const char *place = std::getenv("RIDERS_LOOK"))
            toolbox::writePng(std::filesystem::path(place) / (name + ".png"), toolbox::displayPicture(0));
    }

    toolbox::ScriptedUser user{machine};
    bool waits = false;
};

}  // namespace app
