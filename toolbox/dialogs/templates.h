// Reading 'DLOG', 'ALRT' and 'DITL' resources. Private to the Dialog Manager.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "toolbox/types.h"

namespace toolbox::dialogs {

struct DialogTemplate {
    Rect bounds{};           // where the resource wants it, global
    int16_t procID = 0;
    bool visible = false;
    bool goAway = false;
    int32_t refCon = 0;
    int16_t itemsID = 0;
    std::string title;       // Mac OS Roman
    bool alert = false;      // made from an 'ALRT'
};

struct AlertTemplate {
    Rect bounds{};
    int16_t itemsID = 0;
    // What happens the first to fourth time in succession.
    struct Stage {
        int16_t defaultItem;
        bool showsBox;
        int sounds;
    } stages[4];
};

struct ItemTemplate {
    Rect box{};
    int16_t type = 0;
    std::string data;        // title, text, or two bytes of a number
    int16_t number() const;  // of the resource that an icon or control item names
};

// From a resource's bytes; nothing if they are cut short.
std::optional<DialogTemplate> parseDialog(const std::string &bytes);
std::optional<AlertTemplate> parseAlert(const std::string &bytes);
std::optional<std::vector<ItemTemplate>> parseItems(const std::string &bytes);

// The same from the resource itself; nothing also if it is missing.
std::optional<DialogTemplate> readDialog(int16_t id);
std::optional<AlertTemplate> readAlert(int16_t id);
std::optional<std::vector<ItemTemplate>> readItems(int16_t id);

struct ControlTemplate {
    Rect box{};
    int16_t value = 0, min = 0, max = 0, procID = 0;
    bool visible = false;
    int32_t refCon = 0;
    std::string title;
};
std::optional<ControlTemplate> readControl(int16_t id);

}  // namespace toolbox::dialogs
