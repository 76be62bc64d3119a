// A session with the plug-in on any machine, and pictures of it compared.
#pragma once

#include <memory>

#include "plugin/plugin.h"
#include "support/toolbox_test.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/user.h"

namespace desktop {

constexpr int cancelItem = 2;

// One session with the plug-in, on any machine.
class Sitting {
public:
    Sitting(toolbox::HeadlessMachine &machine, const std::filesystem::path &preferences) : user(machine)
    {
        toolbox::Configuration configuration;
        configuration.preferencesFolder = preferences;
        toolbox::start(configuration, machine);
        plugin_ = std::make_unique<riders::plugin::Plugin>(riders::plugin::pluginBesideProgram());
    }
    ~Sitting()
    {
        plugin_.reset();
        toolbox::stop();
    }
    Sitting(const Sitting &) = delete;
    Sitting &operator=(const Sitting &) = delete;

    // The settings dialog, from opening to cancelling, with these steps between.
    void inSettings(const std::function<void()> &steps)
    {
        steps();
        user.press(cancelItem);
        plugin_->call(kSelectCommand, kCommandSettings);
    }

    toolbox::ScriptedUser user;

private:
    std::unique_ptr<riders::plugin::Plugin> plugin_;
};

struct Difference {
    int pixels = 0;
    std::string first;
};

inline Difference between(const toolbox::Picture &is, const toolbox::Picture &should)
{
    if (is.width != should.width || is.height != should.height)
        return {1, "sizes: " + std::to_string(is.width) + "x" + std::to_string(is.height) + " and " +
                       std::to_string(should.width) + "x" + std::to_string(should.height)};
    Difference found;
    for (std::size_t i = 0; i < is.pixels.size(); ++i)
        if (is.pixels[i] != should.pixels[i] && found.pixels++ == 0)
            found.first = "at " + std::to_string(static_cast<int>(i) % is.width) + "," +
                          std::to_string(static_cast<int>(i) / is.width);
    return found;
}

// The settings dialog on the headless display.
inline toolbox::Picture headlessSettings(const std::filesystem::path &folder, const toolbox::Display &first,
                                         const std::vector<toolbox::Display> &later = {})
{
    toolbox::HeadlessMachine machine({first});
    Sitting sitting(machine, folder);
    toolbox::Picture seen;
    sitting.inSettings([&] {
        if (!later.empty())
            sitting.user.setDisplays(later);
        sitting.user.wait(1);
        sitting.user.then([&] { seen = toolbox::displayPicture(0); });
    });
    return seen;
}

inline toolbox::Display displayOf(int width, int height, int depth, int scale = 1)
{
    return {{0, 0, static_cast<int16_t>(height), static_cast<int16_t>(width)}, depth, scale};
}

}  // namespace desktop
