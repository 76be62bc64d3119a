// The request to end the program: the window was closed, or the system asks.
//
// It comes from the machine as Input quit and stays until the session ends or it
// is dropped. Menus that are open close with nothing chosen; whatever tracks the
// mouse ends as if it had been released outside. Then dialogs are asked to
// cancel, the front one first: ModalDialog and the alerts press Escape for the
// user, and filters see it like any key. If no filter takes it, item 2 is hit if it
// is a button, or else the only button there is, which can only confirm a message;
// a dialog without buttons, where nothing can be confirmed, gets Return as well. A
// dialog that is still up, or up again, is asked a second time, by Command-period,
// and now by that button even if the filter takes the key but hits nothing. If it
// is still up after that, the request is dropped: the user's work is worth more. A
// program's own loop, which WaitNextEvent wakes, looks here once its dialogs are
// gone.
#pragma once

namespace toolbox {

// Whether the program was asked to end and still is. Between start and stop of the
// Toolbox, as is the one below.
bool quitAsked();
// Takes the request back: dialogs stay up, and the program goes on.
void dropQuit();

}  // namespace toolbox
