#include "make/offers.h"

#include "make/menu_match.h"
#include "plugin/resource_fork.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/session.h"
#include "toolbox/host/text.h"
#include "toolbox/menus.h"

namespace riders::make {
namespace {

// Items that leave the choice to the printer or open a dialog hold no value, nor those of numbers without a digit.
std::vector<std::string> valuesOf(MenuHandle menu, bool numbers)
{
    std::vector<std::string> values;
    for (int16_t item = 1; item <= CountMItems(menu); ++item) {
        Str255 text;
        GetItem(menu, item, text);
        std::string value = toolbox::utf8FromPascal(text);
        if (!isValue(value))
            continue;
        if (numbers)
            value = value.substr(0, value.find_first_not_of("0123456789."));
        value.erase(value.find_last_not_of(' ') + 1);
        if (!value.empty())
            values.push_back(value);
    }
    return values;
}

class Session {
public:
    Session()
    {
        machine_.wantPictures(false);
        toolbox::start(configuration_, machine_);
    }
    ~Session() { toolbox::stop(); }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

private:
    toolbox::Configuration configuration_;
    toolbox::HeadlessMachine machine_;
};

}  // namespace

std::vector<std::string> offersOf(Offered offered, const std::filesystem::path &plugin)
{
    const Session session;
    const plugin::ResourceFork fork(plugin);
    const MenuHandle menu = GetMenu(static_cast<int16_t>(offered));
    if (menu == nullptr)
        throw plugin::PluginError("there is not enough memory for the menus of " + plugin.string());
    return valuesOf(menu, offered != Offered::fonts);
}

}  // namespace riders::make
