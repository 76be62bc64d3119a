// The boundary between a host and the plug-in, for anyone writing a host;
// docs/another-host.md goes through a small one.
//
// The plug-in is a shared object with one exported name, main_entry, and a
// resource fork. The host loads it with dlopen(RTLD_NOW); the Toolbox calls it
// leaves unresolved are found in the host program, which must export them.
//
// Message block and callback table are bytes with a fixed layout: big-endian,
// 32-bit addresses. On a 64-bit machine everything a 32-bit address names must
// lie below 4 GiB: the callback table and the procedures in it. A host linked
// with -no-pie has its own code and static data there.
//
// Each selector and each callback below says, in this order:
//   Thread:    on which thread it is called
//   When:      when it may be called
//   May call:  what may be called from within it
//   Frees:     who frees what it allocates
//   Pointers:  how long what it is given must stay, or stays, valid
// "The Toolbox's thread" is the one that started the Toolbox. "Ready" means
// that the Toolbox is started, the plug-in's resource fork is open and is the
// current resource file, and no other call of main_entry is in progress.
// "Modal" means that it shows dialogs and returns when the user has closed them.
#pragma once

#include "toolbox/bigendian.h"
#include "toolbox/dialogs.h"

// What the host wants done; MessageBlock::selector. Any other selector does
// nothing and returns 0.
enum {
    // Which interface is this? Returns kRidersInterface.
    //   Thread:    the Toolbox's thread.
    //   When:      whenever ready; also as the first call.
    //   May call:  neither the Toolbox nor the host.
    //   Frees:     nothing is allocated.
    //   Pointers:  the block, until the call returns; its hostProcs is not read.
    kSelectIdentify = 0,

    // Registers the menu commands through addMenuItem. Returns 0, or 1 after a
    // message to the user when a name is missing from the resources or memory
    // has run out: the commands registered before that stay.
    //   Thread:    the Toolbox's thread.
    //   When:      whenever ready; once, before any kSelectCommand.
    //   May call:  the Toolbox, addMenuItem; modal if there is a message.
    //   Frees:     the plug-in, all that it allocated, before the call returns.
    //   Pointers:  the block and the callback table, until the call returns.
    kSelectStartUp = 1,

    // Shows the About box, and saves the settings. Returns 0.
    //   Thread:    the Toolbox's thread.
    //   When:      whenever ready.
    //   May call:  the Toolbox; modal.
    //   Frees:     the plug-in, all that it allocated, before the call returns.
    //   Pointers:  the block, until the call returns; its hostProcs is not read.
    kSelectAbout = 2,

    // Does nothing. Returns 0.
    //   Thread:    the Toolbox's thread.
    //   When:      whenever ready.
    //   May call:  neither the Toolbox nor the host.
    //   Frees:     nothing is allocated.
    //   Pointers:  the block, until the call returns; its hostProcs is not read.
    kSelectIdle = 3,

    // Runs the menu command in MessageBlock::command, and saves the settings.
    // Returns 0 however it went: failures have been shown to the user.
    //   Thread:    the Toolbox's thread.
    //   When:      whenever ready, after kSelectStartUp.
    //   May call:  the Toolbox, dialogFilter; modal.
    //   Frees:     the plug-in, all that it allocated, before the call returns.
    //   Pointers:  the block and the callback table, until the call returns.
    kSelectCommand = 4
};

// MessageBlock::command with kSelectCommand: the numbers that addMenuItem was
// given. Any other number runs nothing, but the settings are loaded and saved.
enum { kCommandSettings = 0, kCommandRemove = 1 };

enum : int32_t { kRidersInterface = 0x05000001 };

// Owned by the host; the plug-in reads it and keeps nothing of it after the call.
struct MessageBlock {
    BigPointer hostProcs;   // a HostProcs; needed with kSelectStartUp and
                            // kSelectCommand
    unsigned char unused[4];
    BigInt16 selector;
    BigInt16 command;       // read with kSelectCommand only
};

// Called once for each command. group: the heading under which the host files
// the command; text: the command's name; both in Mac OS Roman. number: what
// comes back in MessageBlock::command. The result is ignored.
//   Thread:    the thread that called main_entry.
//   When:      during kSelectStartUp.
//   May call:  the Toolbox, but not main_entry; leaves the current port and the
//              current resource file as they were.
//   Frees:     the host, what it allocated; nothing that it is given.
//   Pointers:  the plug-in's strings, until it returns; the host copies them.
typedef int32_t (*AddMenuItemProc)(ConstStr255Param group, ConstStr255Param text, int32_t number);

// Called for every event that the settings dialog does not handle itself: keys
// that mean nothing to it, clicks outside its popups, updates and activates of
// any window, null events. True: handled, with *itemHit set.
// *itemHit may already be 2 when it is called. May change the event.
//   Thread:    the thread that called main_entry.
//   When:      during kSelectCommand with kCommandSettings, while the settings
//              dialog waits for input.
//   May call:  the Toolbox, alerts and modal dialogs too, but not main_entry;
//              leaves the current port and the current resource file as they were.
//   Frees:     the host, what it allocated; nothing that it is given.
//   Pointers:  the dialog, the event and itemHit, until it returns.
typedef ModalFilterProcPtr HostFilterProc;

// The host's callback table. Entries not named here are not read.
struct HostProcs {
    BigPointer reserved0;
    BigPointer addMenuItem;     // AddMenuItemProc; must be there with kSelectStartUp
    BigPointer reserved2;
    BigPointer reserved3;
    BigPointer dialogFilter;    // HostFilterProc; 0: the host wants no events
};

static_assert(offsetof(MessageBlock, hostProcs) == 0);
static_assert(offsetof(MessageBlock, selector) == 8);
static_assert(offsetof(MessageBlock, command) == 10);
static_assert(sizeof(MessageBlock) == 12);
static_assert(offsetof(HostProcs, addMenuItem) == 4);
static_assert(offsetof(HostProcs, dialogFilter) == 16);

// The plug-in's one exported name. Nothing lasts from one call to the next but
// the preferences file.
//
// A fatal error is shown and then ends the process through ExitToShell, which
// throws toolbox::ProcessEnded (toolbox/host/session.h); what a machine throws
// to end a session passes through the plug-in in the same way. Such a call
// frees nothing: toolbox::stop() does, and must come before the next call.
//   Thread:    the Toolbox's thread.
//   When:      whenever ready.
//   May call:  what the selector says.
//   Frees:     what the selector says.
//   Pointers:  what the selector says.
extern "C" int32_t main_entry(MessageBlock *block);
typedef int32_t (*MainEntryProc)(MessageBlock *block);
