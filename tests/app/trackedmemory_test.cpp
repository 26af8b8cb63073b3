#include "app/trackedmemory.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

namespace korvane
{

constexpr int firstentries = 10000;
constexpr int grownentries = 20000;

class TrackedMemory : public testing::Test
{
protected:
    TrackedMemory()
    {
        SetUpTrackedMemory();
    }

    ~TrackedMemory() override
    {
        for (int i = 0; i < memszam; i++) {
            std::free(memtabla[i]);
        }
        memszam = 0;
    }

    static void FillTo(int entries)
    {
        while (memszam < entries) {
            malloc2(1 + memszam % 7);
        }
    }

    // How many entries the tables have room for, as far as the heap tells; it may round up a
    // little.
    static int GetRoom()
    {
        return int(malloc_usable_size(memtabla) / sizeof(void*));
    }

    static int GetRoomOfSizes()
    {
        return int(malloc_usable_size(memsize) / sizeof(int));
    }
};

static std::string GetOutput(int (*print)())
{
    testing::internal::CaptureStdout();
    print();
    return testing::internal::GetCapturedStdout();
}

static std::string GetOutputOfFree2(void* block)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(free2(block), 0);
    return testing::internal::GetCapturedStdout();
}

// What the process prints on standard output before it ends is matched like an error message.
static void ReallocLoudly(void* block, int size)
{
    dup2(STDERR_FILENO, STDOUT_FILENO);
    realloc2(block, size);
}

TEST_F(TrackedMemory, StartsEmptyWithRoomForTenThousandEntries)
{
    EXPECT_EQ(memszam, 0);
    EXPECT_GE(GetRoom(), firstentries);
    EXPECT_LT(GetRoom(), grownentries);
    EXPECT_GE(GetRoomOfSizes(), firstentries);
    EXPECT_LT(GetRoomOfSizes(), grownentries);
}

TEST_F(TrackedMemory, RecordsBlocksInOrderOfAllocation)
{
    void* a = malloc2(10);
    void* b = malloc2(200);
    ASSERT_EQ(memszam, 2);
    EXPECT_EQ(memtabla[0], a);
    EXPECT_EQ(memtabla[1], b);
    EXPECT_EQ(memsize[0], 10);
    EXPECT_EQ(memsize[1], 200);
    EXPECT_GE(malloc_usable_size(b), 200U);
}

TEST_F(TrackedMemory, ResizesARecordedBlockInItsEntry)
{
    void* a = malloc2(1);
    auto* b = static_cast<char*>(malloc2(4));
    void* c = malloc2(3);
    std::memcpy(b, "abc", 4);
    auto* larger = static_cast<char*>(realloc2(b, 100000));
    EXPECT_STREQ(larger, "abc");
    EXPECT_GE(malloc_usable_size(larger), 100000U);
    ASSERT_EQ(memszam, 3);
    EXPECT_EQ(memtabla[0], a);
    EXPECT_EQ(memtabla[1], larger);
    EXPECT_EQ(memtabla[2], c);
    EXPECT_EQ(memsize[0], 1);
    EXPECT_EQ(memsize[1], 100000);
    EXPECT_EQ(memsize[2], 3);
}

TEST_F(TrackedMemory, EndsTheProcessWhenAnUnknownBlockIsResized)
{
    malloc2(8);
    int unknown = 0;
    EXPECT_EXIT(ReallocLoudly(&unknown, 8), testing::ExitedWithCode(1), "^Realloc: Baj van\n$");
}

TEST_F(TrackedMemory, EndsTheProcessWhenAForgottenBlockIsResized)
{
    void* block = malloc2(8);
    EXPECT_EQ(GetOutputOfFree2(block), "");
    EXPECT_EXIT(ReallocLoudly(block, 16), testing::ExitedWithCode(1), "^Realloc: Baj van\n$");
    std::free(block);
}

TEST_F(TrackedMemory, ForgetsABlockAndMovesTheLaterEntriesDown)
{
    void* a = malloc2(1);
    void* b = malloc2(2);
    void* c = malloc2(3);
    void* d = malloc2(4);
    EXPECT_EQ(GetOutputOfFree2(b), "");
    ASSERT_EQ(memszam, 3);
    EXPECT_EQ(memtabla[0], a);
    EXPECT_EQ(memtabla[1], c);
    EXPECT_EQ(memtabla[2], d);
    EXPECT_EQ(memsize[0], 1);
    EXPECT_EQ(memsize[1], 3);
    EXPECT_EQ(memsize[2], 4);
    std::free(b);
}

TEST_F(TrackedMemory, ForgetsTheLastBlock)
{
    void* a = malloc2(1);
    void* b = malloc2(2);
    free2(b);
    ASSERT_EQ(memszam, 1);
    EXPECT_EQ(memtabla[0], a);
    free2(a);
    EXPECT_EQ(memszam, 0);
    std::free(a);
    std::free(b);
}

TEST_F(TrackedMemory, DoesNotReleaseAForgottenBlock)
{
    auto* block = static_cast<char*>(malloc2(6));
    std::memcpy(block, "still", 6);
    free2(block);
    EXPECT_STREQ(block, "still");
    std::free(block); // the heap would refuse a block that had been released before
}

TEST_F(TrackedMemory, OnlyPrintsWhenAnUnknownBlockIsForgotten)
{
    void* a = malloc2(5);
    int unknown = 0;
    EXPECT_EQ(GetOutputOfFree2(&unknown), "Free: Baj van\n");
    ASSERT_EQ(memszam, 1);
    EXPECT_EQ(memtabla[0], a);
    EXPECT_EQ(memsize[0], 5);
}

TEST_F(TrackedMemory, PrintsWhenABlockIsForgottenTwice)
{
    void* block = malloc2(5);
    EXPECT_EQ(GetOutputOfFree2(block), "");
    EXPECT_EQ(GetOutputOfFree2(block), "Free: Baj van\n");
    std::free(block);
}

TEST_F(TrackedMemory, PrintsATotalOfZeroWithoutEntries)
{
    EXPECT_EQ(GetOutput(PrintOsszMem), "\xC3\x96ssz: 0\n");
}

TEST_F(TrackedMemory, PrintsTheTotalOfTheRecordedSizes)
{
    void* a = malloc2(100);
    void* b = malloc2(20);
    malloc2(3);
    EXPECT_EQ(GetOutput(PrintOsszMem), "\xC3\x96ssz: 123\n");
    free2(b);
    EXPECT_EQ(GetOutput(PrintOsszMem), "\xC3\x96ssz: 103\n");
    realloc2(a, 4);
    EXPECT_EQ(GetOutput(PrintOsszMem), "\xC3\x96ssz: 7\n");
    std::free(b);
}

TEST_F(TrackedMemory, SumsSizesPastTheRangeOfAnInt)
{
    FillTo(3);
    for (int i = 0; i < 3; i++) {
        memsize[i] = INT_MAX; // as if blocks of 2 GB had been handed out
    }
    EXPECT_EQ(GetOutput(PrintOsszMem), "\xC3\x96ssz: 6442450941\n"); // 3 * 2147483647
}

TEST_F(TrackedMemory, GrowsBothTablesWhenEntry9999IsAboutToBeFilled)
{
    FillTo(firstentries - 1);
    EXPECT_LT(GetRoom(), grownentries);
    EXPECT_LT(GetRoomOfSizes(), grownentries);
    void* first = memtabla[0];
    void* block = malloc2(77);
    EXPECT_GE(GetRoom(), grownentries);
    EXPECT_GE(GetRoomOfSizes(), grownentries);
    ASSERT_EQ(memszam, firstentries);
    EXPECT_EQ(memtabla[0], first);
    EXPECT_EQ(memtabla[firstentries - 1], block);
    EXPECT_EQ(memsize[firstentries - 2], 1 + (firstentries - 2) % 7); // as FillTo gave it
    EXPECT_EQ(memsize[firstentries - 1], 77);
}

TEST_F(TrackedMemory, KeepsItsTablesWhenEntry9999IsFilledAgain)
{
    FillTo(firstentries + 5);
    void** table = memtabla;
    while (memszam >= firstentries - 1) {
        void* last = memtabla[memszam - 1];
        free2(last);
        std::free(last);
    }
    FillTo(firstentries + 5);
    EXPECT_EQ(memtabla, table);
    EXPECT_EQ(memszam, firstentries + 5);
}

TEST_F(TrackedMemory, HandsOutBlocksPastTheLastEntryUnrecorded)
{
    FillTo(grownentries);
    void* last = memtabla[grownentries - 1];
    const int room = GetRoom();
    auto* block = static_cast<char*>(malloc2(4));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "abc", 4);
    EXPECT_EQ(memszam, grownentries);
    EXPECT_EQ(GetRoom(), room);
    EXPECT_EQ(memtabla[grownentries - 1], last);
    EXPECT_EQ(GetOutputOfFree2(block), "Free: Baj van\n");
    EXPECT_EXIT(ReallocLoudly(block, 16), testing::ExitedWithCode(1), "^Realloc: Baj van\n$");
    std::free(block);
}

TEST_F(TrackedMemory, RecordsAgainOnceAFullTableHasLostAnEntry)
{
    FillTo(grownentries);
    void* last = memtabla[grownentries - 1];
    free2(last);
    EXPECT_EQ(memszam, grownentries - 1);
    void* block = malloc2(9);
    EXPECT_EQ(memszam, grownentries);
    EXPECT_EQ(memtabla[grownentries - 1], block);
    EXPECT_EQ(memsize[grownentries - 1], 9);
    std::free(last);
}

} // namespace korvane
