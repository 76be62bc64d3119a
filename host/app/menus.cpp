#include "app/menus.h"

#include "toolbox/host/text.h"

namespace riders::app {
namespace {

enum Menu : int16_t { programMenu = 128, fileMenu, editMenu, pluginMenu, displayMenu };
enum FileItem : int16_t { openItem = 1, closeItem, quitItem = 4 };
enum DisplayItem : int16_t { fullScreenItem = 1, firstDepthItem = 3 };
constexpr int kDepths[] = {1, 2, 4, 8, 32};

void insert(int16_t id)
{
    MenuHandle menu = GetMenu(id);
    if (!menu)
        throw plugin::PluginError("menu " + std::to_string(id) + " is missing from the program's resources");
    InsertMenu(menu, 0);
}

void setText(const std::string &utf8, Str255 text)
{
    toolbox::setPascal(text, toolbox::romanFromUtf8Lossy(utf8));
}

}  // namespace

Menus::Menus(const std::vector<plugin::MenuCommand> &commands, const std::optional<DisplaySettings> &display)
    : commands_(commands), display_(display)
{
    insert(programMenu);
    insert(fileMenu);
    insert(editMenu);
    addCommands();
    if (display_)
        insert(displayMenu);
    DrawMenuBar();
}

// Under the heading of the first one: a plug-in has only one heading.
void Menus::addCommands()
{
    if (commands_.empty())
        return;
    Str255 text;
    setText(commands_.front().group, text);
    MenuHandle menu = NewMenu(pluginMenu, text);
    for (std::size_t i = 0; menu && i < commands_.size(); ++i) {
        setText("x", text);
        AppendMenu(menu, text);
        setText(commands_[i].text, text);  // as it stands, without AppendMenu's notation
        SetItem(menu, static_cast<int16_t>(i + 1), text);
    }
    InsertMenu(menu, 0);
}

void Menus::update(bool documentOpen)
{
    MenuHandle file = GetMHandle(fileMenu);
    if (documentOpen)
        EnableItem(file, closeItem);
    else
        DisableItem(file, closeItem);
    if (!display_)
        return;
    MenuHandle display = GetMHandle(displayMenu);
    CheckItem(display, fullScreenItem, display_->fullScreen());
    for (std::size_t i = 0; i < std::size(kDepths); ++i)
        CheckItem(display, static_cast<int16_t>(firstDepthItem + i), display_->depth() == kDepths[i]);
}

Command Menus::chosen(int32_t choice) const
{
    using Kind = Command::Kind;
    const int16_t item = LoWord(choice);
    switch (HiWord(choice)) {
    case programMenu:
        return {Kind::about};
    case fileMenu:
        return {item == openItem ? Kind::open : item == closeItem ? Kind::close : Kind::quit};
    case pluginMenu:
        return {Kind::plugin, commands_.at(static_cast<std::size_t>(item - 1)).number};
    case displayMenu:
        if (item == fullScreenItem)
            return {Kind::fullScreen};
        return {Kind::depth, kDepths[item - firstDepthItem]};
    default:
        return {};
    }
}

}  // namespace riders::app
