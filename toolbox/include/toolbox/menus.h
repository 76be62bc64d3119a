// Menu Manager: menus from 'MENU' resources, the menu bar, and pop-up menus.
//
// A menu is its resource: the block holds the 'MENU' bytes, and the calls here
// change them in place. GetMenu of a menu already loaded gives the same
// handle, with its changes; ReleaseResource forgets them.
//
// Items count from 1. Calls that change an item do nothing for an item number
// of 0 or beyond the menu, nor when memory is full; a nil menu has no items.
// May be called at any time between start and stop of the Toolbox. Those that
// add to a menu or lengthen a text allocate, and so do the two that select.
//
// A menu is used in either of two ways. Press, drag, release: the item that the
// button is released over is chosen. Click, click: a press released at once
// leaves the menu open, and the next click chooses an item, or closes the menu
// where there is none. In a menu that was left open the arrow keys move, Return
// and Enter choose, Escape and Command-period close it. A menu higher than the
// display scrolls while the mouse is over its first or last row. A change of the
// displays, and the wish to end the program, close it with nothing chosen.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef Ptr *MenuHandle;

// Loads 'MENU' id; nil when missing or when its bytes are no menu. A resource:
// ReleaseResource, after DeleteMenu. Never purged.
MenuHandle GetMenu(int16_t id);
// An empty menu that is no resource: DisposeMenu. Nil: memory is full.
MenuHandle NewMenu(int16_t id, ConstStr255Param title);
// Takes the menu out of the list and frees it.
void DisposeMenu(MenuHandle menu);
// How many items it has.
int16_t CountMItems(MenuHandle menu);
// Text of an item; empty beyond the menu.
void GetItem(MenuHandle menu, int16_t item, Str255 text);
// Replaces an item's text as it stands, up to 255 characters. An empty text
// becomes one blank, since an empty item would end the menu.
void SetItem(MenuHandle menu, int16_t item, ConstStr255Param text);
// Adds items: ';' or CR between them, '(' disables, '!' and a character marks,
// '/' and a character gives a key, '^' and a digit an icon, '<' and one of
// B I U O S a style. A text that begins with '-' is a divider.
void AppendMenu(MenuHandle menu, ConstStr255Param data);
// Adds the names of all resources of the type, sorted, each once, leaving out
// those that begin with '.' or '%'. For 'FONT' the families of the installed
// fonts are among them.
void AddResMenu(MenuHandle menu, ResType type);
// Sets the mark to the check mark (0x12) or to none (0), whatever it was.
void CheckItem(MenuHandle menu, int16_t item, Boolean checked);
// The character of the mark; 0 for none, and beyond the menu.
void GetItemMark(MenuHandle menu, int16_t item, int16_t *mark);
// Item 0 is the whole menu; an item keeps its own state under it. Items beyond
// 31 are enabled as the menu is.
void EnableItem(MenuHandle menu, int16_t item);
void DisableItem(MenuHandle menu, int16_t item);
// Into the list, where GetMHandle finds it. before: -1 for a pop-up menu; else
// into the menu bar, before the menu of that ID or, when it is not there,
// after all. A second menu of an ID is left out. The bar is drawn by
// DrawMenuBar.
void InsertMenu(MenuHandle menu, int16_t before);
// Out of the list; the menu itself stays.
void DeleteMenu(int16_t id);
// The menu in the list with that ID; nil when there is none. The caller's as
// before.
MenuHandle GetMHandle(int16_t id);
// Takes all menus out of the bar; pop-up menus stay in the list.
void ClearMenuBar(void);
// Draws the bar, 20 pixels high along the top of the main display, with the titles of
// its menus; that of a disabled menu is dimmed. Drawn again without being asked
// when the displays change.
void DrawMenuBar(void);
// Tracks the mouse from a press at the global point in the menu bar. Returns
// menu ID and item in the high and low words, 0 when nothing was chosen. The
// title of a menu that was chosen from stays inverted: HiliteMenu(0) when the
// command has been carried out. An item's key is shown as Ctrl and the key.
int32_t MenuSelect(Point start);
// The enabled item of the bar with this key, capital or small, as MenuSelect
// returns it, its title inverted likewise; 0 when there is none.
int32_t MenuKey(int16_t character);
// Inverts the title of that menu in the bar and of no other; 0 none.
void HiliteMenu(int16_t id);
// Shows the menu with the item's top left at the global point, moved as far as
// needed to lie on the display that holds the point, and tracks the mouse. The
// button must be down or have been released just now. Returns menu ID and item
// in the high and low words; 0 when nothing was chosen: released outside, over
// a divider or over a disabled item. The item under the mouse is usually the
// current one: a press that is released within GetDblTime and within 3 pixels
// leaves the menu open, any other chooses. Marks stay as they are.
int32_t PopUpMenuSelect(MenuHandle menu, int16_t top, int16_t left, int16_t item);

// The two halves of what MenuSelect, MenuKey and PopUpMenuSelect return.
static inline int16_t HiWord(int32_t value) { return (int16_t)((uint32_t)value >> 16); }
static inline int16_t LoWord(int32_t value) { return (int16_t)(value & 0xFFFF); }

#ifdef __cplusplus
}
#endif
