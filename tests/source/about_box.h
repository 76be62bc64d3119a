// The About box used by a person, with every drawing call kept.
#pragma once

#include "support/plugin_test.h"

#include <algorithm>
#include <cstdio>

#include "source/dialogItems.h"
#include "source/ktAboutDlg.h"
#include "source/ktFreqDlg.h"
#include "toolbox/host/picture.h"
#include "toolbox/memory.h"
#include "toolbox/system.h"

namespace about {

constexpr int kAbout = 16200, kPanel = 17000, kSettings = 16300;
constexpr int kPictureArea = 5, kTextArea = 6;
constexpr Rect kFullPicture = {20, 59, 64, 235};
constexpr int kWindowWidth = 250;
constexpr int kIntroLong = 20;   // ticks after which the intro has begun, and so is over as well
constexpr int kCheckBox = 4;

inline bool isHidden(int16_t item)
{
    return ItemBox(gTheDialog, item).left > 8192;
}

inline std::string asText(const Rect &r)
{
    char text[48];
    std::snprintf(text, sizeof text, "%d,%d,%d,%d", r.left, r.top, r.right, r.bottom);
    return text;
}

inline bool same(const Rect &a, const Rect &b)
{
    return EqualRect(&a, &b);
}

class About : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        watchDrawing();
    }

    void watchDrawing() { toolbox::trace::setDrawingSink(toolbox::trace::into(drawn)); }

    void useDepth(int depth)
    {
        machine.setDisplays({{{0, 0, 480, 640}, depth}});
        restartPlugin();
        watchDrawing();
    }

    // Opens the box, lets the steps happen, and closes it when they leave it
    // open.
    void open(const std::function<void()> &steps, bool closes = false)
    {
        user.forgetRest();
        user.in(kAbout);
        steps();
        user.in(0);
        if (!closes)
            user.key("return");
        drawn.clear();
        EXPECT_EQ(call(kSelectAbout), 0);
        EXPECT_TRUE(user.idle());
    }

    // The drawing calls that begin so, in order, without that beginning.
    std::vector<std::string> drawnWith(const std::string &beginning) const
    {
        std::vector<std::string> found;
        for (const std::string &line : drawn)
            if (line.starts_with(beginning))
                found.push_back(line.substr(beginning.size()));
        return found;
    }

    // Runs something during the session.
    void look(const std::function<void()> &action) { user.then(action); }

    std::vector<std::string> drawn;
};

enum State { kBeforeIntro, kShowing, kScrolling, kFallen };

}  // namespace about
