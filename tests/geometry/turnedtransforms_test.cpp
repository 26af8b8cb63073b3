// The transforms before a camera that does not look along the world's axes as the screen's go.
#include "geometry/transforms.h"
#include "scene/model.h"
#include "tests/support/transformchecks.h"
#include "view/mainview.h"

#include <functional>

namespace korvane::testing
{

// The screen's x axis is the world's -y: a quarter turn about it takes world x to z.
TEST_F(Transforms, TurnAShapeByTheScreenOfATurnedCamera)
{
    SetRotation(quarterturn);
    mainview.scale = 2;
    mainview.center[0] = 0.1F;
    mainview.center[2] = 0.3F;
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    ShapeRotate(box, 90, 0);
    ExpectMapped(before, *shapes[box], boxcenter, [](const Vector& d) {
        return Vector{-d[2], d[1], d[0]};
    });
    ExpectDerived(box, rigid);
}

// The screen's x axis is the world's -y.
TEST_F(Transforms, ScaleAShapeByTheScreenOfATurnedCamera)
{
    SetRotation(quarterturn);
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    ShapeScale(box, 0.5, 1);
    ExpectMapped(before, *shapes[box], boxcenter, [](const Vector& d) {
        return Vector{d[0], d[1] / 2, d[2]};
    });
}

// Up on the screen is the world's x, right is its -y, and all is twice as large.
TEST_F(Transforms, MoveAShapeAlongTheScreenOfATurnedCamera)
{
    SetRotation(quarterturn);
    mainview.scale = 2;
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    ShapeMove(box, 0, 0, 0.1F, 0.04F);
    ExpectMapped(before, *shapes[box], origin, [](const Vector& d) {
        return Vector{d[0] + 0.02, d[1] - 0.05, d[2]};
    });
}

// World y comes towards the viewer and world z goes down on the screen.
static constexpr Columns tilt = {{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}};

// What a tool makes of the box before a tilted camera: up on the screen is the world's -z, and the
// depth is its y. The selection is worked on from the middle of the view.
struct TiltedWork {
    const char* name;
    std::function<void(int box)> run;
    Vector pivot;
    Map map; // of the offsets from the pivot
    double tolerance;
};

static constexpr Vector viewmiddle = {0.1, 0.2, 0.1};
static constexpr Vector sidecenter = {0.3, 0.15, 0.05}; // of the box's side 5, towards +x

// A change of the side alone, whose points are not beside its centre along x.
static Map OfSide(const Map& map)
{
    return [map](const Vector& d) { return d[0] < -0.1 ? d : map(d); };
}

// A quarter turn about the screen's y takes the screen's z to x and its x to -z, that is the
// world's y to x and its x to -y. One about the screen's z takes the screen's x to y and its y to
// -x, that is the world's x to -z and its z to x.
static const Map turnabouty = [](const Vector& d) { return Vector{d[1], -d[0], d[2]}; };
static const Map turnaboutz = [](const Vector& d) { return Vector{d[2], d[1], -d[0]}; };

// The view is twice as large: moves by 0.1 and 0.04 on the screen.
static const Map tiltedmove = [](const Vector& d) {
    return Vector{d[0] + 0.05, d[1], d[2] - 0.02};
};

static const TiltedWork tiltedworks[] = {
    {"turn the shape about y", [](int box) { ShapeRotate(box, 90, 1); }, boxcenter, turnabouty,
     rigid},
    {"turn the shape about z", [](int box) { ShapeRotate(box, 90, 2); }, boxcenter, turnaboutz,
     rigid},
    {"scale the shape along y", [](int box) { ShapeScale(box, 2, 2); }, boxcenter, doublings[3],
     rebuilt},
    {"scale the shape along z", [](int box) { ShapeScale(box, 2, 3); }, boxcenter, doublings[2],
     rebuilt},
    {"move the shape", [](int box) { ShapeMove(box, 0, 0, 0.1F, 0.04F); }, origin, tiltedmove,
     rigid},
    {"turn the side about y", [](int box) { SideRotate(box, 5, 90, 1); }, sidecenter,
     OfSide(turnabouty), rebuilt},
    {"turn the side about z", [](int box) { SideRotate(box, 5, 90, 2); }, sidecenter,
     OfSide(turnaboutz), rebuilt},
    {"scale the side along y", [](int box) { SideScale(box, 5, 2, 2); }, sidecenter,
     OfSide(doublings[3]), rebuilt},
    {"scale the side along z", [](int box) { SideScale(box, 5, 2, 3); }, sidecenter,
     OfSide(doublings[2]), rebuilt},
    {"move the side", [](int box) { SideMove(box, 5, 0, 0, 0.1F, 0.04F); }, sidecenter,
     OfSide(tiltedmove), rebuilt},
    {"turn the selection about y", [](int) { SelectedRotate(90, 1); }, viewmiddle, turnabouty,
     rigid},
    {"turn the selection about z", [](int) { SelectedRotate(90, 2); }, viewmiddle, turnaboutz,
     rigid},
    {"scale the selection along y", [](int) { SelectedScale(2, 2); }, viewmiddle, doublings[3],
     rebuilt},
    {"scale the selection along z", [](int) { SelectedScale(2, 3); }, viewmiddle, doublings[2],
     rebuilt},
    {"move the selection", [](int) { SelectedMove(0, 0, 0.1F, 0.04F); }, origin, tiltedmove, rigid},
};

TEST_F(Transforms, WorkByTheScreenOfATiltedCamera)
{
    for (const TiltedWork& work : tiltedworks) {
        SCOPED_TRACE(work.name);
        StartView();
        SetRotation(tilt);
        mainview.scale = 2;
        for (std::size_t k = 0; k < 3; k++) {
            mainview.center[k] = float(viewmiddle[k]);
        }
        const int box = AddToView(MakeBox());
        const Points before = Remember(box);
        work.run(box);
        ExpectMapped(before, *shapes[box], work.pivot, work.map);
        ExpectDerived(box, work.tolerance);
        ExpectProjected(box);
    }
}

} // namespace korvane::testing
