#include "plugin/popup_values.h"

#include "plugin/resource_fork.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/session.h"
#include "toolbox/host/text.h"
#include "toolbox/menus.h"

namespace riders::plugin {
namespace {

// A Toolbox that ends with its scope.
class Session {
public:
    Session() { toolbox::start({}, machine_); }
    ~Session() { toolbox::stop(); }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

private:
    toolbox::HeadlessMachine machine_;
};

// Without the unit; empty where it is no number.
std::string numberIn(const std::string &item)
{
    return item.substr(0, item.find_first_not_of("0123456789."));
}

}  // namespace

std::vector<std::string> popupValues(const std::filesystem::path &plugin, Popup popup)
{
    const Session session;
    const ResourceFork fork(plugin);
    std::vector<std::string> values;
    const MenuHandle menu = GetMenu(static_cast<std::int16_t>(popup));
    if (menu == nullptr)
        throw PluginError(plugin.string() + " has no such menu");
    for (std::int16_t item = 1; item <= CountMItems(menu); ++item) {
        Str255 text;
        GetItem(menu, item, text);
        const std::string words = toolbox::utf8FromPascal(text);
        if (std::string value = popup == Popup::font ? words : numberIn(words); !value.empty())
            values.push_back(std::move(value));
    }
    return values;
}

}  // namespace riders::plugin
