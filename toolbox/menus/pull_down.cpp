// MenuSelect: the menus that hang from the bar.
#include "menus/menu_result.h"
#include "menus/menu_bar.h"
#include "menus/menu_bytes.h"
#include "menus/tracker.h"
#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/trace.h"
#include "toolbox/keys.h"

namespace toolbox::menus {
namespace {

class PullDown : public Tracker {
public:
    explicit PullDown(Point start)
    {
        startPress(start);
        mouseAt(start);
        // As mouseAt left them, or not.
        startTitle_ = open_;  // NOLINT(cppcoreguidelines-prefer-member-initializer)
        leftTitle_ = false;   // NOLINT(cppcoreguidelines-prefer-member-initializer)
    }
    // By a key that stands for the title.
    explicit PullDown(const Title &title) : byKey_(true)
    {
        startByKey();
        open(title);
        startTitle_ = open_;  // NOLINT(cppcoreguidelines-prefer-member-initializer)
    }
    int choose() { return track(); }
    std::int16_t menu() const { return open_; }

protected:
    void mouseAt(Point mouse) override
    {
        if (std::optional<Title> title = titleAt(mouse); title && title->id != open_)
            open(*title);
        onItem_ |= down_ && down_->view().holds(mouse);
        std::optional<Title> over = titleAt(mouse);
        leftTitle_ |= !over || over->id != startTitle_;
    }

    // True for a release on the title that was pressed, unless the mouse has
    // been over the items, or elsewhere in a press that was not short.
    bool staysOpenAt(Point where) const override
    {
        std::optional<Title> title = titleAt(where);
        return title && title->id == startTitle_ && !onItem_ && (quick() || !leftTitle_);
    }

    bool pressBeside(Point where) override
    {
        std::optional<Title> title = titleAt(where);
        if (!title || title->id == open_)
            return false;
        startPress(where);
        byKey_ = false;
        open(*title);
        startTitle_ = open_;
        onItem_ = leftTitle_ = false;
        return true;
    }

    void stepSideways(int direction) override
    {
        std::vector<Title> all = titles();
        for (std::size_t i = 0; i < all.size(); ++i)
            if (all[i].id == open_)
                return open(all[(i + all.size() + static_cast<std::size_t>(direction)) % all.size()]);
    }

private:
    void open(const Title &title)
    {
        down_.reset();
        open_ = title.id;
        HiliteMenu(title.id);
        trace::line("menu %d opened", title.id);
        if (itemCount(title.menu) == 0)
            return;
        down_.emplace(title.menu, MenuView::below(title.menu, title.menuLeft));
        if (byKey_)
            down_->step(1);
    }

    std::int16_t open_ = 0;         // 0: none yet
    std::int16_t startTitle_ = 0;
    bool onItem_ = false;
    bool leftTitle_ = false;
    bool byKey_ = false;
};

// The title that the key opens: the first for F10, else the one that begins with the letter typed with Option.
std::optional<Title> titleForKey(const EventRecord &event)
{
    constexpr unsigned f10 = 0x6D;
    const auto small = [](unsigned c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
    const auto character = static_cast<unsigned>(event.message & charCodeMask);
    const std::vector<Title> all = titles();
    if (event.what != keyDown || all.empty())
        return std::nullopt;
    if (character == key::function && (event.message & keyCodeMask) >> 8 == f10)
        return all.front();
    if (!(event.modifiers & optionKey) || event.modifiers & cmdKey)
        return std::nullopt;
    for (const Title &title : all)
        if (const std::string text = menuTitle(title.menu);
            !text.empty() && text[0] > ' ' && small(static_cast<unsigned char>(text[0])) == small(character))
            return title;
    return std::nullopt;
}

int32_t resultOf(PullDown &pullDown)
{
    int chosen = pullDown.choose();
    std::int16_t id = pullDown.menu();
    if (chosen == 0) {
        HiliteMenu(0);
        if (id != 0)
            trace::line("menu %d gave nothing", id);
        return 0;
    }
    trace::line("menu %d gave %d", id, chosen);
    return menuResult(id, chosen);
}

}  // namespace
}  // namespace toolbox::menus

using namespace toolbox;
using namespace toolbox::menus;

extern "C" int32_t MenuSelect(Point start)
{
    quickdraw::PortScope port(quickdraw::desktopPort());
    HiliteMenu(0);
    PullDown pullDown(start);
    return resultOf(pullDown);
}

std::optional<std::int32_t> toolbox::menuSelectByKey(const EventRecord &event)
{
    quickdraw::PortScope port(quickdraw::desktopPort());
    const std::optional<Title> title = titleForKey(event);
    if (!title)
        return std::nullopt;
    HiliteMenu(0);
    PullDown pullDown(*title);
    return resultOf(pullDown);
}
