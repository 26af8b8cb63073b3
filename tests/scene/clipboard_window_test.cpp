#include "scene/clipboard.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/support/clipboardscene.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static std::vector<int> GetCopiedChildren(int copy)
{
    return {copyiters[copy].children, copyiters[copy].children + copyiters[copy].childnumber};
}

TEST_F(Clipboard, HoldsANodeBeforeItsSubtree)
{
    Copy({a, box});
    EXPECT_EQ(GetCopiedNames(), "a b deep leaf box");
    EXPECT_EQ(GetCopiedChildren(0), std::vector<int>({1, 3}));
    EXPECT_EQ(GetCopiedChildren(1), std::vector<int>({2}));
    const int parents[] = {0, a, b, a, 0}; // as copied
    const int types[] = {NODE_FOLDER, NODE_FOLDER, NODE_SIDE, NODE_SHAPE, NODE_SHAPE};
    const int places[] = {-1, -1, 0, 1, 2}; // in copyshapes
    for (int i = 0; i < 5; i++) {
        EXPECT_EQ(copyiters[i].parent, parents[i]);
        EXPECT_EQ(copyiters[i].type, types[i]);
        EXPECT_EQ(copyiters[i].shapeindex, places[i]);
    }
    ASSERT_EQ(copyshapenumber, 3);
    EXPECT_EQ(copyshapes[0]->pointnumber, 3);
    EXPECT_EQ(copyshapes[1]->pointnumber, 5);
    EXPECT_EQ(copyshapes[2]->pointnumber, 8);
}

TEST_F(Clipboard, HoldsNamesAndShapesOfItsOwn)
{
    Copy({square});
    EXPECT_NE(copyiters[0].name, treeiters[square].name);
    EXPECT_NE(copyshapes[0], shapest[treeiters[square].shapeindex]);
    EXPECT_EQ(copyiters[0].children, nullptr);
}

TEST_F(Clipboard, HoldsAnEmptyFolderWithAnArray)
{
    Copy({e});
    EXPECT_EQ(copyiters[0].childnumber, 0);
    EXPECT_NE(copyiters[0].children, nullptr);
    EXPECT_EQ(copyiters[0].shapeindex, -1);
    EXPECT_EQ(copyshapenumber, 0);
}

TEST_F(Clipboard, IsReplacedByTheNextCopy)
{
    Copy({a});
    Copy({square});
    EXPECT_EQ(GetCopiedNames(), "square");
    EXPECT_EQ(copyshapenumber, 1);
    EXPECT_EQ(copyshapes[0]->pointnumber, 4);
}

TEST_F(Clipboard, IsEmptiedByCopyingNothing)
{
    Copy({a});
    Copy({});
    EXPECT_EQ(copyiternumber, 0);
    EXPECT_EQ(copyshapenumber, 0);
    EXPECT_EQ(copyiters, nullptr);
    EXPECT_EQ(copyshapes, nullptr);
}

TEST_F(Clipboard, HoldsEachNodeOnceWhenAFolderAndItsContentAreSelected)
{
    // "b" is dropped from the selection for lying in "a", and so "leaf" behind it is not examined.
    Copy({a, b, leaf});
    EXPECT_EQ(GetSelection(), "a leaf");
    EXPECT_EQ(GetCopiedNames(), "a b deep leaf");
    EXPECT_EQ(copyshapenumber, 2);
}

TEST_F(Clipboard, LeavesTheSceneAndTheUndoStepsAlone)
{
    Copy({a, box});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() box square");
    EXPECT_EQ(GetSelection(), "a box");
    EXPECT_EQ(pnumber, 0);
}

TEST_F(Clipboard, HoldsShapesAsTheyStandOnTheScreen)
{
    TurnCamera(0.5F, 0);
    Copy({square});
    // (0,0,0) (1,0,0) (1,1,0) (0,1,0): x - 0.25 halved is the depth, y halved goes to the right.
    const float expected[4][3] = {
        {0, 0, -0.125F}, {0, 0, 0.375F}, {0.5F, 0, 0.375F}, {0.5F, 0, -0.125F}};
    for (int i = 0; i < 4; i++) {
        for (int k = 0; k < 3; k++) {
            EXPECT_EQ(copyshapes[0]->points[i][k], expected[i][k]);
        }
    }
    const float center[3] = {0.25F, 0, 0.125F};
    EXPECT_TRUE(std::equal(center, center + 3, copyshapes[0]->center));
}

TEST_F(Clipboard, HoldsWhatIsNotShownAsItWouldStandOnTheScreen)
{
    const int index = treeiters[square].shapeindex;
    selected[index] = 0; // hidden
    mainview.center[0] = 8;
    RefreshView(); // and far outside the view
    ASSERT_EQ(showtable[index], SHOW_NOTHING);
    SelectNodes({square}); // the selection's handler would show it
    CopySelected();
    EXPECT_EQ(copyshapes[0]->points[0][0], -8);
    EXPECT_EQ(copyshapes[0]->points[1][0], -7);
    EXPECT_EQ(showtable[index], SHOW_NOTHING);
}

TEST_F(Clipboard, HoldsTheModelsNormalsByBytes)
{
    TurnCamera(1, 0);
    Copy({leaf});
    const int index = treeiters[leaf].shapeindex;
    const auto bytes = std::size_t(shapes[index]->normalnumber);
    const auto* copied = reinterpret_cast<const char*>(copyshapes[0]->normals);
    const auto* model = reinterpret_cast<const char*>(shapes[index]->normals);
    const auto* turned = reinterpret_cast<const char*>(shapest[index]->normals);
    ASSERT_EQ(bytes, 5U); // the pyramid's: x of the first normal and a byte of y
    EXPECT_EQ(std::memcmp(copied, model, bytes), 0);
    EXPECT_EQ(std::memcmp(copied + bytes, turned + bytes, 11 * bytes), 0);
    EXPECT_NE(std::memcmp(turned, model, bytes), 0);
}

} // namespace korvane
