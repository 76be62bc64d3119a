// The scale of the window on an X display whose person has asked for larger letters: Xft.dpi, as xrdb sets it.
#include <dlfcn.h>

#include <stdexcept>

#include "desktop/display.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

// Resources of the X display in DISPLAY, which forgets them when its last client leaves: as long as this exists.
class XResources {
public:
    explicit XResources(const std::string &text)
        : library_(dlopen("libX11.so.6", RTLD_LAZY)),
          display_(call<void *>("XOpenDisplay", static_cast<const char *>(nullptr)))
    {
        if (!display_)
            throw std::runtime_error("the X display cannot be opened");
        constexpr unsigned long resourceManager = 23, string = 31;  // predefined atoms
        call<int>("XChangeProperty", display_, call<unsigned long>("XDefaultRootWindow", display_),
                  resourceManager, string, 8, 0, text.c_str(), static_cast<int>(text.size()));
        call<int>("XSync", display_, 0);
    }
    ~XResources() { call<int>("XCloseDisplay", display_); }
    XResources(const XResources &) = delete;
    XResources &operator=(const XResources &) = delete;

private:
    template <typename Result, typename... Arguments>
    Result call(const char *name, Arguments... arguments)
    {
        return reinterpret_cast<Result (*)(Arguments...)>(dlsym(library_, name))(arguments...);
    }

    void *library_, *display_;
};

// Width and height of riders' window, in the display's pixels.
std::string sizeOfWindow()
{
    TemporaryFolder folder;
    const std::string script =
        "unset RIDERS_SCALE GDK_SCALE QT_SCALE_FACTOR; export XDG_CONFIG_HOME=$PWD/config\n" +
        std::string(RIDERS_BINARY_DIR) +
        "/riders &\n"
        "window=$(xdotool search --sync --onlyvisible --pid $! | tail -1)\n"
        "xdotool getwindowgeometry $window | sed -n 's/ *Geometry: //p'\n"
        "kill $!; wait $!";
    const CommandResult result = runProgram({"sh", "-c", script}, {}, folder.path());
    EXPECT_EQ(result.err, "");
    return result.out;
}

TEST(XftDpi, MakesTheWindowLarger)
{
    const desktop::DisplayServer display("2560x1440x24");
    const XResources twice("Xft.antialias:\t1\nXft.dpi:\t192\n");
    EXPECT_EQ(sizeOfWindow(), "1600x1200\n");
}

TEST(XftDpi, IsNotMadeUp)
{
    const desktop::DisplayServer display("2560x1440x24");
    const XResources others("*color: red\n");
    EXPECT_EQ(sizeOfWindow(), "800x600\n");
}

}  // namespace
