// The scripted user: a person at the headless machine.
//
// Steps are queued and carried out one after the other, each when the Toolbox
// waits for input and all that came before has been dealt with and drawn. They
// use nothing but mouse and keyboard: a step looks where an item is, goes there
// and presses. A step that finds nothing to act on ends the session with
// ScriptError, as does waiting for input when the steps have run out. The
// error is thrown through the program that waited; after it the session can
// only be stopped. A new one may be started with the same user, whose queue is
// then empty.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "toolbox/host/headless.h"

namespace toolbox {

struct ScriptError {
    int line;              // of the step, 0 where steps have no lines
    std::string message;   // such as "dialog 16300 has no item 9", one line
};

class ScriptedUser {
public:
    // Becomes the machine's input source until it is destroyed. The machine must
    // outlive it.
    explicit ScriptedUser(HeadlessMachine &machine);
    ScriptedUser(const ScriptedUser &) = delete;
    ScriptedUser &operator=(const ScriptedUser &) = delete;
    ~ScriptedUser();

    // The line given to steps queued from here on, for ScriptError.
    void atLine(int line);
    // The dialog ('DLOG' or 'ALRT' number) that steps queued from here on
    // expect in front; 0: any. Another one in front is a surprise. Steps that
    // touch no dialog (wait, putOnClipboard, setDepth, then) expect none.
    void in(int dialogID);

    // Presses and releases item number item of the front dialog or alert, in
    // its middle. A hidden item or a dimmed button is an error. Pressing a popup
    // leaves its menu open: clickAt and keys then go to the menu, while steps
    // that press, choose or answer file dialogs close it first.
    void press(int item, std::uint16_t modifiers = 0);
    void clickAt(Point global, std::uint16_t modifiers = 0);
    // The mouse, one action at a time. While the button is held, code that tracks
    // the mouse sees each of them; between two of them anything can be done that
    // needs no items of a dialog, such as taking a picture of an open menu. The
    // other steps that press then find the button held: a ScriptError.
    void moveTo(Point global, std::uint16_t modifiers = 0);
    void pressAt(Point global, std::uint16_t modifiers = 0);
    void hold(int item, std::uint16_t modifiers = 0);
    void releaseAt(Point global, std::uint16_t modifiers = 0);
    // Releases where the mouse is.
    void release(std::uint16_t modifiers = 0);
    // Presses, moves along, releases.
    void drag(Point from, Point to, std::uint16_t modifiers = 0);
    // Presses the popup at the dialog item, drags to the menu item (from 1)
    // and releases there. Releasing on a disabled item chooses nothing.
    void choose(int item, int menuItem);
    // The same by the menu item's text (UTF-8, trailing blanks not compared).
    void choose(int item, const std::string &menuText);
    // The same by what there is to choose from: pick receives the texts of the
    // open menu (UTF-8, without trailing blanks) and returns an item number, or 0
    // to release outside.
    void chooseWhere(int item, std::function<int(const std::vector<std::string> &)> pick);
    // Opens the popup and releases outside the menu.
    void chooseNothing(int item);
    // Presses the title in the menu bar, drags to the item and releases there;
    // texts are UTF-8. With an empty item text the release is outside. May be
    // done with a dialog in front or without, like the steps that touch none.
    void chooseFromBar(const std::string &menuTitle, const std::string &itemText);
    // Types the text (UTF-8) key by key.
    void type(const std::string &text);
    // "return", "enter", "escape", "tab", "backspace", "delete", "space",
    // "left", "right", "up", "down", "home", "end", "pageup", "pagedown", or one
    // character.
    void key(const std::string &name, std::uint16_t modifiers = 0);
    // Holds the key down until it has repeated that many times.
    void repeat(const std::string &name, int times, std::uint16_t modifiers = 0);
    // Answers the save dialog that is up: goes to the folder, if one is named,
    // by its popup and list, replaces the name and presses Save. If the dialog
    // then asks whether to replace a file, presses what replace says; after
    // Cancel the dialog is still up. If the name is refused, the message about it
    // is left in front for the next step. A relative folder is taken from the
    // program's current one.
    void answerSave(const std::filesystem::path &name, bool replace = true);
    // Answers the open dialog: goes to the folder, chooses the file in the
    // list and presses Open.
    void answerOpen(const std::filesystem::path &name);
    // Cancels the save or open dialog that is up.
    void cancelFile();
    // Lets at least that much time pass.
    void wait(std::uint32_t ticks);
    // As another program would.
    void putOnClipboard(const std::string &text);
    // Bits per pixel, on all displays.
    void setDepth(int bits);
    // Device pixels per pixel, 1, 2 or 3, on all displays.
    void setScale(int scale);
    // Of the main display; displays right of it or below it move along.
    void resizeDisplay(int width, int height);
    void setDisplays(const std::vector<Display> &displays);
    // Anything else, at that moment: a fault to plan, a picture to take. A
    // ScriptError that it throws without a line gets the line of the step.
    void then(std::function<void()> action);
    // The same with the expected dialog in front.
    void thenInDialog(std::function<void()> action);
    // Puts the steps that add queues in front of those already queued. For
    // handlers and pick, which find out only then what is to be done next.
    void insertNext(const std::function<void()> &add);

    // Called when a step expects one dialog and finds another in front, when a
    // host step (atHost) is reached with a dialog still open, and when the
    // steps run out with one open: true when the handler has changed the steps
    // (forgetRest and new ones) and the session is to go on; false or no handler:
    // ScriptError.
    void onSurprise(std::function<bool(int dialogID)> handler);
    // From here on, the user who is stuck does not end the session at once with a
    // ScriptError, which would leave the program no time to put away what it works
    // on: the rest of the steps is dropped, the machine asks the program to quit
    // (toolbox/host/quit.h), and only if that does not end the call is the error
    // thrown through it. run() throws it once the host step returns.
    void quitsWhenStuck();
    // What the user is stuck at, and what messages have said since; nothing when
    // all went well.
    const std::optional<ScriptError> &stuck() const;
    // What the last message, a dialog of texts and buttons with nothing to choose, said,
    // whether it was expected or not; empty if there was none since the last host step.
    const std::string &lastMessage() const;
    // Drops the steps not yet done.
    void forgetRest();
    // Whether all steps are done; the line of the next one, 0 if there is none.
    bool idle() const;
    int nextLine() const;

    // Steps a host carries out between calls of the plug-in, such as choosing
    // a menu command. Reached while a dialog is up, they are a ScriptError.
    void atHost(std::function<void()> action);
    // Carries out host steps until the steps run out. A step that needs a
    // dialog is a ScriptError here: nothing is open.
    void run();

private:
    struct Script;
    void changeDisplays(std::function<void(std::vector<Display> &)> change);
    std::unique_ptr<Script> script_;
};

}  // namespace toolbox
