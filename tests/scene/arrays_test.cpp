#include "scene/arrays.h"

#include <gtest/gtest.h>

namespace korvane
{

TEST(NewArray, StartsWithEveryEntryZero)
{
    const Block<int[]> array(NewArray<int>(3));
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(array[std::size_t(i)], 0);
    }
}

TEST(NewArray, OfNothingIsAnArrayThatCanBeFreed)
{
    int* array = NewArray<int>(0);
    ASSERT_NE(array, nullptr);
    FreeArray(array);
    EXPECT_EQ(array, nullptr);
}

TEST(NewArray, RefusesANegativeCount)
{
    EXPECT_EXIT(NewArray<int>(-1), ::testing::ExitedWithCode(1), "negative length");
}

struct Megabyte {
    char bytes[1 << 20];
};

TEST(NewArray, StopsWithAMessageWhenMemoryIsOut)
{
    EXPECT_EXIT(NewArray<Megabyte>(2147483647), ::testing::ExitedWithCode(1), "out of memory");
}

TEST(CopyArray, CopiesTriples)
{
    const float source[2][3] = {{1, 2, 3}, {4, 5, 6}};
    const Block<float[][3]> copy(CopyArray(source, 2));
    EXPECT_EQ(copy[1][2], 6.0F);
}

TEST(GrowArray, KeepsWhatIsThereAndZeroesWhatIsNew)
{
    int* array = NewArray<int>(2);
    array[0] = 7;
    array[1] = 8;
    GrowArray(array, 2, 5);
    EXPECT_EQ(array[0], 7);
    EXPECT_EQ(array[1], 8);
    EXPECT_EQ(array[2] + array[3] + array[4], 0);
    FreeArray(array);
}

TEST(CopyText, EndsWithAZero)
{
    const char text[] = {'s', 'i', 'd', 'e', 's'}; // without one
    EXPECT_STREQ(CopyText(std::string_view(text, 4)).get(), "side");
    EXPECT_STREQ(CopyText("").get(), "");
}

TEST(GrowArray, MakesAnArrayOutOfNull)
{
    int* array = nullptr;
    GrowArray(array, 0, 1);
    EXPECT_EQ(array[0], 0);
    FreeArray(array);
}

TEST(InsertAt, MovesTheLaterEntriesUp)
{
    int* array = NewArray<int>(3);
    array[0] = 1;
    array[1] = 2;
    array[2] = 3;
    int count = 3;
    InsertAt(array, count, 1);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(array[0], 1);
    EXPECT_EQ(array[1], 0);
    EXPECT_EQ(array[2], 2);
    EXPECT_EQ(array[3], 3);
    FreeArray(array);
}

TEST(RemoveAt, ClosesTheGap)
{
    int array[] = {1, 2, 3};
    int count = 3;
    RemoveAt(array, count, 0);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(array[0], 2);
    EXPECT_EQ(array[1], 3);
}

} // namespace korvane
