// The steps back and forth; what a step restores is tested with the records.
#include "scene/undo.h"

#include "geometry/finishedit.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace korvane
{

using namespace korvane::testing;

// An edit with its undo step: point 0 of a shape goes to this x.
static void Edit(int shape, float x)
{
    PushShape(shape);
    shapes[shape]->points[0][0] = x;
    FinishEdit(shape);
}

static float GetX(int shape)
{
    return shapes[shape]->points[0][0];
}

static void ExpectPosition(int index, int number)
{
    EXPECT_EQ(pindex, index);
    EXPECT_EQ(pnumber, number);
    EXPECT_EQ(FindBrokenRule(), "");
}

// Two cubes whose first points are at x -0.5.
class UndoSteps : public StartViewTest
{
protected:
    void SetUp() override
    {
        StartViewTest::SetUp();
        AddToView(Cube());
        AddToView(Cube());
    }
};

// The present is saved behind the records by the first undo and leaves with the last redo.
TEST_F(UndoSteps, WalkBackAndForth)
{
    Edit(0, 1);
    Edit(0, 2);
    ExpectPosition(2, 2);
    PopUndo();
    EXPECT_EQ(GetX(0), 1);
    ExpectPosition(1, 3);
    PopUndo();
    EXPECT_EQ(GetX(0), -0.5F);
    ExpectPosition(0, 3);
    PopRedo();
    EXPECT_EQ(GetX(0), 1);
    ExpectPosition(1, 3);
    PopRedo();
    EXPECT_EQ(GetX(0), 2);
    ExpectPosition(2, 2);
}

TEST_F(UndoSteps, DoNothingWhereThereAreNone)
{
    PopUndo();
    PopRedo();
    ExpectPosition(0, 0);
    Edit(0, 1);
    PopRedo();
    ExpectPosition(1, 1);
    PopUndo();
    PopUndo();
    PopUndo();
    ExpectPosition(0, 2);
    PopRedo();
    PopRedo();
    ExpectPosition(1, 1);
    EXPECT_EQ(GetX(0), 1);
    EXPECT_EQ(camposition, cameraframes);
}

TEST_F(UndoSteps, ForwardAreLostWithANewChange)
{
    Edit(0, 1);
    Edit(0, 2);
    Edit(0, 3);
    PopUndo();
    PopUndo();
    ExpectPosition(1, 4);
    Edit(0, 4);
    ExpectPosition(2, 2);
    PopRedo();
    EXPECT_EQ(GetX(0), 4);
    PopUndo();
    EXPECT_EQ(GetX(0), 1);
    PopUndo();
    EXPECT_EQ(GetX(0), -0.5F);
}

TEST_F(UndoSteps, FlyFirstWhenTheViewHasMoved)
{
    Edit(0, 1);
    mainview.center[0] = 0.25F;
    PopUndo();
    EXPECT_EQ(GetX(0), 1); // as it was
    ExpectPosition(1, 2);
    EXPECT_EQ(camposition, 0);
    PlayFlight();
    EXPECT_EQ(mainview.center[0], 0.0F);
    EXPECT_EQ(GetX(0), 1);
    PopUndo();
    EXPECT_EQ(GetX(0), -0.5F);
    ExpectPosition(0, 2);
    EXPECT_EQ(camposition, cameraframes);
}

// Redo shows each change from where it was made, too.
TEST_F(UndoSteps, ForwardFlyFirstWhenTheViewHasMoved)
{
    Edit(0, 1);
    PopUndo();
    mainview.scale = 2;
    PopRedo();
    EXPECT_EQ(GetX(0), -0.5F);
    ExpectPosition(0, 2);
    EXPECT_EQ(camposition, 0);
    PlayFlight();
    EXPECT_EQ(mainview.scale, 1.0F);
    PopRedo();
    EXPECT_EQ(GetX(0), 1);
    ExpectPosition(1, 1);
}

TEST_F(UndoSteps, FlyForTheSmallestDifferenceOfCentreOrScale)
{
    Edit(0, 1);
    const UndoRecord& record = puffer[0];
    EXPECT_TRUE(IsViewInPlace(record));
    for (float* value :
         {&mainview.center[0], &mainview.center[1], &mainview.center[2], &mainview.scale}) {
        const float kept = *value;
        *value = std::nextafter(kept, 9.0F);
        EXPECT_FALSE(IsViewInPlace(record));
        *value = kept;
    }
    EXPECT_TRUE(IsViewInPlace(record));
}

TEST_F(UndoSteps, TakeAxesThatDifferByAHundredthForTheSame)
{
    Edit(0, 1);
    UndoRecord& record = puffer[0];
    for (float* component : {&record.axes[0][0], &record.axes[0][1], &record.axes[0][2],
                             &record.axes[1][0], &record.axes[1][1], &record.axes[1][2]}) {
        const float kept = *component;
        *component = kept - 0.01F;
        EXPECT_TRUE(IsViewInPlace(record));
        *component = kept + 0.0101F;
        EXPECT_FALSE(IsViewInPlace(record));
        *component = kept;
    }
}

TEST_F(UndoSteps, ArriveWhereverTheyFlyTo)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> place(-3, 3);
    for (int i = 0; i < 100; i++) {
        SetRotation(GetRandomRotation(random));
        std::generate_n(mainview.center, 3, [&] { return place(random); });
        mainview.scale = std::exp(place(random));
        Edit(0, place(random));
    }
    for (int i = 99; i >= 0; i--) {
        if (!IsViewInPlace(puffer[i])) {
            PopUndo();
            ASSERT_EQ(pindex, i + 1);
            PlayFlight();
        }
        PopUndo();
        ASSERT_EQ(pindex, i);
    }
    EXPECT_EQ(GetX(0), -0.5F);
    ExpectPosition(0, 101);
}

TEST_F(UndoSteps, SaveThePresentOnceOnTheWay)
{
    Edit(0, 1);
    mainview.center[0] = 0.25F;
    PopUndo();
    const Shape* saved = puffer[1].shapes[0];
    PlayCamera();
    PopUndo();
    EXPECT_EQ(puffer[1].shapes[0], saved);
    ExpectPosition(1, 2);
}

// As when the key is held down: each press comes before the flight of the one before has ended.
TEST_F(UndoSteps, DoNotStartAFlightOverThatIsOnItsWay)
{
    Edit(0, 1);
    mainview.center[0] = 0.25F;
    for (int tick = 0; tick < cameraframes; tick++) {
        PopUndo();
        EXPECT_EQ(camposition, tick);
        ExpectPosition(1, 2);
        PlayCamera();
    }
    PopUndo();
    ExpectPosition(0, 2);
}

TEST_F(UndoSteps, TakeTheViewOverFromAFlightElsewhere)
{
    Edit(0, 1);
    mainview.center[0] = 0.25F;
    constexpr float elsewhere[3] = {1, 1, 1};
    ChangeCamera(nullptr, nullptr, elsewhere, 1);
    PlayCamera();
    PopUndo();
    EXPECT_EQ(camposition, 0);
    PlayFlight();
    EXPECT_TRUE(IsViewInPlace(puffer[0]));
}

// A view from behind, upside down: every arc of the flight is a half circle.
TEST_F(UndoSteps, ArriveFromTheOppositeView)
{
    Edit(0, 1);
    for (const Columns& opposite : {Columns{{{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}}},
                                    Columns{{{1, 0, 0}, {0, -1, 0}, {0, 0, -1}}},
                                    Columns{{{-1, 0, 0}, {0, -1, 0}, {0, 0, 1}}}}) {
        SetRotation(opposite);
        PopUndo();
        ExpectPosition(1, 2);
        PlayFlight();
        EXPECT_TRUE(IsViewInPlace(puffer[0]));
    }
}

TEST_F(UndoSteps, KeepAChangeThatIsMadeAfterAFlight)
{
    Edit(0, 1);
    mainview.center[0] = 0.25F;
    PopUndo(); // saves the present, and flies
    Edit(0, 2);
    ExpectPosition(2, 2);
    PopUndo();
    EXPECT_EQ(GetX(0), 1);
    PopRedo();
    EXPECT_EQ(GetX(0), 2);
}

// As a drawing that is finished after the flight: it was saved when it was begun.
TEST_F(UndoSteps, KeepWhatGoesOnAfterAFlight)
{
    Edit(0, 1);
    mainview.center[0] = 0.25F;
    PopUndo();
    ExpectPosition(1, 2);
    PlayFlight();
    shapes[0]->points[0][0] = 2;
    FinishEdit(0);
    PopUndo();
    EXPECT_EQ(GetX(0), -0.5F);
    ExpectPosition(0, 2);
    PopRedo();
    EXPECT_EQ(GetX(0), 2);
    ExpectPosition(1, 1);
}

TEST_F(UndoSteps, BringBackEachOfSeveralShapes)
{
    Edit(0, 1);
    Edit(1, 2);
    Edit(0, 3);
    for (int round = 0; round < 2; round++) {
        PopUndo();
        EXPECT_EQ(GetX(0), 1);
        PopUndo();
        EXPECT_EQ(GetX(1), -0.5F);
        PopUndo();
        EXPECT_EQ(GetX(0), -0.5F);
        ExpectPosition(0, 4);
        PopRedo();
        EXPECT_EQ(GetX(0), 1); // which the record of shape 1 cannot tell
        PopRedo();
        EXPECT_EQ(GetX(1), 2);
        PopRedo();
        EXPECT_EQ(GetX(0), 3);
        ExpectPosition(3, 3);
    }
}

TEST_F(UndoSteps, KeepWhatTheNextRecordDoesNotTell)
{
    Edit(0, 1); // told by the next one
    Edit(0, 2);
    Edit(1, 3); // told by that of the scene
    PushScene();
    AddToScene(Square(), "square");
    Edit(2, 4);
    const bool kept[] = {false, true, false, true, false};
    for (int i = 4; i >= 0; i--) {
        PopUndo();
        EXPECT_EQ(puffer[i].redo != nullptr, kept[i]) << i;
    }
    for (int i = 0; i < 5; i++) {
        PopRedo();
        EXPECT_EQ(puffer[i].redo, nullptr);
    }
    ExpectPosition(5, 5);
    EXPECT_EQ(GetX(2), 4);
}

TEST_F(UndoSteps, PassOverAShapeThatIsGone)
{
    Edit(0, 1);
    Edit(1, 2);
    puffer[1].shapeindex = 9;
    PopUndo(); // there is no present to save
    EXPECT_EQ(GetX(1), 2);
    ExpectPosition(1, 2);
    PopUndo();
    EXPECT_EQ(GetX(0), -0.5F);
    ExpectPosition(0, 2);
    PopRedo();
    EXPECT_EQ(GetX(0), 1);
    ExpectPosition(1, 1);
    PopRedo();
    PopUndo();
    EXPECT_EQ(GetX(0), -0.5F);
    EXPECT_EQ(GetX(1), 2);
    ExpectPosition(0, 2);
}

TEST_F(UndoSteps, PassOverShapesOfASceneThatIsGone)
{
    Edit(0, 1);
    Edit(1, 2);
    DelScene(); // no edit: nothing is saved
    PopUndo();
    PopUndo();
    ExpectPosition(0, 2);
    PopRedo();
    PopRedo();
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(UndoSteps, AskForAFrame)
{
    rdstate = 0;
    Undo();
    EXPECT_EQ(rdstate, redrawwanted);
    rdstate = 0;
    Redo();
    EXPECT_EQ(rdstate, redrawwanted);
}

TEST_F(UndoSteps, EndWithANewScene)
{
    Edit(0, 1);
    Edit(1, 2);
    PopUndo();
    PopUndo();
    NewMrt();
    ExpectPosition(0, 0);
    PopUndo();
    PopRedo();
    EXPECT_EQ(shapenumber, 0);
    PushScene();
    ExpectPosition(1, 1);
}

} // namespace korvane
