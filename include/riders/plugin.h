// The boundary between a host and the plug-in, for anyone writing a host.
//
// The plug-in is a shared object with one exported name, main_entry, and a
// resource fork. The host loads it with dlopen(RTLD_NOW); the Toolbox calls it
// leaves unresolved are found in the host program, which must export them.
// Before every call the plug-in's resource fork must be open and be the
// current resource file, and the Toolbox must be started.
//
// Message block and callback table are bytes with a fixed layout: big-endian,
// 32-bit addresses. On a 64-bit machine everything a 32-bit address names must
// lie below 4 GiB: the callback table and the procedures in it. A host linked
// with -no-pie has its own code and static data there.
#pragma once

#include "toolbox/bigendian.h"
#include "toolbox/dialogs.h"

// What the host wants done; MessageBlock::selector.
enum {
    // Which interface is this? Answers kRidersInterface. Any time, also first;
    // allocates nothing.
    kSelectIdentify = 0,
    // Register the menu commands through addMenuItem. Once, before any
    // kSelectCommand. 0, or 1 when a name is missing from the resources: the
    // commands registered by then stay.
    kSelectStartUp = 1,
    // Show the About box. Modal; answers 0.
    kSelectAbout = 2,
    // Nothing to do; answers 0.
    kSelectIdle = 3,
    // Run the menu command in MessageBlock::command. Modal; answers 0 however
    // it went, failures have been shown to the user.
    kSelectCommand = 4
};

// MessageBlock::command with kSelectCommand: the numbers that addMenuItem was
// given. Any other number runs nothing, but the settings are loaded and saved.
enum { kCommandSettings = 0, kCommandRemove = 1 };

enum : int32_t { kRidersInterface = 0x05000001 };

// The host's; the plug-in reads it and keeps nothing of it after the call.
struct MessageBlock {
    BigPointer hostProcs;   // a HostProcs; needed with kSelectStartUp and
                            // kSelectCommand
    unsigned char unused[4];
    BigInt16 selector;
    BigInt16 command;       // read with kSelectCommand only
};

// Called during kSelectStartUp, once for each command. group: the heading under
// which the host files the command; text: the command's name; number: what
// comes back in MessageBlock::command. The strings are the plug-in's and good
// for the call only. The result is ignored.
typedef int32_t (*AddMenuItemProc)(ConstStr255Param group, ConstStr255Param text, int32_t number);

// Called from within the settings dialog for every event that the dialog does
// not take itself: keys without a meaning of its own, clicks outside its
// popups, updates and activates of any window, null events. True: handled, with
// *itemHit set. *itemHit may already be 2 when it is called. May change the
// event, may run alerts; must leave the port as it was.
typedef ModalFilterProcPtr HostFilterProc;

// The host's callback table. Must stay where it is for the length of a call.
struct HostProcs {
    BigPointer reserved0;
    BigPointer addMenuItem;     // AddMenuItemProc
    BigPointer reserved2;
    BigPointer reserved3;
    BigPointer dialogFilter;    // HostFilterProc
};

static_assert(offsetof(MessageBlock, hostProcs) == 0);
static_assert(offsetof(MessageBlock, selector) == 8);
static_assert(offsetof(MessageBlock, command) == 10);
static_assert(sizeof(MessageBlock) == 12);
static_assert(offsetof(HostProcs, addMenuItem) == 4);
static_assert(offsetof(HostProcs, dialogFilter) == 16);

// The plug-in's one exported name. One call at a time, on the thread that runs
// the Toolbox; never again from within a call. Every record the call makes is
// freed before it returns, so nothing but the preferences file lasts. A fatal
// error is shown and then ends the process through ExitToShell: the call does
// not return, and the host's exit runs instead.
extern "C" int32_t main_entry(MessageBlock *block);
typedef int32_t (*MainEntryProc)(MessageBlock *block);
