#include "support/toolbox_test.h"

#include <cstring>
#include <new>
#include <stdexcept>

#include "memory/heap.h"
#include "toolbox/memory.h"

namespace heap = toolbox::heap;

class Memory : public ToolboxTest {
protected:
    // A heap of a stated size, including what the managers took at start.
    void smallHeap(std::int32_t bytes)
    {
        configuration.heapBytes = bytes;
        restart();
    }
};

TEST_F(Memory, PointerBlockIsCountedUntilDisposed)
{
    Ptr block = NewPtr(100);
    ASSERT_TRUE(block);
    EXPECT_EQ(toolbox::leftBehind().pointers, 1);
    DisposePtr(block);
    EXPECT_EQ(MemError(), noErr);
    EXPECT_EQ(toolbox::leftBehind().pointers, 0);
}

TEST_F(Memory, DisposingNilPointerDoesNothing)
{
    DisposePtr(nullptr);
    EXPECT_EQ(MemError(), noErr);
}

TEST_F(Memory, DisposingAPointerTwiceIsRefused)
{
    Ptr block = NewPtr(8);
    DisposePtr(block);
    DisposePtr(block);
    EXPECT_EQ(MemError(), memWZErr);
}

TEST_F(Memory, ClearedBlocksAreZero)
{
    Ptr block = NewPtrClear(64);
    Handle handle = NewHandleClear(64);
    const char zeros[64] = {};
    EXPECT_EQ(std::memcmp(block, zeros, 64), 0);
    EXPECT_EQ(std::memcmp(*handle, zeros, 64), 0);
    DisposePtr(block);
    DisposeHandle(handle);
}

TEST_F(Memory, EmptyHandleIsNotNil)
{
    Handle handle = NewHandle(0);
    ASSERT_TRUE(handle);
    EXPECT_TRUE(*handle);
    EXPECT_EQ(GetHandleSize(handle), 0);
    EXPECT_EQ(MemError(), noErr);
    DisposeHandle(handle);
}

TEST_F(Memory, NegativeSizesAreRefused)
{
    EXPECT_FALSE(NewPtr(-1));
    EXPECT_EQ(MemError(), memFullErr);
    EXPECT_FALSE(NewHandle(INT32_MIN));
    EXPECT_EQ(MemError(), memFullErr);
    Handle handle = NewHandle(4);
    SetHandleSize(handle, -1);
    EXPECT_EQ(MemError(), memFullErr);
    EXPECT_EQ(GetHandleSize(handle), 4);
    DisposeHandle(handle);
}

TEST_F(Memory, DisposingAHandleTwiceOrNilIsRefused)
{
    Handle handle = NewHandle(8);
    DisposeHandle(handle);
    EXPECT_EQ(MemError(), noErr);
    DisposeHandle(handle);
    EXPECT_EQ(MemError(), memWZErr);
    DisposeHandle(nullptr);
    EXPECT_EQ(MemError(), memWZErr);
    EXPECT_EQ(toolbox::leftBehind().handles, 0);
}

TEST_F(Memory, AFreedHandleIsNotReusedAtOnce)
{
    Handle first = NewHandle(8);
    DisposeHandle(first);
    for (int i = 0; i < 1000; ++i) {
        Handle other = NewHandle(8);
        EXPECT_NE(other, first);
        DisposeHandle(other);
    }
    EXPECT_FALSE(heap::isLive(first));
}

TEST_F(Memory, MasterPointersAreReusedInTheEnd)
{
    for (int i = 0; i < 10000; ++i)
        DisposeHandle(NewHandle(1));
    Handle handle = NewHandle(5);
    EXPECT_EQ(GetHandleSize(handle), 5);
    DisposeHandle(handle);
}

TEST_F(Memory, OperationsOnAnUnknownHandleAreRefused)
{
    Ptr notAMaster = nullptr;
    EXPECT_EQ(GetHandleSize(&notAMaster), 0);
    EXPECT_EQ(MemError(), memWZErr);
    HLock(&notAMaster);
    EXPECT_EQ(MemError(), memWZErr);
    HLock(nullptr);
    EXPECT_EQ(MemError(), nilHandleErr);
}

TEST_F(Memory, SuccessResetsMemError)
{
    DisposeHandle(nullptr);
    ASSERT_EQ(MemError(), memWZErr);
    DisposeHandle(NewHandle(1));
    EXPECT_EQ(MemError(), noErr);
}

TEST_F(Memory, LockedIsAFlagNotACount)
{
    Handle handle = NewHandle(1);
    HLock(handle);
    HLock(handle);
    EXPECT_EQ(HGetState(handle), static_cast<int8_t>(0x80));
    HUnlock(handle);
    EXPECT_EQ(HGetState(handle), 0);
    DisposeHandle(handle);
}

TEST_F(Memory, StateIsSavedAndRestored)
{
    Handle handle = NewHandle(1);
    HLock(handle);
    HPurge(handle);
    int8_t state = HGetState(handle);
    EXPECT_EQ(static_cast<uint8_t>(state), 0xC0);
    HUnlock(handle);
    HNoPurge(handle);
    HSetState(handle, state);
    EXPECT_EQ(HGetState(handle), state);
    DisposeHandle(handle);
}

TEST_F(Memory, MoveHHiRefusesALockedBlock)
{
    Handle handle = NewHandle(1);
    MoveHHi(handle);
    EXPECT_EQ(MemError(), noErr);
    HLock(handle);
    MoveHHi(handle);
    EXPECT_EQ(MemError(), memLockedErr);
    DisposeHandle(handle);
}

TEST_F(Memory, SetHandleSizeKeepsWhatFits)
{
    Handle handle = NewHandle(0);
    ASSERT_EQ(PtrAndHand("abcdef", handle, 6), noErr);
    SetHandleSize(handle, 3);
    SetHandleSize(handle, 9);
    EXPECT_EQ(GetHandleSize(handle), 9);
    EXPECT_EQ(std::memcmp(*handle, "abc", 3), 0);
    DisposeHandle(handle);
}

TEST_F(Memory, ALockedBlockShrinksInPlaceAndCannotGrow)
{
    Handle handle = NewHandle(10);
    HLock(handle);
    Ptr place = *handle;
    SetHandleSize(handle, 4);
    EXPECT_EQ(MemError(), noErr);
    SetHandleSize(handle, 20);
    EXPECT_EQ(MemError(), memFullErr);
    EXPECT_EQ(GetHandleSize(handle), 4);
    EXPECT_EQ(*handle, place);
    DisposeHandle(handle);
}

TEST_F(Memory, MovingChangesEveryUnlockedAddressAndKeepsTheBytes)
{
    configuration.moveBlocks = true;
    restart();
    Handle loose = NewHandle(0), fixed = NewHandle(0);
    ASSERT_EQ(PtrAndHand("loose", loose, 5), noErr);
    ASSERT_EQ(PtrAndHand("fixed", fixed, 5), noErr);
    HLock(fixed);
    Ptr wasLoose = *loose, wasFixed = *fixed;
    Ptr other = NewPtr(1);
    EXPECT_NE(*loose, wasLoose);
    EXPECT_EQ(*fixed, wasFixed);
    EXPECT_EQ(std::string(*loose, 5), "loose");
    DisposePtr(other);
    DisposeHandle(loose);
    DisposeHandle(fixed);
}

TEST_F(Memory, AFailedAllocationMovesBlocksToo)
{
    configuration.moveBlocks = true;
    restart();
    Handle loose = NewHandle(5);
    Ptr was = *loose;
    EXPECT_FALSE(NewHandle(INT32_MAX));
    EXPECT_NE(*loose, was);
    DisposeHandle(loose);
}

TEST_F(Memory, TheHeapIsFullAtItsStatedSize)
{
    smallHeap(100000);
    Size room = FreeMem();
    EXPECT_LE(room, 100000);
    EXPECT_FALSE(NewPtr(room - heap::blockOverhead + 1));
    EXPECT_EQ(MemError(), memFullErr);
    Ptr all = NewPtr(room - heap::blockOverhead);
    EXPECT_TRUE(all);
    EXPECT_EQ(FreeMem(), 0);
    EXPECT_EQ(MaxMem(nullptr), 0);
    DisposePtr(all);
    EXPECT_EQ(FreeMem(), room);
}

TEST_F(Memory, WhatMaxMemReturnsCanBeAllocated)
{
    Size grow = 77;
    Size largest = MaxMem(&grow);
    EXPECT_EQ(grow, 0);
    EXPECT_FALSE(NewHandle(largest + 1));
    Handle handle = NewHandle(largest);
    EXPECT_TRUE(handle);
    DisposeHandle(handle);
}

TEST_F(Memory, MaxMemPurgesOnlyPurgeableUnlockedBlocks)
{
    Handle purgeable = NewHandle(1000), locked = NewHandle(1000), plain = NewHandle(1000);
    HPurge(purgeable);
    HPurge(locked);
    HLock(locked);
    Size before = CompactMem(0);
    EXPECT_TRUE(*purgeable);
    EXPECT_EQ(MaxMem(nullptr), before + 1000 + heap::blockOverhead);
    EXPECT_FALSE(*purgeable);
    EXPECT_TRUE(*locked);
    EXPECT_TRUE(*plain);
    EXPECT_EQ(GetHandleSize(purgeable), 0);
    EXPECT_EQ(MemError(), nilHandleErr);
    DisposeHandle(purgeable);
    EXPECT_EQ(MemError(), noErr);
    DisposeHandle(locked);
    DisposeHandle(plain);
}

TEST_F(Memory, AShortHeapPurgesByItself)
{
    Handle purgeable = NewHandle(5000);
    HPurge(purgeable);
    Handle large = NewHandle(FreeMem());
    ASSERT_TRUE(large);
    EXPECT_FALSE(*purgeable);
    DisposeHandle(large);
    DisposeHandle(purgeable);
}

TEST_F(Memory, GrowingNeverPurgesTheBlockItself)
{
    Handle handle = NewHandle(5);
    HPurge(handle);
    SetHandleSize(handle, INT32_MAX);
    EXPECT_EQ(MemError(), memFullErr);
    EXPECT_TRUE(*handle);
    EXPECT_EQ(GetHandleSize(handle), 5);
    DisposeHandle(handle);
}

TEST_F(Memory, PurgeMemReportsWhetherThereIsRoom)
{
    PurgeMem(10);
    EXPECT_EQ(MemError(), noErr);
    PurgeMem(INT32_MAX);
    EXPECT_EQ(MemError(), memFullErr);
}

TEST_F(Memory, APlannedFaultMakesOneAllocationFail)
{
    toolbox::faults::failAllocation(2);
    Ptr first = NewPtr(1);
    EXPECT_TRUE(first);
    EXPECT_FALSE(NewHandle(1));
    EXPECT_EQ(MemError(), memFullErr);
    Handle third = NewHandle(1);
    EXPECT_TRUE(third);
    DisposePtr(first);
    DisposeHandle(third);
}

TEST_F(Memory, CopiesAreIndependent)
{
    Handle original = nullptr;
    ASSERT_EQ(PtrToHand("abc", &original, 3), noErr);
    Handle copy = original;
    ASSERT_EQ(HandToHand(&copy), noErr);
    EXPECT_NE(copy, original);
    (*copy)[0] = 'X';
    EXPECT_EQ(std::string(*original, 3), "abc");
    EXPECT_EQ(std::string(*copy, 3), "Xbc");
    DisposeHandle(copy);
    DisposeHandle(original);
    EXPECT_EQ(HandToHand(&original), memWZErr);
}

TEST_F(Memory, BlockMoveAllowsOverlap)
{
    char bytes[] = "abcdef";
    BlockMove(bytes, bytes + 2, 4);
    EXPECT_STREQ(bytes, "ababcd");
    BlockMove(bytes, bytes, -1);
    EXPECT_STREQ(bytes, "ababcd");
}

TEST_F(Memory, StoppingFreesEverythingAndForgetsHandles)
{
    Handle handle = NewHandle(10);
    NewPtr(10);
    restart();
    EXPECT_FALSE(heap::isLive(handle));
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}

TEST(StartOfTheToolbox, WithoutMemoryForItselfThereIsNoSession)
{
    toolbox::HeadlessMachine machine;
    int refused = 0;
    for (int nth = 1; nth < 20; ++nth) {
        toolbox::faults::clear();
        toolbox::faults::failAllocation(nth);
        try {
            toolbox::start({}, machine);
        } catch (const std::bad_alloc &) {
            ++refused;
            EXPECT_THROW(toolbox::machine(), std::logic_error);
        }
        toolbox::stop();
    }
    toolbox::faults::clear();
    EXPECT_EQ(refused, 2) << "TextEdit's scrap and the desk's";
}
