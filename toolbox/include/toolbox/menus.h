// Menu Manager: menus from 'MENU' resources, and pop-up menus.
//
// A menu is its resource: the block holds the 'MENU' bytes, and the calls here
// change them in place. GetMenu of a menu already loaded gives the same
// handle, with its changes; ReleaseResource forgets them.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef Ptr *MenuHandle;

// Loads 'MENU' id; nil when missing. A resource: ReleaseResource.
MenuHandle GetMenu(int16_t id);
// An empty menu that is no resource: DisposeMenu.
MenuHandle NewMenu(int16_t id, ConstStr255Param title);
void DisposeMenu(MenuHandle menu);
int16_t CountMItems(MenuHandle menu);
// Text of an item (from 1); empty beyond the menu.
void GetItem(MenuHandle menu, int16_t item, Str255 text);
// Replaces an item's text as it stands, up to 255 characters.
void SetItem(MenuHandle menu, int16_t item, ConstStr255Param text);
void AppendMenu(MenuHandle menu, ConstStr255Param data);
// Adds the names of all resources of the type, sorted. For 'FONT': the fonts.
void AddResMenu(MenuHandle menu, ResType type);
void CheckItem(MenuHandle menu, int16_t item, Boolean checked);
void GetItemMark(MenuHandle menu, int16_t item, int16_t *mark);
void EnableItem(MenuHandle menu, int16_t item);
void DisableItem(MenuHandle menu, int16_t item);
// before -1: into the list of pop-up and submenus.
void InsertMenu(MenuHandle menu, int16_t before);
void DeleteMenu(int16_t id);
MenuHandle GetMHandle(int16_t id);
// Shows the menu with the item's top left at the global point, tracks until
// the mouse is released, and answers menu ID and item in the high and low
// words; 0 in the high word when nothing was chosen. The button must be down.
int32_t PopUpMenuSelect(MenuHandle menu, int16_t top, int16_t left, int16_t item);

static inline int16_t HiWord(int32_t value) { return (int16_t)((uint32_t)value >> 16); }
static inline int16_t LoWord(int32_t value) { return (int16_t)(value & 0xFFFF); }

#ifdef __cplusplus
}
#endif
