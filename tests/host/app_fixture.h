// The program on a display, with a scripted user in front of it.
#pragma once

#include "app/application.h"
#include "support/toolbox_test.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/user.h"

namespace app {

inline constexpr const char *program = "\x13";  // the first menu's title, a diamond
enum { settingsDialog = 16300, window = 1000, problem = 1010 };
enum { addButton = 1, closeButton, takeOutButton };

class App : public ToolboxTest {
protected:
    void SetUp() override
    {
        configuration.preferencesFolder = folder / "preferences";
        configuration.startFolder = folder.path();
        ToolboxTest::SetUp();
        writeFile(folder / "job.ps",
                  "%!PS-Adobe-3.0\n%%Title: (Poster \\(front\\))\n%%Pages: (atend)\n%%EndComments\n"
                  "%%Page: 1 1\nshowpage\n%%Trailer\n%%Pages: 7\n%%EOF\n");
        writeFile(folder / "film", "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n");
    }
    // Runs until the program ends by itself.
    void run(const std::filesystem::path &job = {}, std::optional<riders::app::DisplaySettings> display = {})
    {
        std::filesystem::path built = RIDERS_BINARY_DIR;
        try {
            riders::app::Application({built / "riders", built / "riders.so", job}, std::move(display)).run();
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
};

}  // namespace app
