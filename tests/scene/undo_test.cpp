#include "scene/undo.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static std::size_t GetHeapBytes()
{
    return mallinfo2().uordblks;
}

class UndoRecords : public StartViewTest
{
};

TEST_F(UndoRecords, HoldACopyOfOneShape)
{
    AddToView(Square());
    AddToView(Cube());
    PushShape(1);
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(pindex, 1);
    const UndoRecord& record = puffer[0];
    EXPECT_EQ(record.kind, UNDO_SHAPE);
    EXPECT_EQ(record.shapeindex, 1);
    ASSERT_EQ(record.shapenumber, 1);
    EXPECT_NE(record.shapes[0], shapes[1]);
    EXPECT_EQ(record.shapes[0]->pointnumber, 8);
    EXPECT_EQ(FindBrokenRuleOfShape(*record.shapes[0]), "");
    EXPECT_EQ(record.treeiternumber, 0);
    EXPECT_EQ(record.treeiters, nullptr);
}

TEST_F(UndoRecords, AreNotMadeOfShapesThatDoNotExist)
{
    AddToView(Square());
    PushShape(-1);
    PushShape(1);
    EXPECT_EQ(pnumber, 0);
    EXPECT_EQ(pindex, 0);
}

TEST_F(UndoRecords, HoldCopiesOfEveryShapeAndNode)
{
    const int folder = AddTreeIter(0, NODE_FOLDER, CopyArray("f", 2));
    AddTreeIter(0, NODE_FOLDER, CopyArray("empty", 6));
    AddToScene(Square(), "b", folder);
    AddToScene(Cube(), "a", folder);
    PushScene();
    ASSERT_EQ(pnumber, 1);
    const UndoRecord& record = puffer[0];
    EXPECT_EQ(record.kind, UNDO_SCENE);
    ASSERT_EQ(record.shapenumber, 2);
    EXPECT_EQ(record.shapes[0]->sidenumber, 1);
    EXPECT_EQ(record.shapes[1]->sidenumber, 6);
    ASSERT_EQ(record.treeiternumber, 5); // the root, two folders, two shapes
    const TreeIter* nodes = record.treeiters;
    EXPECT_STREQ(nodes[0].name, "scene");
    EXPECT_NE(nodes[1].name, treeiters[1].name);
    EXPECT_EQ(std::vector<int>(nodes[0].children, nodes[0].children + nodes[0].childnumber),
              std::vector<int>({2, 1}));
    EXPECT_EQ(std::vector<int>(nodes[1].children, nodes[1].children + nodes[1].childnumber),
              std::vector<int>({4, 3}));
    EXPECT_EQ(nodes[2].childnumber, 0);
    EXPECT_NE(nodes[2].children, nullptr);
    EXPECT_EQ(nodes[3].shapeindex, 0);
    EXPECT_EQ(nodes[3].children, nullptr);
}

TEST_F(UndoRecords, CanBeMadeOfAnEmptyScene)
{
    PushScene();
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].shapenumber, 0);
    EXPECT_NE(puffer[0].shapes, nullptr);
    EXPECT_EQ(puffer[0].treeiternumber, 1);
}

// A quarter turn about x: the world's y axis is seen along the depth, its z axis downwards. So the
// screen's vertical axis is the world's -z, its depth axis the world's y.
TEST_F(UndoRecords, RememberTheView)
{
    AddToView(Square());
    mainview.center[0] = 1;
    mainview.center[1] = 2;
    mainview.center[2] = 3;
    mainview.scale = 0.5F;
    SetRotation({{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}});
    PushShape(0);
    const UndoRecord& record = puffer[0];
    const float vertical[3] = {0, 0, -1};
    const float depth[3] = {0, 1, 0};
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(record.center[i], float(i + 1));
        EXPECT_FLOAT_EQ(record.axes[0][i], vertical[i]);
        EXPECT_FLOAT_EQ(record.axes[1][i], depth[i]);
    }
    EXPECT_EQ(record.scale, 0.5F);
}

TEST_F(UndoRecords, AreGoneWithTheBuffer)
{
    AddToView(Cube());
    PushShape(0);
    PushScene();
    DelPuffer();
    EXPECT_EQ(pnumber, 0);
    EXPECT_EQ(pindex, 0);
}

// The array of records counts too, with the room it keeps for more.
TEST_F(UndoRecords, OfOneShapeCostNoMoreThanTwiceTheShape)
{
    if (GetHeapBytes() == 0) {
        GTEST_SKIP() << "this heap does not tell what it holds";
    }
    constexpr int number = 33; // of the records one more than there was room for
    for (const auto make : {FlatTriangle, Cube}) {
        StartView();
        const int index = AddToView(make());
        std::vector<OwnedShape> copies(number);
        FreeArray(puffer);
        const std::size_t empty = GetHeapBytes();
        for (OwnedShape& copy : copies) {
            copy.reset(CopyShape(shapes[index]));
        }
        const std::size_t copied = GetHeapBytes();
        for (int i = 0; i < number; i++) {
            PushShape(index);
        }
        EXPECT_GT(copied, empty);
        EXPECT_LE(GetHeapBytes() - copied, 2 * (copied - empty));
    }
}

} // namespace korvane
