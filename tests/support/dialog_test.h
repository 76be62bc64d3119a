// A Toolbox with a resource file to add dialogs to, and calls for mouse and
// keys.
#pragma once

#include "support/dialog_resources.h"
#include "support/toolbox_test.h"
#include "toolbox/dialogs.h"

class DialogTest : public ToolboxTest {
protected:
    void SetUp() override;
    void TearDown() override;

    void mouse(toolbox::Input::Kind kind, int h, int v, int modifiers = 0);
    // Global.
    void click(int h, int v, int modifiers = 0);
    void key(int character, int modifiers = 0);
    void type(const std::string &text);
    // Makes the program throw OutOfInput when it has waited for input 200 times
    // in vain.
    void limitWaiting();
    // ModalDialog with the filter, and its item; throws OutOfInput when the
    // input has run out.
    int16_t modal(ModalFilterProcPtr filter = nullptr);

    toolbox::LeakReport before;
};

// Thrown when a dialog waits for more input than the test has.
struct OutOfInput {};
