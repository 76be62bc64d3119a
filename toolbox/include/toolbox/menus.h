// Menu Manager: menus from 'MENU' resources, the menu bar, and pop-up menus.
//
// A menu is its resource: the block holds the 'MENU' bytes, and the calls here
// change them in place. GetMenu of a menu already loaded gives the same
// handle, with its changes; ReleaseResource forgets them.
//
// Items are counted from 1. Calls that change an item do nothing for an item number
// of 0 or beyond the last, or when memory is full; a nil menu has no items.
// May be called at any time between start and stop of the Toolbox. Those that
// add to a menu or lengthen a text allocate, and so do the two that select.
//
// A menu is used in either of two ways. Press, drag, release: the item that the
// button is released over is chosen. Click, click: a press released at once
// leaves the menu open, and the next click chooses an item, or closes the menu
// if there is none there. In a menu that was left open the arrow keys move from
// item to item, Return and Enter choose, Escape and Command-period close it. A
// menu taller than the display scrolls while the mouse is over its first or last
// row. A change of the displays, or a request to end the program, closes it with
// nothing chosen.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef Ptr *MenuHandle;

// Loads 'MENU' id; nil when missing or when its bytes are not a menu. A resource:
// free it with ReleaseResource, after DeleteMenu. Never purged.
MenuHandle GetMenu(int16_t id);
// An empty menu that is not a resource: free it with DisposeMenu. Nil: memory is
// full.
MenuHandle NewMenu(int16_t id, ConstStr255Param title);
// Takes the menu out of the list and frees it.
void DisposeMenu(MenuHandle menu);
// How many items it has.
int16_t CountMItems(MenuHandle menu);
// Text of an item; empty beyond the last.
void GetItem(MenuHandle menu, int16_t item, Str255 text);
// Replaces an item's text, which is taken literally, up to 255 characters. An
// empty text becomes one blank, since an empty item would end the menu.
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
// The character of the mark; 0 for none, and beyond the last item.
void GetItemMark(MenuHandle menu, int16_t item, int16_t *mark);
// Item 0 is the whole menu, whose items keep their own states. Items beyond 31
// are enabled whenever the menu is.
void EnableItem(MenuHandle menu, int16_t item);
void DisableItem(MenuHandle menu, int16_t item);
// Adds the menu to the list, where GetMHandle finds it. before: -1 for a pop-up
// menu; else into the menu bar, before the menu with that ID or, if it is not
// there, after all others. A second menu with the same ID is not added. The bar is
// drawn by DrawMenuBar.
void InsertMenu(MenuHandle menu, int16_t before);
// Takes the menu out of the list; the menu itself stays.
void DeleteMenu(int16_t id);
// The menu in the list with that ID; nil when there is none. Who owns it does not
// change.
MenuHandle GetMHandle(int16_t id);
// Takes all menus out of the bar; pop-up menus stay in the list.
void ClearMenuBar(void);
// Draws the bar, 20 pixels high along the top of the main display, with the titles
// of its menus; that of a disabled menu is dimmed. When the displays change, it is
// redrawn without a call.
void DrawMenuBar(void);
// Tracks the mouse from a press at the global point in the menu bar. Returns
// menu ID and item in the high and low words, 0 when nothing was chosen. The
// title of a menu that was chosen from stays inverted: call HiliteMenu(0) when the
// command has been carried out. An item's key is shown as Ctrl and the key.
int32_t MenuSelect(Point start);
// The enabled item of the bar with this key, capital or small, as MenuSelect
// returns it, its title inverted likewise; 0 when there is none.
int32_t MenuKey(int16_t character);
// Inverts the title of that menu in the bar and of no other; 0: of none.
void HiliteMenu(int16_t id);
// Shows the menu with the item's top left at the global point, moved as far as
// needed to lie on the display that holds the point, and tracks the mouse. The
// button must be down or just have been released. Returns menu ID and item
// in the high and low words; 0 when nothing was chosen: released outside, over
// a divider or over a disabled item. The item under the mouse is usually the
// current one: a press that is released within GetDblTime and within 3 pixels
// leaves the menu open; one held longer in one place never chooses another item; any other
// chooses. Marks stay as they are.
int32_t PopUpMenuSelect(MenuHandle menu, int16_t top, int16_t left, int16_t item);

// The two halves of what MenuSelect, MenuKey and PopUpMenuSelect return.
static inline int16_t HiWord(int32_t value) { return (int16_t)((uint32_t)value >> 16); }
static inline int16_t LoWord(int32_t value) { return (int16_t)(value & 0xFFFF); }

#ifdef __cplusplus
}
#endif
