// Long histories of changes of every kind: undone to the start they give the first scene byte for
// byte, redone to the end the last one.
#include "scene/undo.h"

#include "geometry/finishedit.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/treeview.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/savedscene.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

class UndoHistory : public StartViewTest
{
protected:
    int Pick(int number)
    {
        return int(random() % unsigned(number));
    }

    int PickFolder()
    {
        std::vector<int> folders;
        for (int n = 0; n < treeiternumber; n++) {
            if (treeiters[n].type == NODE_FOLDER) {
                folders.push_back(n);
            }
        }
        return folders[std::size_t(Pick(int(folders.size())))];
    }

    std::string PickName()
    {
        return std::string(1, "aAbB"[Pick(4)]); // equal names are common
    }

    // Another form for a shape, with another number of sides or the same.
    void ReplaceShape(int index)
    {
        PushShape(index);
        DeleteShape(shapes[index]);
        shapes[index] = MakeOne().release();
        shapes[index]->points[0][0] = 0.001F * float(Pick(1000));
        FinishEdit(index);
    }

    void ChangeScene()
    {
        PushScene();
        const int kind = Pick(8);
        if (kind == 0) {
            DelScene();
        }
        if (kind < 3) {
            const std::string name = PickName();
            AddTreeIter(PickFolder(), NODE_FOLDER, CopyText(name));
        } else {
            AddToScene(MakeOne(), PickName(), PickFolder());
        }
        TransferAllShape();
    }

    void ChangeSomething()
    {
        if (Pick(4) == 0) {
            SetRotation(GetRandomRotation(random));
            mainview.center[Pick(3)] = 0.01F * float(Pick(100));
            mainview.scale = 0.5F + 0.01F * float(Pick(100));
            TransferAllShape();
        }
        if (shapenumber == 0 || Pick(3) == 0) {
            ChangeScene();
        } else {
            ReplaceShape(Pick(shapenumber));
        }
    }

    OwnedShape MakeOne()
    {
        constexpr OwnedShape (*makers[])() = {Square, Cube, FlatTriangle, Tetrahedron, ConcaveL};
        return makers[Pick(5)]();
    }

    std::mt19937 random{1};
};

// One step back or forward, with its flight when there is one.
static void Step(void (*pop)(), int goal)
{
    pop();
    if (pindex != goal) {
        PlayFlight();
        pop();
    }
    ASSERT_EQ(pindex, goal);
    ASSERT_EQ(FindBrokenRule(), "");
}

// States 0 .. n of a history of n changes, which has been made.
static void ExpectBackTo(int goal, const std::vector<std::string>& states)
{
    while (pindex > goal) {
        ASSERT_NO_FATAL_FAILURE(Step(PopUndo, pindex - 1));
        ASSERT_EQ(GetSceneText(), states[std::size_t(pindex)]) << pindex;
    }
}

static void ExpectForwardTo(int goal, const std::vector<std::string>& states)
{
    while (pindex < goal) {
        ASSERT_NO_FATAL_FAILURE(Step(PopRedo, pindex + 1));
        ASSERT_EQ(GetSceneText(), states[std::size_t(pindex)]) << pindex;
    }
}

TEST_F(UndoHistory, GivesBackEveryStateOnTheWayBackAndForth)
{
    for (int seed = 1; seed <= 20; seed++) {
        SCOPED_TRACE(seed);
        StartView();
        random.seed(unsigned(seed));
        std::vector<std::string> states{GetSceneText()};
        for (int i = 0; i < 40; i++) {
            ChangeSomething();
            ASSERT_EQ(FindBrokenRule(), "");
            states.push_back(GetSceneText());
        }
        for (int round = 0; round < 5; round++) { // turning round at any place
            ASSERT_NO_FATAL_FAILURE(ExpectBackTo(Pick(pindex + 1), states));
            ASSERT_NO_FATAL_FAILURE(ExpectForwardTo(pindex + Pick(41 - pindex), states));
        }
        ASSERT_NO_FATAL_FAILURE(ExpectBackTo(0, states));
        ASSERT_NO_FATAL_FAILURE(ExpectForwardTo(40, states));
        EXPECT_EQ(pnumber, 40);
    }
}

// Changes come in between, each with the steps forward that it takes away, and steps that only set
// off on a flight, which need not arrive.
TEST_F(UndoHistory, GoesOnFromEveryPlace)
{
    std::vector<std::string> states{GetSceneText()};
    for (int i = 0; i < 400; i++) {
        if (Pick(4) == 0) {
            const int position = pindex;
            mainview.center[0] += 0.0037F; // where no change was made
            const auto pop = Pick(2) == 0 ? PopUndo : PopRedo;
            pop();
            for (int frames = Pick(cameraframes + 1); frames > 0; frames--) {
                PlayCamera();
            }
            ASSERT_EQ(pindex, position);
            ASSERT_EQ(GetSceneText(), states[std::size_t(pindex)]);
        } else if (Pick(3) != 0) {
            ChangeSomething();
            states.resize(std::size_t(pindex));
            states.push_back(GetSceneText());
        } else if (Pick(2) == 0) {
            ASSERT_NO_FATAL_FAILURE(ExpectBackTo(Pick(pindex + 1), states));
        } else {
            const int last = int(states.size()) - 1;
            ASSERT_NO_FATAL_FAILURE(ExpectForwardTo(pindex + Pick(last - pindex + 1), states));
        }
    }
    ASSERT_NO_FATAL_FAILURE(ExpectBackTo(0, states));
}

} // namespace korvane
