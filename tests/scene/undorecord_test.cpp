#include "scene/undorecord.h"

#include "geometry/construction.h"
#include "geometry/finishedit.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "ui/input.h"
#include "ui/transform.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
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
    const int folder = AddTreeIter(0, NODE_FOLDER, CopyText("f"));
    AddTreeIter(0, NODE_FOLDER, CopyText("empty"));
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

static std::vector<int> ChildrenOf(int node)
{
    const TreeIter& folder = treeiters[node];
    return {folder.children, folder.children + folder.childnumber};
}

TEST_F(UndoRecords, OfAShapePutItBack)
{
    AddToView(Square());
    PushShape(0);
    DeleteShape(shapes[0]);
    shapes[0] = Cube().release();
    FinishEdit(0);
    ASSERT_EQ(treeiters[1].type, NODE_SHAPE);
    RestoreRecord(puffer[0]);
    EXPECT_EQ(shapes[0]->sidenumber, 1);
    EXPECT_NE(shapes[0], puffer[0].shapes[0]); // a copy: the record can be restored again
    EXPECT_EQ(treeiters[1].type, NODE_SIDE);
    EXPECT_EQ(showtable[0], SHOW_ROUNDED);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(UndoRecords, OfAShapeLeaveItsSelectionAlone)
{
    AddToView(Square());
    PushShape(0);
    selected[0] = selectedshown | selectedlevel;
    RestoreRecord(puffer[0]);
    EXPECT_EQ(selected[0], selectedshown | selectedlevel);
}

TEST_F(UndoRecords, OfASceneBringItsNodesBackToTheirPlaces)
{
    const int folder = AddTreeIter(0, NODE_FOLDER, CopyText("f"));
    AddToScene(Square(), "b", folder);
    AddTreeIter(folder, NODE_FOLDER, CopyText("empty"));
    AddToScene(Cube(), "a", folder);
    AddToScene(Pyramid(), "top");
    PushScene();
    DelScene();
    AddToScene(Tetrahedron(), "another");
    RestoreRecord(puffer[0]);
    ASSERT_EQ(shapenumber, 3);
    EXPECT_EQ(shapes[0]->sidenumber, 1);
    EXPECT_EQ(shapes[1]->sidenumber, 6);
    EXPECT_EQ(shapes[2]->sidenumber, 5);
    ASSERT_EQ(treeiternumber, 6);
    EXPECT_STREQ(treeiters[0].name, "scene");
    EXPECT_EQ(ChildrenOf(0), std::vector<int>({1, 5}));
    EXPECT_EQ(ChildrenOf(1), std::vector<int>({3, 4, 2}));
    EXPECT_STREQ(treeiters[2].name, "b");
    EXPECT_EQ(treeiters[2].shapeindex, 0);
    EXPECT_EQ(treeiters[2].children, nullptr);
    EXPECT_EQ(treeiters[3].type, NODE_FOLDER);
    EXPECT_NE(treeiters[3].children, nullptr);
    EXPECT_EQ(treeiters[4].shapeindex, 1);
    EXPECT_EQ(treeiters[5].shapeindex, 2);
    EXPECT_EQ(FindBrokenRule(), "");
    AddToScene(Square(), "c", 3); // the folders can grow
    EXPECT_EQ(FindBrokenRule(), "");
}

// As after a drag: the folder with the lower index lies in the one with the higher.
TEST_F(UndoRecords, OfASceneBringBackAParentThatComesAfterItsChild)
{
    const int inner = AddTreeIter(0, NODE_FOLDER, CopyText("inner"));
    const int outer = AddTreeIter(0, NODE_FOLDER, CopyText("outer"));
    AddToScene(Square(), "shape", inner);
    gtk_tree_store_remove(store, &treeiters[inner].iter);
    RemoveAt(treeiters[0].children, treeiters[0].childnumber, 0);
    PutAtSortedPlace(inner, outer);
    ShowRowsOfNode(inner);
    ASSERT_EQ(FindBrokenRule(), "");
    PushScene();
    DelScene();
    RestoreRecord(puffer[0]);
    EXPECT_EQ(treeiters[inner].parent, outer);
    EXPECT_EQ(treeiters[outer].parent, 0);
    EXPECT_EQ(ChildrenOf(0), std::vector<int>({outer}));
    EXPECT_EQ(ChildrenOf(outer), std::vector<int>({inner}));
    EXPECT_EQ(ChildrenOf(inner), std::vector<int>({3}));
    EXPECT_EQ(FindBrokenRule(), "");
}

// Equal names stand in the order in which they came, which is not always that of their indices.
TEST_F(UndoRecords, OfASceneKeepTheSavedOrderOfEqualNames)
{
    AddToScene(Square(), "same");
    AddToScene(Cube(), "same");
    std::swap(treeiters[0].children[0], treeiters[0].children[1]);
    PushScene();
    DelScene();
    RestoreRecord(puffer[0]);
    EXPECT_EQ(ChildrenOf(0), std::vector<int>({2, 1}));
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(UndoRecords, OfASceneShowEveryShapeAndMakeItPickable)
{
    AddToView(CubeOfHalfEdge(0.2F));
    PushScene();
    selected[0] = 0;
    mainview.onlyselected = 1;
    DelScene();
    RestoreRecord(puffer[0]);
    EXPECT_EQ(selected[0], selectedintree | selectedshown);
    EXPECT_EQ(showtable[0], SHOW_ROUNDED);
    EXPECT_EQ(activesides[0].active, 1);
}

TEST_F(UndoRecords, OfAnEmptySceneEmptyIt)
{
    PushScene();
    AddToScene(Square(), "square");
    RestoreRecord(puffer[0]);
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(treeiternumber, 1);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(UndoRecords, FindTheElementUnderThePointerAgain)
{
    AddToView(CubeOfHalfEdge(0.2F));
    PushShape(0);
    PushScene();
    for (int i = 0; i < 2; i++) {
        RestoreRecord(puffer[i]);
        ASSERT_NE(activepointer, nullptr); // the pointer is in the middle
        EXPECT_EQ(activepointer->type, ELEMENT_SIDE);
    }
}

TEST_F(UndoRecords, EndWhatIsUnderWay)
{
    AddToView(Square());
    PushShape(0);
    PushScene();
    constexpr float place[3] = {0, 0, 0};
    for (int i = 0; i < 2; i++) {
        newsign = 1;
        AddNewPoint(place);
        AddNewPoint(place);
        mainview.action = MOVE_SHAPE;
        mstate = LEFT_DRAG;
        buttonpresspointactive = 1;
        buttonpressstripeactive = 0;
        buttonpresssideactive = 0;
        RestoreRecord(puffer[i]);
        EXPECT_EQ(newsign, 0);
        EXPECT_EQ(newpointnumber, 0);
        EXPECT_EQ(activepointnumber, 4);
        EXPECT_EQ(activepoints[0].active, 1);
        EXPECT_EQ(mainview.action, TOOL_NONE);
        EXPECT_EQ(mstate, POINTER_IDLE);
        EXPECT_EQ(buttonpresspointactive, -1);
        EXPECT_EQ(buttonpressstripeactive, -1);
        EXPECT_EQ(buttonpresssideactive, -1);
        EXPECT_EQ(FindBrokenRule(), "");
    }
}

TEST_F(UndoRecords, OfAShapeThatIsGoneDisturbNothing)
{
    AddToView(Square());
    PushShape(0);
    DelScene();
    newsign = 1;
    mainview.action = MOVE_SHAPE;
    RestoreRecord(puffer[0]);
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(newsign, 1);
    EXPECT_EQ(mainview.action, MOVE_SHAPE);
    newsign = 0;
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
