// A Toolbox with a resource file to add dialogs to, and hands for mouse and
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
    // Throws OutOfInput when what waits for input has waited 200 times for none.
    void limitWaiting();
    // All that is expected from the dialog while input is waiting; ends the
    // test's session when the input has run out.
    int16_t modal(ModalFilterProcPtr filter = nullptr);

    toolbox::LeakReport before;
};

// Thrown when a dialog waits for more than the test has to give.
struct OutOfInput {};
