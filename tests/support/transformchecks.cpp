#include "tests/support/transformchecks.h"

#include "geometry/rounding.h"
#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "tests/support/invariants.h"
#include "view/mainview.h"

#include <string>

namespace korvane::testing
{

constinit const PlainMap turns[3] = {
    [](const Vector& d) {
        return Vector{d[0], -d[2], d[1]};
    }, // y goes to z
    [](const Vector& d) {
        return Vector{d[2], d[1], -d[0]};
    }, // z goes to x
    [](const Vector& d) {
        return Vector{-d[1], d[0], d[2]};
    }, // x goes to y
};

constinit const PlainMap doublings[4] = {
    [](const Vector& d) {
        return Vector{2 * d[0], 2 * d[1], 2 * d[2]};
    },
    [](const Vector& d) {
        return Vector{2 * d[0], d[1], d[2]};
    },
    [](const Vector& d) {
        return Vector{d[0], 2 * d[1], d[2]};
    },
    [](const Vector& d) {
        return Vector{d[0], d[1], 2 * d[2]};
    },
};

OwnedShape MakeBox()
{
    OwnedShape box = CubeOfHalfEdge(0.1F);
    for (int i = 0; i < box->pointnumber; i++) {
        for (std::size_t k = 0; k < 3; k++) {
            box->points[i][k] = float(double(box->points[i][k]) + boxcenter[k]);
        }
    }
    CompleteShape(box.get());
    return box;
}

void ExpectPoint(const float* actual, const Vector& expected)
{
    for (std::size_t k = 0; k < 3; k++) {
        EXPECT_NEAR(double(actual[k]), expected[k], 1e-6) << "coordinate " << k;
    }
}

void ExpectMapped(const Points& before, const Shape& shape, const Vector& pivot, const Map& map)
{
    ASSERT_EQ(int(before.size()), shape.pointnumber);
    for (std::size_t i = 0; i < before.size(); i++) {
        const Vector offset = {double(before[i][0]) - pivot[0], double(before[i][1]) - pivot[1],
                               double(before[i][2]) - pivot[2]};
        const Vector mapped = map(offset);
        SCOPED_TRACE("point " + std::to_string(i));
        ExpectPoint(shape.points[i],
                    {mapped[0] + pivot[0], mapped[1] + pivot[1], mapped[2] + pivot[2]});
    }
}

void ExpectNear(const float (*a)[3], const float (*b)[3], int n, double tolerance)
{
    for (int i = 0; i < n; i++) {
        for (int k = 0; k < 3; k++) {
            ASSERT_NEAR(double(a[i][k]), double(b[i][k]), tolerance) << i << ", " << k;
        }
    }
}

// The normals at the corners of the triangles. Others may be there that no corner uses.
static void ExpectNearNormals(const Shape& a, const Shape& b, double tolerance)
{
    ASSERT_EQ(a.trianglenumber, b.trianglenumber);
    for (int i = 0; i < a.trianglenumber; i++) {
        for (int k = 0; k < 3; k++) {
            ExpectNear(&a.normals[a.triangles[i].normals[k]], &b.normals[b.triangles[i].normals[k]],
                       1, tolerance);
        }
    }
}

void ExpectDerived(int shape, double tolerance)
{
    const OwnedShape fresh(CopyShape(shapes[shape]));
    SetNormalsOfShape(fresh.get());
    SetCenterPointOfShape(fresh.get());
    SetRadiusOfShape(fresh.get());
    const OwnedShape round(RoundShape(fresh.get()));
    ExpectNearNormals(*shapes[shape], *fresh, tolerance);
    ExpectNear(&shapes[shape]->center, &fresh->center, 1, tolerance);
    EXPECT_NEAR(double(shapes[shape]->radius), double(fresh->radius), tolerance);
    ASSERT_EQ(round->pointnumber, round1[shape]->pointnumber);
    ExpectNear(round1[shape]->points, round->points, round->pointnumber, tolerance);
    ExpectNearNormals(*round1[shape], *round, tolerance);
}

void ExpectProjected(int shape)
{
    ASSERT_EQ(showtable[shape], SHOW_ROUNDED);
    const Shape* versions[2][2] = {{shapes[shape], shapest[shape]},
                                   {round1[shape], round1t[shape]}};
    for (const auto& [model, copy] : versions) {
        const OwnedShape fresh(CopyShape(model));
        TransferPoints(&mainview, fresh->points, fresh->pointnumber);
        ExpectNear(copy->points, fresh->points, fresh->pointnumber, 0);
    }
}

void Transforms::TearDown()
{
    EXPECT_EQ(FindBrokenRule(), "");
    SelectNodes({});
}

Points Transforms::Remember(int shape)
{
    return PointsOf(*shapes[shape]);
}

} // namespace korvane::testing
