#include "scene/clipboard.h"

#include "geometry/construction.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/clipboardscene.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
#include "ui/transform.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static constexpr int8_t fullperspective = fadedone;

TEST_F(Clipboard, GoesWhereNothingIsSelectedToTheTopAndIsSelected)
{
    Copy({leaf, box});
    Paste({});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() box box leaf square");
    EXPECT_EQ(GetSelection(), "box leaf");
    EXPECT_GE(treeselected[0], 8); // the second box, which is the new one
}

TEST_F(Clipboard, GoesIntoTheSelectedFolder)
{
    Copy({box, square});
    Paste({e});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e(box square) box square");
    EXPECT_EQ(GetSelection(), "e"); // which holds them
    EXPECT_EQ(selected[4] & selectedintree, selectedintree);
    EXPECT_EQ(selected[5] & selectedintree, selectedintree);
}

TEST_F(Clipboard, GoesBesideTheSelectedShape)
{
    Copy({e, box});
    Paste({leaf});
    EXPECT_EQ(GetContent(), "a(b(deep) e() box leaf) e() box square");
    EXPECT_EQ(GetSelection(), "e box leaf");
}

TEST_F(Clipboard, GoesIntoTheFolderThatSeveralSelectedNodesShare)
{
    Copy({square});
    Paste({b, leaf});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf square) e() box square");
    EXPECT_EQ(GetSelection(), "b leaf square");
}

TEST_F(Clipboard, GoesToTheTopWhenTheSelectedNodesShareNoFolder)
{
    Copy({leaf, square});
    Paste({deep, leaf});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() box leaf square square");
    EXPECT_EQ(GetSelection(), "deep leaf leaf square");
}

TEST_F(Clipboard, GoesIntoTheFolderThatHasJustBeenPastedAlone)
{
    // Pasted first, the folder "a" becomes the selection: its place is that of what comes next.
    Copy({a, e, box});
    Paste({});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) a(b(deep) e() box leaf) e() box square");
    EXPECT_EQ(GetSelection(), "a");
}

TEST_F(Clipboard, PutsAFolderIntoItself)
{
    Copy({a});
    Paste({a});
    EXPECT_EQ(GetContent(), "a(a(b(deep) leaf) b(deep) leaf) e() box square");
    EXPECT_EQ(shapenumber, 6);
    Paste({a});
    EXPECT_EQ(GetContent(), "a(a(b(deep) leaf) a(b(deep) leaf) b(deep) leaf) e() box square");
}

TEST_F(Clipboard, IsPastedAgainAsShapesOfTheirOwn)
{
    Copy({square});
    Paste({});
    Paste({});
    ASSERT_EQ(shapenumber, 6);
    EXPECT_NE(shapes[4]->points, shapes[5]->points);
    EXPECT_NE(treeiters[8].name, treeiters[9].name);
    shapes[4]->points[0][0] = -1;
    EXPECT_EQ(shapes[5]->points[0][0], 0);
    EXPECT_EQ(copyshapes[0]->points[0][0], 0);
}

TEST_F(Clipboard, CarriesShapesIntoAnotherScene)
{
    Copy({a});
    StartEmptyScene();
    EXPECT_EQ(GetContent(), "");
    Paste({});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf)");
    EXPECT_EQ(shapes[1]->pointnumber, 5);
}

TEST_F(Clipboard, IsUnchangedByPasting)
{
    Copy({a, box});
    Paste({});
    EXPECT_EQ(GetCopiedNames(), "a b deep leaf box");
    EXPECT_EQ(copyshapenumber, 3);
}

TEST_F(Clipboard, GivesWhatItPastesItsIcon)
{
    Copy({a});
    Paste({e});
    gtk_tree_view_expand_all(GTK_TREE_VIEW(treeview));
    gtk_tree_view_collapse_all(GTK_TREE_VIEW(treeview));
    GdkPixbuf* const icons[] = {pbfolderc, pbfolderc, pbside, pbshape}; // a, b, deep, leaf
    for (int i = 0; i < 4; i++) {
        GdkPixbuf* icon = nullptr;
        gtk_tree_model_get(GTK_TREE_MODEL(store), &treeiters[8 + i].iter, COLUMN_ICON, &icon, -1);
        EXPECT_EQ(icon, icons[i]);
        g_object_unref(icon);
    }
}

TEST_F(Clipboard, BringsBackTheShapeWithItsMarksAndColours)
{
    const int index = treeiters[leaf].shapeindex;
    SetVertexes(shapes[index], {1, 3});
    shapes[index]->sides[2].visibility = VISIBLE_BACK;
    shapes[index]->sides[2].colors[BACK_ACUITY] = 0.25F;
    ChangeShape(index);
    SetActives();
    Copy({leaf});
    Paste({});
    const Shape& pasted = *shapes[4];
    ASSERT_EQ(pasted.vertexnumber, 2);
    EXPECT_EQ(pasted.vertexes[0], 1);
    EXPECT_EQ(pasted.vertexes[1], 3);
    EXPECT_EQ(pasted.sides[2].visibility, VISIBLE_BACK);
    EXPECT_EQ(pasted.sides[2].colors[BACK_ACUITY], 0.25F);
}

TEST_F(Clipboard, DerivesTheNormalsAgain)
{
    Copy({box});
    TurnCamera(1, 0);
    Paste({});
    const Shape& pasted = *shapes[4];
    const OwnedShape derived(CopyShape(&pasted));
    CompleteShape(derived.get());
    ASSERT_EQ(pasted.normalnumber, derived->normalnumber);
    EXPECT_EQ(std::memcmp(pasted.normals, derived->normals, 12 * std::size_t(pasted.normalnumber)),
              0);
    EXPECT_EQ(std::memcmp(pasted.trianglenormals, derived->trianglenormals,
                          12 * std::size_t(pasted.trianglenumber)),
              0);
}

TEST_F(Clipboard, IsNothingToPasteWhenItIsEmpty)
{
    EmptyTheClipboard();
    Paste({a});
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() box square");
    EXPECT_EQ(pnumber, 0);
}

TEST_F(Clipboard, SavesTheWholeSceneOnceBeforeItIsPasted)
{
    Copy({a, box, square});
    Paste({});
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].kind, 1);
    EXPECT_EQ(puffer[0].shapenumber, 4);
    EXPECT_EQ(puffer[0].treeiternumber, 8);
}

TEST_F(Clipboard, IsTakenBackAndPastedAgainByUndoAndRedo)
{
    Copy({a, square});
    Paste({e});
    Undo();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() box square");
    Redo();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e(a(b(deep) leaf) square) box square");
    Paste({}); // and the clipboard is still full
    EXPECT_EQ(shapenumber, 4 + 3 + 3);
}

TEST_F(Clipboard, EndsAConstructionWhenItIsPasted)
{
    Copy({square});
    const float place[3] = {0, 0, 0};
    AddNewPoint(place);
    newsign = 1;
    CopySelected(); // copying does not
    EXPECT_EQ(newpointnumber, 1);
    Paste({});
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(activepointnumber, 3 + 5 + 8 + 4 + 4);
}

TEST_F(Clipboard, PutsDownATakenUpToolWhenItIsPasted)
{
    Copy({square});
    mainview.action = MOVE_SELECTED;
    SetActivesOff();
    CopySelected(); // copying does not
    EXPECT_EQ(mainview.action, MOVE_SELECTED);
    Paste({});
    EXPECT_EQ(mainview.action, TOOL_NONE);
    EXPECT_EQ(activesides[activesidenumber - 1].active, 1); // the pasted one can be picked
}

TEST_F(Clipboard, IsSeenAndPickableAtOnce)
{
    Copy({square});
    rdstate = 0;
    Paste({});
    EXPECT_EQ(showtable[4], SHOW_ROUNDED);
    EXPECT_EQ(activesides[activesidenumber - 1].active, 1);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

// The points of a shape as the camera shows them now.
static std::vector<float> GetScreenPoints(const Shape& shape)
{
    std::vector<float> points(std::size_t(shape.pointnumber) * 3);
    auto* triples = reinterpret_cast<float(*)[3]>(points.data());
    TransferPointsInto(&mainview, shape.points, triples, shape.pointnumber);
    return points;
}

static void ExpectNear(const std::vector<float>& actual, const std::vector<float>& expected)
{
    constexpr double tolerance = 1e-5; // of the view, which is some thousand pixels wide
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); i++) {
        EXPECT_NEAR(actual[i], expected[i], tolerance) << i;
    }
}

// Copies the cube under one camera and pastes it under another.
static void ExpectSamePlaceOnTheScreen(std::mt19937& random, int8_t before, int8_t after)
{
    SetRotation(GetRandomRotation(random));
    mainview.scale = 0.4F;
    mainview.perspective = before;
    RefreshView();
    CopySelected();
    const std::vector<float> copied =
        GetScreenPoints(*shapes[treeiters[treeselected[0]].shapeindex]);

    SetRotation(GetRandomRotation(random));
    mainview.scale = 1.7F;
    std::copy_n(std::array{0.3F, -0.2F, 0.1F}.data(), 3, mainview.center);
    mainview.perspective = after;
    RefreshView();
    PasteSelected();
    ExpectNear(GetScreenPoints(*shapes[shapenumber - 1]), copied);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(Clipboard, IsPastedWhereItWasOnTheScreenAfterTurningTheCamera)
{
    std::mt19937 random(3);
    for (int i = 0; i < 20; i++) {
        SelectRows({box});
        ExpectSamePlaceOnTheScreen(random, 0, 0);
    }
}

TEST_F(Clipboard, IsPastedWhereItWasOnTheScreenAlsoInPerspective)
{
    std::mt19937 random(4);
    for (int i = 0; i < 20; i++) {
        SelectRows({box});
        ExpectSamePlaceOnTheScreen(random, fullperspective, fullperspective);
        SelectRows({box});
        ExpectSamePlaceOnTheScreen(random, 0, fullperspective); // turned on in between
        SelectRows({box});
        ExpectSamePlaceOnTheScreen(random, fullperspective, 0); // and off
    }
}

TEST_F(Clipboard, ComesBackToTheModelsPlaceWhenTheCameraStays)
{
    TurnCamera(0.5F, fullperspective);
    Copy({square});
    Paste({});
    for (int i = 0; i < 4; i++) {
        for (int k = 0; k < 3; k++) {
            EXPECT_NEAR(shapes[4]->points[i][k], shapes[3]->points[i][k], 1e-6);
        }
    }
}

// What pasting is: the place is asked for and the selection read for each copy.
static void PasteOneByOne()
{
    for (int i = 0; i < copyiternumber;) {
        const int node = PasteTreeIter(GetTreePutPlace(), i);
        if (!IsInSelection(node)) {
            SelectRow(node);
        }
        while (copyiters[i].childnumber > 0) {
            i = copyiters[i].children[copyiters[i].childnumber - 1];
        }
        i++;
    }
    SetActives();
    RefreshView();
}

static std::vector<int> PickRows(std::mt19937& random, unsigned share)
{
    std::vector<int> nodes;
    for (int n = 1; n < treeiternumber; n++) {
        if (random() % share == 0) {
            nodes.push_back(n);
        }
    }
    return nodes;
}

// A scene, a copy and a selection from a seed, and what the tree is like after pasting.
static std::string GetTreeAfter(unsigned seed, void (*paste)())
{
    std::mt19937 random(seed);
    StartEmptyScene();
    std::vector<int> folders{0};
    for (int i = 0; i < 7; i++) {
        const std::string name(1, char('a' + random() % 26));
        folders.push_back(AddFolder(name, folders[random() % folders.size()]));
    }
    for (int i = 0; i < 7; i++) {
        const std::string name(1, char('a' + random() % 26));
        AddToScene(Square(), name, folders[random() % folders.size()]);
    }
    SelectRows(PickRows(random, 4));
    CopySelected();
    SelectRows(PickRows(random, 6));
    paste();
    return GetContent() + "; selected: " + GetSelection();
}

TEST_F(Clipboard, IsPastedAsIfTheSelectionWereReadForEachCopy)
{
    for (unsigned seed = 0; seed < 150; seed++) {
        const std::string expected = GetTreeAfter(seed, PasteOneByOne);
        ASSERT_EQ(GetTreeAfter(seed, PasteSelected), expected) << seed;
        ASSERT_EQ(FindBrokenRule(), "") << seed;
    }
}

TEST_F(Clipboard, HoldsThousandsOfNodes)
{
    constexpr int number = 3000;
    const int many = AddFolder("many");
    for (int i = 0; i < number; i++) {
        AddFolder("in" + std::to_string(i), many);
    }
    Copy({many});
    EXPECT_EQ(copyiternumber, number + 1);
    Paste({e});
    EXPECT_EQ(treeiternumber, 8 + 2 * (number + 1));
    EXPECT_EQ(treeiters[treeiters[e].children[0]].childnumber, number);
}

} // namespace korvane
