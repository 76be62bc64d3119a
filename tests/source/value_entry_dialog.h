// The dialog for a value, opened over the settings dialog.
#pragma once

#include "source/open_settings.h"

#include <cstring>

#include "source/initUtilities.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "source/popup.h"
#include "toolbox/scrap.h"

namespace value_entry_dialog {

class ValueEntry : public OpenSettings {
protected:
    void SetUp() override
    {
        OpenSettings::SetUp();
        prepare();
    }

    void reopenWith(char separator, int32_t systemVersion = 0x0755)
    {
        configuration.decimalPoint = separator;
        configuration.systemVersion = systemVersion;
        reopen();
        prepare();
    }

    // Brings the settings dialog to the state in which it asks for a value.
    void prepare()
    {
        ShowWindow(gCustomDialog);
        SelectWindow(gCustomDialog);
        toolbox::setPascal(settings.freqStr, "45", 15);
        toolbox::setPascal(settings.angleStr, "30", 15);
        toolbox::setPascal(settings.flatStr, "3", 15);
        user.in(kFreqDialogID);
    }

    bool run(int16_t kind)
    {
        Boolean confirmed = false;
        guarded([&] { confirmed = HandleFreqDialog(kind); });
        EXPECT_TRUE(user.idle());
        return confirmed;
    }

    std::string field()
    {
        int16_t type;
        Handle item;
        Rect box;
        Str255 text;
        GetDItem(gTheDialog, 4, &type, &item, &box);
        GetIText(item, text);
        return plain(text);
    }

    std::pair<int, int> selection()
    {
        TEHandle text = reinterpret_cast<DialogPeek>(gTheDialog)->textH;
        return {(*text)->selStart, (*text)->selEnd};
    }

    // How OK refuses a text: the message, and what the field then holds.
    struct Refusal {
        int16_t message;
        std::string field;
    };
    void expectRefusal(int16_t kind, const std::string &typed, const Refusal &refusal)
    {
        SCOPED_TRACE(typed);
        trace.clear();
        user.in(kFreqDialogID);
        user.key("backspace");
        if (typed.find_first_not_of("0123456789.,") == std::string::npos)
            user.type(typed);
        else
            paste(typed);
        user.key("return");
        dismiss();
        user.in(kFreqDialogID);
        user.then([&] {
            EXPECT_EQ(field(), refusal.field);
            EXPECT_EQ(selection(), (std::pair<int, int>{0, static_cast<int>(refusal.field.size())}));
        });
        user.key("escape");
        EXPECT_FALSE(run(kind));
        EXPECT_TRUE(traced(params(message(refusal.message))));
    }

    void expectStored(int16_t kind, const std::string &typed, const unsigned char *setting,
                      const std::string &stored)
    {
        SCOPED_TRACE(typed);
        user.in(kFreqDialogID);
        user.key("backspace");
        user.type(typed);
        user.key("return");
        EXPECT_TRUE(run(kind));
        EXPECT_EQ(plain(setting), stored);
    }

    void paste(const std::string &text)
    {
        user.putOnClipboard(text);
        user.key("v", cmdKey);
    }
};

}  // namespace value_entry_dialog
