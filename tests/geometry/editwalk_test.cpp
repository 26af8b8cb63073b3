// Seeded random walks of insertions and removals. Whatever comes of a body stays closed until a
// single side is left; a shape as no hand has made it keeps at least the rules of every shape.
#include "geometry/normals.h"
#include "geometry/pointinsert.h"
#include "geometry/pointremoval.h"
#include "geometry/sidemerge.h"
#include "tests/support/edits.h"
#include "tests/support/invariants.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace korvane::testing
{

static constexpr int walks = 8; // for every body
static constexpr int steps = 25;

using RuleFinder = std::string (*)(Shape*);

static std::string FindBrokenRuleOfFormerBody(Shape* shape)
{
    return shape->sidenumber > 1 ? FindBrokenRuleOfEditedBody(shape)
                                 : FindBrokenRuleAfterEdit(shape);
}

static std::string FindBrokenRuleOfAnyShape(Shape* shape)
{
    SetNormalsOfShape(shape);
    return FindBrokenRuleOfShape(*shape);
}

class Walk
{
public:
    Walk(const Shape& start, unsigned seed, RuleFinder rules)
        : shape(CopyShape(&start)), random(seed), findbrokenrule(rules)
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
        const std::string broken = findbrokenrule(shape.get());
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
        const bool inserted = InsertPoint(shape.get(), stripe, position, place) == next;
        EXPECT_TRUE(inserted || findbrokenrule != FindBrokenRuleOfFormerBody) << taken.str();
        ExpectUnchangedUnless(inserted);
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
    RuleFinder findbrokenrule;
    std::ostringstream taken;
    Outlines outlines; // before the step
    Outlines stripes;
};

TEST(EditsOfABody, KeepItClosedInWhateverOrderTheyCome)
{
    unsigned seed = 0;
    for (const OwnedShape& body : GetBodies()) {
        for (int i = 0; i < walks; i++, seed++) {
            Walk walk(*body, seed, FindBrokenRuleOfFormerBody);
            for (int k = 0; k < steps; k++) {
                ASSERT_EQ(walk.Step(), "") << "seed " << seed;
            }
        }
    }
}

// Sides between points at random: they may pass a point more than once, even at once.
static OwnedShape MakeSenselessShape(std::mt19937& random)
{
    const auto choose = [&](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    Points points(std::size_t(choose(3, 8)));
    for (std::array<float, 3>& point : points) {
        for (float& coordinate : point) {
            coordinate = float(choose(0, 4)); // some points fall together
        }
    }
    Outlines sides(std::size_t(choose(1, 5)));
    for (std::vector<int>& side : sides) {
        side.resize(std::size_t(choose(3, 7)));
        for (int& corner : side) {
            corner = choose(0, int(points.size()) - 1);
        }
    }
    return MakeShape(points, sides);
}

TEST(EditsOfAShapeWithoutSense, KeepTheRulesOfEveryShape)
{
    for (unsigned seed = 0; seed < 300; seed++) {
        std::mt19937 random(seed);
        Walk walk(*MakeSenselessShape(random), seed, FindBrokenRuleOfAnyShape);
        for (int k = 0; k < steps; k++) {
            ASSERT_EQ(walk.Step(), "") << "seed " << seed;
        }
    }
}

} // namespace korvane::testing
