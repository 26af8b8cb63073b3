// Seeded random walks of insertions and removals. Whatever comes of a body stays closed until a
// single side is left.
#include "geometry/pointinsert.h"
#include "geometry/pointremoval.h"
#include "geometry/sidemerge.h"
#include "tests/support/edits.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace korvane::testing
{

static constexpr int walks = 8; // for every body
static constexpr int steps = 25;

class Walk
{
public:
    Walk(const Shape& start, unsigned seed) : shape(CopyShape(&start)), random(seed)
    {
    }

    // Takes one step; the first broken rule, with the steps that lead to it, or the empty string.
    std::string Step()
    {
        outlines = OutlinesOf(*shape);
        stripes = StripesOf(*shape);
        switch (Choose(4)) {
        case 0:
            Insert();
            break;
        case 1:
            Dissolve();
            break;
        default:
            Remove();
        }
        const std::string broken = shape->sidenumber > 1 ? FindBrokenRuleOfEditedBody(shape.get())
                                                         : FindBrokenRuleAfterEdit(shape.get());
        return broken.empty() ? "" : broken + " after" + taken.str();
    }

private:
    int Choose(int number)
    {
        return std::uniform_int_distribution<int>(0, number - 1)(random);
    }

    void Insert()
    {
        const int stripe = Choose(shape->stripenumber);
        const int position = 1 + Choose(shape->stripes[stripe].pointnumber - 1);
        std::uniform_real_distribution<float> coordinate(-1, 1);
        const float place[3] = {coordinate(random), coordinate(random), coordinate(random)};
        taken << " InsertPoint(" << stripe << ", " << position << ")";
        const int next = shape->pointnumber;
        EXPECT_EQ(InsertPoint(shape.get(), stripe, position, place), next) << taken.str();
    }

    void Dissolve()
    {
        const int stripe = Choose(shape->stripenumber);
        taken << " DissolveStripe(" << stripe << ")";
        ExpectUnchangedUnless(DissolveStripe(shape.get(), stripe));
    }

    void Remove()
    {
        const int point = Choose(shape->pointnumber);
        taken << " RemovePointOfShape(" << point << ")";
        ExpectUnchangedUnless(RemovePointOfShape(shape.get(), point));
    }

    void ExpectUnchangedUnless(bool changed)
    {
        if (!changed) {
            EXPECT_EQ(OutlinesOf(*shape), outlines) << taken.str();
            EXPECT_EQ(StripesOf(*shape), stripes) << taken.str();
        }
    }

    OwnedShape shape;
    std::mt19937 random;
    std::ostringstream taken;
    Outlines outlines; // before the step
    Outlines stripes;
};

TEST(EditsOfABody, KeepItClosedInWhateverOrderTheyCome)
{
    unsigned seed = 0;
    for (const OwnedShape& body : GetBodies()) {
        for (int i = 0; i < walks; i++, seed++) {
            Walk walk(*body, seed);
            for (int k = 0; k < steps; k++) {
                ASSERT_EQ(walk.Step(), "") << "seed " << seed;
            }
        }
    }
}

} // namespace korvane::testing
