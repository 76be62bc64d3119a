// Standard File with its own dialogs and a scripted user.
#pragma once

#include "support/dialog_resources.h"
#include "support/toolbox_test.h"

#include "compiler.h"
#include "standardfile/state.h"
#include "toolbox/host/user.h"
#include "toolbox/resources.h"
#include "toolbox/standardfile.h"

namespace fs = std::filesystem;

class StandardFileTest : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        fs::create_directory(here());
        configuration.startFolder = here();
        restart();
        openDialogs();
    }
    // Compiles and opens the dialogs as they ship.
    void openDialogs()
    {
        const fs::path source = fs::path(RIDERS_SOURCE_DIR) / "resources/standardfile.res";
        writeFile(folder / "dialogs", "");
        writeFile(folder / "._dialogs", rescomp::appleDoubleAround(rescomp::compile(source).fork({source, 1})));
        int16_t wd = *toolbox::folders::workingDirectory(folder.path());
        ASSERT_NE(HOpenResFile(wd, 0, P("dialogs"), 1), -1);
        before = toolbox::leftBehind();
        trace.clear();
    }
    void TearDown() override
    {
        EXPECT_TRUE(user.idle());
        ToolboxTest::TearDown();
    }

    fs::path here() { return folder / "files"; }
    SFReply save(const std::string &name = "untitled", DlgHookProcPtr hook = nullptr)
    {
        SFReply reply;
        SFPPutFile({100, 120}, P("Save it as:"), P(name), hook, &reply, 16399, nullptr);
        return reply;
    }
    SFReply open(std::vector<OSType> types = {'TEXT'}, int16_t dialogID = 16400, FileFilterProcPtr filter = nullptr)
    {
        SFReply reply;
        SFPGetFile({100, 120}, P(""), filter, static_cast<int16_t>(types.size()), types.data(), nullptr, &reply,
                   dialogID, nullptr);
        return reply;
    }
    // The file that a reply names.
    static fs::path chosen(const SFReply &reply) { return toolbox::folders::pathOf(reply.vRefNum, 0, reply.fName); }
    static std::vector<std::string> names()
    {
        std::vector<std::string> names;
        auto state = toolbox::standardfile::state();
        for (const auto &row : state->rows)
            names.push_back(row.name + (row.isFolder ? "/" : row.selectable ? "" : " (dim)"));
        return names;
    }
    static std::string selectedName()
    {
        auto state = toolbox::standardfile::state();
        return state->selected < 0 ? "" : state->rows[static_cast<std::size_t>(state->selected)].name;
    }
    static bool dimmed(int item)
    {
        int16_t type;
        Handle handle;
        Rect box;
        GetDItem(FrontWindow(), static_cast<int16_t>(item), &type, &handle, &box);
        return (**reinterpret_cast<ControlHandle>(handle)).contrlHilite == 255;
    }
    static Point middleOfRow(const std::string &name)
    {
        auto state = toolbox::standardfile::state();
        for (std::size_t i = 0; i < state->rows.size(); ++i)
            if (state->rows[i].name == name) {
                const Rect &r = state->rowRects[i];
                return {static_cast<int16_t>((r.top + r.bottom) / 2), static_cast<int16_t>((r.left + r.right) / 2)};
            }
        throw std::runtime_error("no row " + name);
    }
    // Clicks the row when the step is reached.
    void clickRow(const std::string &name, int times = 1)
    {
        user.then([=, this] {
            user.insertNext([=, this] {
                for (int i = 0; i < times; ++i)
                    user.clickAt(middleOfRow(name));
            });
        });
    }
    void expectNothingLeft() { EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text(); }

    toolbox::ScriptedUser user{machine};
    toolbox::LeakReport before;
};
