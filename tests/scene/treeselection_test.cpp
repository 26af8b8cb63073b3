#include "scene/treeview.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"

#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

static std::vector<int> CollectSelectedShapes()
{
    int count = -1;
    const Block<int[]> indices = GetSelectedShapes(&count);
    return {indices.get(), indices.get() + count};
}

// Rows, in the order of the tree: folder "a" with folder "b" (shape 1) and shape 0; folder "c",
// empty; shape 2.
class SelectedShapes : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
        a = AddFolder("a");
        b = AddFolder("b", a);
        c = AddFolder("c");
        AddToScene(Square(), "zero", a);
        zero = treeiternumber - 1;
        AddToScene(Square(), "one", b);
        one = treeiternumber - 1;
        AddToScene(Square(), "two");
        two = treeiternumber - 1;
    }
    void TearDown() override
    {
        SelectNodes({});
    }

    int a = 0;
    int b = 0;
    int c = 0;
    int zero = 0;
    int one = 0;
    int two = 0;
};

TEST_F(SelectedShapes, AreThoseOfSelectedRowsInTheirOrder)
{
    SelectNodes({two, zero});
    EXPECT_EQ(CollectSelectedShapes(), std::vector<int>({2, 0}));
}

TEST_F(SelectedShapes, AreAllBelowASelectedFolder)
{
    SelectNodes({a});
    EXPECT_EQ(CollectSelectedShapes(), std::vector<int>({1, 0})); // the inner folder comes first
}

TEST_F(SelectedShapes, AreAllOfTheSceneWhenNothingIsSelected)
{
    EXPECT_EQ(CollectSelectedShapes(), std::vector<int>({0, 1, 2}));
}

TEST_F(SelectedShapes, AreAllOfTheSceneWhenOnlyAnEmptyFolderIsSelected)
{
    SelectNodes({c});
    EXPECT_EQ(CollectSelectedShapes(), std::vector<int>({0, 1, 2}));
}

TEST_F(SelectedShapes, AreCollectedOnceWhenAFolderAndItsInsideAreBothSelected)
{
    SelectNodes({a, b, one, zero});
    EXPECT_EQ(CollectSelectedShapes(), std::vector<int>({1, 0}));
    SelectNodes({zero, a, b, a, b, two});
    EXPECT_EQ(CollectSelectedShapes(), std::vector<int>({0, 1, 2}));
}

TEST_F(SelectedShapes, AreNoneInAnEmptyScene)
{
    StartEmptyScene();
    EXPECT_EQ(CollectSelectedShapes(), std::vector<int>());
}

TEST_F(SelectedShapes, AreAppendedNodeByNode)
{
    int indices[3] = {7, 7, 7};
    int count = 0;
    GetSelectedShapesRecursive(two, indices, &count);
    GetSelectedShapesRecursive(a, indices, &count);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(std::vector<int>(indices, indices + 3), std::vector<int>({2, 1, 0}));
}

} // namespace korvane
