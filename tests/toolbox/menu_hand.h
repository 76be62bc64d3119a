// A hand on the mouse for tests of menus: what it does once a menu is open is
// given step by step, since only then is it known where the items are.
#pragma once

#include "support/toolbox_test.h"

#include "menus/menu_bar.h"
#include "menus/open_menu.h"
#include "toolbox/events.h"
#include "toolbox/host/picture.h"
#include "toolbox/menus.h"

class MenuTest : public ToolboxTest {
protected:
    using Input = toolbox::Input;
    // Returns the next input; none lets time pass.
    using Step = std::function<std::optional<Input>()>;

    void TearDown() override
    {
        machine.setSource({});
        ToolboxTest::TearDown();
    }
    // Presses at the point and takes the event, as a program does before it
    // calls the Menu Manager. The steps follow.
    void pressAt(Point where, std::vector<Step> steps)
    {
        machine.push(mouse(Input::Kind::mouseDown, where));
        EventRecord event;
        EXPECT_TRUE(GetNextEvent(1 << mouseDown, &event));
        auto next = std::make_shared<std::size_t>(0);
        machine.setSource([steps, next]() -> std::optional<Input> {
            return *next < steps.size() ? steps[(*next)++]() : std::nullopt;
        });
    }
    static Input mouse(Input::Kind kind, Point where)
    {
        Input input{kind};
        input.where = where;
        return input;
    }
    static Point middle(const Rect &r)
    {
        return {static_cast<int16_t>((r.top + r.bottom) / 2), static_cast<int16_t>((r.left + r.right) / 2)};
    }
    static Rect rowOf(int item) { return toolbox::menus::openMenu()->items.at(static_cast<std::size_t>(item - 1)); }

    static Step at(Input::Kind kind, Point where)
    {
        return [=] { return mouse(kind, where); };
    }
    static Step moveTo(Point where) { return at(Input::Kind::mouseMoved, where); }
    static Step press(Point where) { return at(Input::Kind::mouseDown, where); }
    static Step release(Point where) { return at(Input::Kind::mouseUp, where); }
    static Step overItem(Input::Kind kind, int item)
    {
        return [=] { return mouse(kind, middle(rowOf(item))); };
    }
    static Step key(int character, int modifiers = 0)
    {
        Input input{.kind = Input::Kind::keyDown};
        input.character = static_cast<std::uint8_t>(character);
        input.modifiers = static_cast<std::uint16_t>(modifiers);
        return [=] { return input; };
    }
    // Calls look, and then does the step.
    static Step after(std::function<void()> look, Step step)
    {
        return [=] {
            look();
            return step();
        };
    }
    Step holding(std::uint32_t ticks, Step step)
    {
        return after([=, this] { machine.passTicks(ticks); }, step);
    }
    static int darkPixels(const toolbox::Picture &picture, const Rect &r)
    {
        int dark = 0;
        for (int v = r.top; v < r.bottom; ++v)
            for (int h = r.left; h < r.right; ++h)
                dark += picture.pixels[static_cast<std::size_t>(v * picture.width + h)] == 0;
        return dark;
    }
    static bool isInverted(const Rect &r)
    {
        return darkPixels(toolbox::displayPicture(0), r) > (r.right - r.left) * (r.bottom - r.top) / 2;
    }
};
