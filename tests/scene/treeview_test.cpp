#include "scene/treeview.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"

#include <gtest/gtest.h>

#include <random>

namespace korvane
{

using namespace korvane::testing;

// The names of a folder's children in display order, one letter each.
static std::string NamesIn(int folder)
{
    std::string names;
    for (int i = 0; i < treeiters[folder].childnumber; i++) {
        names += treeiters[treeiters[folder].children[i]].name;
    }
    return names;
}

class Tree : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
    }
};

TEST_F(Tree, BeginsWithItsRootAlone)
{
    ASSERT_EQ(treeiternumber, 1);
    EXPECT_STREQ(treeiters[0].name, "scene");
    EXPECT_EQ(treeiters[0].type, NODE_FOLDER);
    EXPECT_EQ(treeiters[0].shapeindex, -1);
    EXPECT_EQ(treeiters[0].parent, -1);
    EXPECT_EQ(treeiters[0].childnumber, 0);
}

TEST_F(Tree, OrdersShapesWithoutRegardToCaseAndEqualNamesAsTheyCame)
{
    AddToScene(Square(), "b");
    AddToScene(Square(), "A");
    AddToScene(Square(), "a");
    EXPECT_EQ(NamesIn(0), "Aab");
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(Tree, PutsAFolderBeforeEveryShape)
{
    AddToScene(Square(), "A");
    AddFolder("z");
    AddFolder("Y");
    EXPECT_EQ(NamesIn(0), "YzA");
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(Tree, GivesAShapeNodeTheNewestShape)
{
    AddToScene(Square(), "one");
    AddToScene(Cube(), "two");
    EXPECT_EQ(treeiters[2].shapeindex, 1);
    EXPECT_EQ(treeiters[2].type, NODE_SHAPE);
    EXPECT_EQ(treeiters[1].type, NODE_SIDE);
    EXPECT_EQ(treeiters[1].children, nullptr);
}

TEST_F(Tree, NestsFolders)
{
    const int a = AddFolder("a");
    const int b = AddFolder("b", a);
    AddToScene(Cube(), "box", b);
    EXPECT_EQ(treeiters[b].parent, a);
    EXPECT_EQ(NamesIn(b), "box");
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(Tree, LoadsInBulkAsItDoesOneByOne)
{
    std::mt19937 random(1); // the same names in every run
    std::vector<std::string> names;
    std::vector<int> parents;
    for (int i = 0; i < 60; i++) {
        names.push_back(std::string(1, "aAbBcC"[random() % 6]));
        parents.push_back(int(random() % unsigned(i + 1)));
    }
    for (int i = 0; i < 60; i++) {
        AddFolder(names[std::size_t(i)], parents[std::size_t(i)]);
    }
    std::vector<std::vector<int>> children;
    for (int i = 0; i < treeiternumber; i++) {
        const TreeIter& node = treeiters[i];
        children.emplace_back(node.children, node.children + node.childnumber);
    }
    ClearTree();
    for (int i = 0; i < 60; i++) {
        AppendTreeIter(parents[std::size_t(i)], NODE_FOLDER, -1, CopyText(names[std::size_t(i)]));
    }
    SortAndShowTree();
    ASSERT_EQ(treeiternumber, 61);
    for (int i = 0; i < treeiternumber; i++) {
        const TreeIter& node = treeiters[i];
        EXPECT_EQ(std::vector<int>(node.children, node.children + node.childnumber),
                  children[std::size_t(i)]);
    }
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(Tree, IsClearedDownToItsRoot)
{
    AddFolder("b", AddFolder("a"));
    ClearTree();
    EXPECT_EQ(treeiternumber, 1);
    EXPECT_EQ(treeiters[0].childnumber, 0);
    EXPECT_EQ(gtk_tree_model_iter_n_children(GTK_TREE_MODEL(store), nullptr), 0);
}

} // namespace korvane
