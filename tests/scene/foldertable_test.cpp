#include "scene/foldertable.h"

#include <gtest/gtest.h>

using korvane::FolderTable;

constexpr int missing = -7;

TEST(FolderTable, FindsAFolderByItsWholePath)
{
    FolderTable table;
    const int a = table.Add(FolderTable::rootplace, "/a", 0);
    table.Add(a, "/b", 1);
    EXPECT_EQ(table.Find("/a", missing), 0);
    EXPECT_EQ(table.Find("/a/b", missing), 1);
}

TEST(FolderTable, MissesEveryOtherPath)
{
    FolderTable table;
    const int a = table.Add(FolderTable::rootplace, "/a", 0);
    table.Add(a, "/b", 1);
    for (const char* path : {"", "/", "a", "a/b", "/b", "/a/", "//a", "/a/b/c", "/A", "/ab"}) {
        EXPECT_EQ(table.Find(path, missing), missing) << path;
    }
}

TEST(FolderTable, KeepsTheFirstFolderOfAPath)
{
    FolderTable table;
    const int place = table.Add(FolderTable::rootplace, "/a", 3);
    EXPECT_EQ(table.Add(FolderTable::rootplace, "/a", 4), place);
    EXPECT_EQ(table.Find("/a", missing), 3);
}

// Only the text of a path counts, not how it came together.
TEST(FolderTable, TakesSeveralNamesAtOnceForAPathStepByStep)
{
    FolderTable table;
    table.Add(FolderTable::rootplace, "/a/b", 0);
    EXPECT_EQ(table.Find("/a", missing), missing);
    const int a = table.Add(FolderTable::rootplace, "/a", 1);
    table.Add(a, "/b", 2);
    EXPECT_EQ(table.Find("/a", missing), 1);
    EXPECT_EQ(table.Find("/a/b", missing), 0);
}

TEST(FolderTable, TellsEmptyNamesApart)
{
    FolderTable table;
    table.Add(FolderTable::rootplace, "/", 0);
    table.Add(FolderTable::rootplace, "/a/", 1);
    table.Add(FolderTable::rootplace, "//a", 2);
    EXPECT_EQ(table.Find("/", missing), 0);
    EXPECT_EQ(table.Find("/a/", missing), 1);
    EXPECT_EQ(table.Find("//a", missing), 2);
    EXPECT_EQ(table.Find("//", missing), missing);
}
