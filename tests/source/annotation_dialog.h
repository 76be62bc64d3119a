// The annotation dialog, opened over the settings dialog.
#pragma once

#include "source/open_settings.h"

#include "source/initUtilities.h"
#include "source/ktAnnoDlg.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "source/popup.h"

namespace annotation_dialog {

enum { kText = 4, kFont = 6, kSizes = 7, kSize = 8 };

class Annotation : public OpenSettings {
protected:
    void SetUp() override
    {
        OpenSettings::SetUp();
        prepare();
    }

    void reopenBefore7()
    {
        configuration.systemVersion = 0x0605;
        reopen();
        prepare();
    }

    void prepare()
    {
        ShowWindow(gCustomDialog);
        SelectWindow(gCustomDialog);
        toolbox::setPascal(settings.annoText, "before", 255);
        toolbox::setPascal(settings.annoSizeStr, "9", 15);
        user.in(kAnnoDialogID);
    }

    bool run()
    {
        Boolean confirmed = false;
        guarded([&] { confirmed = HandleAnnoDialog(); });
        EXPECT_TRUE(user.idle());
        return confirmed;
    }

    std::string field(int16_t number)
    {
        int16_t type;
        Handle item;
        Rect box;
        Str255 text;
        GetDItem(gTheDialog, number, &type, &item, &box);
        GetIText(item, text);
        return plain(text);
    }

    int currentField() { return reinterpret_cast<DialogPeek>(gTheDialog)->editField + 1; }

    void fill(int16_t number, const std::string &text)
    {
        user.then([=] {
            int16_t type;
            Handle item;
            Rect box;
            GetDItem(gTheDialog, number, &type, &item, &box);
            SetIText(item, P(text));
        });
    }

    void fillText(const std::string &text) { fill(kText, text); }

    void typeSize(const std::string &text)
    {
        user.key("tab");
        user.key("backspace");
        user.type(text);
    }

    void paste(const std::string &text)
    {
        user.putOnClipboard(text);
        user.key("v", cmdKey);
    }

    void expectRefused(int16_t messageID, const std::function<void()> &look)
    {
        user.key("return");
        dismiss();
        user.in(kAnnoDialogID);
        user.then(look);
        user.key("escape");
        EXPECT_FALSE(run());
        EXPECT_TRUE(traced(params(message(messageID))));
    }
};

}  // namespace annotation_dialog
