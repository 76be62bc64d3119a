#include "app/start.h"

#include <langinfo.h>
#include <locale.h>

#include "toolbox/host/desktop.h"
#include "toolbox/host/session.h"

namespace riders::app {
namespace {

// The one the person's locale uses; a period where it is not a single
// character.
char decimalPoint()
{
    char point = '.';
    if (locale_t own = newlocale(LC_NUMERIC_MASK, "", nullptr)) {
        const char *text = nl_langinfo_l(RADIXCHAR, own);
        if (text[0] != '\0' && text[1] == '\0')
            point = text[0];
        freelocale(own);
    }
    return point;
}

// Closing a window waits for its display, for ever if that has gone.
struct ClosedIfShown {
    void operator()(toolbox::Desktop *desktop) const
    {
        if (!desktop->displayLost())
            delete desktop;
    }
};

struct Session {
    explicit Session(toolbox::Machine &machine)
    {
        toolbox::Configuration configuration;
        configuration.decimalPoint = decimalPoint();
        toolbox::start(configuration, machine);
    }
    ~Session() { toolbox::stop(); }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;
};

DisplaySettings settingsOf(toolbox::Desktop &desktop)
{
    return {[&] { return desktop.fullScreen(); }, [&](bool wanted) { desktop.setFullScreen(wanted); },
            [&] { return desktop.depth(); }, [&](int bits) { desktop.setDepth(bits); }};
}

}  // namespace

std::string startOnDesktop(const AppRequest &request)
{
    try {
        const std::unique_ptr<toolbox::Desktop, ClosedIfShown> desktop(toolbox::openDesktop().release());
        Session session(*desktop);
        Application(request, settingsOf(*desktop)).run();
        if (desktop->displayLost())
            return "the display has gone away; open dialogs were cancelled";
    } catch (const toolbox::DesktopError &error) {
        return std::string(error.what()) + "; see riders --help for what the command line does";
    } catch (const toolbox::ProcessEnded &) {
        return "the plug-in could not go on and ended the program";
    }
    return {};
}

}  // namespace riders::app
