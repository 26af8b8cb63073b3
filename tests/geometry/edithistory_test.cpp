// Seeded random edits of a scene through the click handlers, undone to the start and redone to the
// end.
#include "geometry/editing.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/edits.h"
#include "tests/support/invariants.h"
#include "tests/support/savedscene.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <random>
#include <string>
#include <vector>

namespace korvane::testing
{

static constexpr int seeds = 12;
static constexpr int edits = 40;

class EditHistory : public StartViewTest
{
protected:
    int Pick(int number)
    {
        return int(random() % unsigned(number));
    }

    float PickPlace()
    {
        return float(Pick(2001) - 1000) / 1000;
    }

    // Over a segment of a stripe, or a little beside it.
    void PointAtStripe(int activestripe)
    {
        const Stripe* stripe = GetStripeOfElement(&activestripes[activestripe]);
        const int segment = 1 + Pick(stripe->pointnumber - 1);
        const float* from = stripe->shape->points[stripe->points[segment - 1]];
        const float* to = stripe->shape->points[stripe->points[segment]];
        for (int k = 0; k < 3; k++) {
            mouse[k] = (from[k] + to[k]) / 2 + 0.05F * PickPlace();
            gmouse[k] = mouse[k];
        }
    }

    void Edit()
    {
        const int kind = Pick(5);
        if (kind == 0) {
            RemovePoint(Pick(activepointnumber));
        } else if (kind == 1) {
            RemoveStripe(Pick(activestripenumber));
        } else if (kind == 2) {
            PointMove(Pick(activepointnumber), PickPlace(), PickPlace(), 1);
        } else {
            const int stripe = Pick(activestripenumber);
            PointAtStripe(stripe);
            AddPoint(stripe);
        }
    }

    std::mt19937 random;
};

TEST_F(EditHistory, LeadsBackToTheFirstSceneAndForwardToTheLast)
{
    const std::vector<OwnedShape> bodies = GetBodies();
    for (unsigned seed = 0; seed < seeds; seed++) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        StartView();
        random.seed(seed);
        for (int i = 0; i < 3; i++) {
            AddToView(OwnedShape(CopyShape(bodies[random() % bodies.size()].get())));
        }
        std::vector<std::string> scenes = {GetSceneText()}; // one more than there are undo steps
        for (int i = 0; i < edits; i++) {
            const int before = pindex;
            Edit();
            ASSERT_EQ(FindBrokenRule(), "");
            ASSERT_LE(pindex, before + 1);
            if (pindex > before) {
                scenes.push_back(GetSceneText());
            } else {
                ASSERT_EQ(GetSceneText(), scenes.back()); // it was refused
            }
        }
        for (int i = pindex; i > 0; i--) {
            PopUndo();
            ASSERT_EQ(GetSceneText(), scenes[std::size_t(i) - 1]);
            ASSERT_EQ(FindBrokenRule(), "");
        }
        for (std::size_t i = 1; i < scenes.size(); i++) {
            PopRedo();
            ASSERT_EQ(GetSceneText(), scenes[i]);
        }
    }
}

} // namespace korvane::testing
