// The mouse and the keys in menus, from the press to a choice or none. Private
// to the Menu Manager.
#pragma once

#include <cstdint>
#include <optional>

#include "menus/open_menu.h"
#include "toolbox/host/machine.h"

namespace toolbox::menus {

class Tracker {
public:
    virtual ~Tracker() = default;

protected:
    Tracker();
    // The item chosen from the menu, which is then still open; 0 for none.
    int track();

    // The mouse is there: a bar opens the menu of the title it is on.
    virtual void mouseAt(Point) {}
    // Whether a press released there leaves the menu open.
    virtual bool staysOpenAt(Point where) const = 0;
    // Whether the first press chooses the item it is released over where the mouse has not moved.
    virtual bool choosesUnmoved(int) const { return true; }
    // A press outside the open menu. False: it closes the menu.
    virtual bool pressBeside(Point) { return false; }
    virtual void stepSideways(int) {}

    // Whether the press was short, and whether the mouse has moved since it
    // began.
    bool quick() const;
    bool moved() const { return moved_; }
    // Begins a press at a point.
    void startPress(Point where);
    // There is no press: the menu was opened by a key and stays open.
    void startByKey();

    std::optional<MenuOnDisplay> down_;

private:
    void take(const Input &input);
    void follow(Point mouse);
    void press(Point where);
    void release(Point where);
    void key(const Input &input);
    void timePassed();
    void finish(int item);

    bool held_ = true;       // the button is down
    bool mayStay_ = true;    // its release may leave the menu open
    bool moved_ = false;
    bool over_ = false;
    int chosen_ = 0;
    Point mouse_{};
    Point pressedAt_{};
    std::uint32_t begun_;
    std::uint32_t pressedTime_ = 0;
};

}  // namespace toolbox::menus
