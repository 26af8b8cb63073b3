#include "tests/support/sweeps.h"

#include "geometry/shapegeometry.h"
#include "geometry/sideplane.h"
#include "geometry/stripes.h"
#include "geometry/sweep.h"
#include "tests/support/invariants.h"

#include <gtest/gtest.h>

namespace korvane::testing
{

const Points handle = {{0, 0, 1}, {0, 0, 3}, {4, 0, 3}, {4, 0, -3}, {0, 0, -3}, {0, 0, -1}};

bool SweepSoundly(Shape* shape, int side, const Points& path, int target, bool closed)
{
    if (!SweepSide(shape, side, path, target, closed)) {
        return false;
    }
    SetStripesOfShape(shape);
    SetNormalsOfShape(shape);
    SetCenterPointOfShape(shape);
    SetRadiusOfShape(shape);
    EXPECT_EQ(FindBrokenRuleOfShape(*shape), "");
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
    return true;
}

void ExpectNothingBuilt(const OwnedShape& shape, int side, const Points& path, int target,
                        bool closed)
{
    const Points points = PointsOf(*shape);
    const Outlines outlines = OutlinesOf(*shape);
    const Outlines stripes = StripesOf(*shape);
    EXPECT_FALSE(SweepSide(shape.get(), side, path, target, closed));
    EXPECT_EQ(PointsOf(*shape), points);
    EXPECT_EQ(OutlinesOf(*shape), outlines);
    EXPECT_EQ(StripesOf(*shape), stripes);
    EXPECT_EQ(FindBrokenRuleOfShape(*shape), "");
}

Points::value_type CenterOf(const Shape& shape, int side)
{
    const Block<float[]> center = GetCenterOfSide(&shape.sides[side]);
    return {center[0], center[1], center[2]};
}

} // namespace korvane::testing
