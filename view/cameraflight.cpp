#include "view/cameraflight.h"

#include "geometry/directions.h"
#include "geometry/rotation.h"
#include "geometry/shapegeometry.h"
#include "geometry/vectors.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/shownshapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane
{

CameraFrame camtable[cameraframes];
int camposition = cameraframes; // idle: no flight plays at the start

static constexpr Direction rightward = {1, 0, 0};
static constexpr Direction upward = {0, 1, 0};
static constexpr Direction toviewer = {0, 0, 1};

static constexpr double exactness = 0.0001; // components nearer to 0, 1 or -1 end there

// One wall of the background cube, seen from inside: the direction into the room, and the
// directions that may stand up when the wall faces the viewer. The order is that of activebgcube.
struct Wall {
    float direction[3];
    float ups[4][3];
};
static constexpr int upnumber = 4;
static constexpr Wall walls[6] = {
    {{0, 0, 1}, {{0, 1, 0}, {-1, 0, 0}, {0, -1, 0}, {1, 0, 0}}},
    {{0, 0, -1}, {{0, 1, 0}, {-1, 0, 0}, {0, -1, 0}, {1, 0, 0}}},
    {{0, 1, 0}, {{-1, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, -1}}},
    {{0, -1, 0}, {{-1, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, -1}}},
    {{1, 0, 0}, {{0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}}},
    {{-1, 0, 0}, {{0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}}},
};
static constexpr double wallangle = 0.001; // radians; a wall nearer to facing or upright is so

static constexpr double fitradius = 0.6;        // of what is fitted, on the screen
static constexpr double surfacelift = 1.0 / 80; // of the view's centre above a clicked surface

// A given direction at unit length, or `otherwise` when none is given. One that points nowhere (a
// triangle without area has such a normal) stays as it is and turns nothing.
static Direction GetDirection(const float* given, const Direction& otherwise)
{
    if (given == nullptr) {
        return otherwise;
    }
    Direction direction = {given[0], given[1], given[2]};
    Normalise(direction.data());
    return direction;
}

// Where a direction that points away from the viewer passes on its way to him: along the axis
// farther from it, as VectorRotate would choose; of equal ones y.
static Direction GetTiltDetour(const Direction& facing)
{
    return std::fabs(facing[1]) > std::fabs(facing[0]) ? rightward : upward;
}

// Where an `up` that points down passes on its way: aside, so that the view rolls.
static Direction GetRollDetour(const Direction& facing, const Direction& up)
{
    Direction aside;
    Store(GetCross(ToVector(facing.data()), ToVector(up.data())), aside.data());
    Normalise(aside.data());
    return aside;
}

// The screen direction that has to stand at `up` now for the whole tilt to bring it upright.
static Direction GetUpGoal(const Arc& tilt)
{
    float columns[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    TurnAlong(columns, tilt, arcend, 0);
    return {columns[1][0], columns[1][1], columns[1][2]};
}

// How much of the flight lies behind at a frame, counted from 1: it starts and ends gently.
static double GetProgress(int frame)
{
    return 0.5 - 0.5 * std::cos(std::numbers::pi * frame / cameraframes);
}

static int GetArcIndex(int frame)
{
    constexpr double arcrate = 256.5; // the last sample has half a step of its own
    return frame == cameraframes ? arcend : int(GetProgress(frame) * arcrate);
}

// A flight onto an axis ends exactly on it.
static void SnapComponents(float* rotation)
{
    for (int i = 0; i < 9; i++) {
        for (const float target : {0.0F, 1.0F, -1.0F}) {
            if (std::fabs(double(rotation[i]) - double(target)) < exactness) {
                rotation[i] = target;
            }
        }
    }
}

// Every frame turns the present view by a part of the whole turn: it rolls about `dir` until `up`
// is right, and tilts `dir` to the viewer. Both parts grow alike, so no frame is far from the one
// before.
static void FillRotations(const float* dir, const float* up)
{
    const Direction facing = GetDirection(dir, toviewer);
    const Arc tilt = SampleArc(facing, toviewer, GetTiltDetour(facing));
    const Direction upgoal = GetUpGoal(tilt);
    const Direction upnow = GetDirection(up, upgoal);
    const Arc roll = SampleArc(upnow, upgoal, GetRollDetour(facing, upnow));
    for (int k = 0; k < cameraframes; k++) {
        float columns[3][3];
        std::copy_n(mainview.rotation, 9, columns[0]);
        TurnAlong(columns, roll, 0, GetArcIndex(k + 1));
        TurnAlong(columns, tilt, 0, GetArcIndex(k + 1));
        for (float* column : columns) {
            Normalise(column);
        }
        std::copy_n(columns[0], 9, camtable[k].rotation);
    }
    SnapComponents(camtable[cameraframes - 1].rotation);
}

// The last frame has centre and scale to the bit: undo compares them with those of its records.
static void FillCentersAndScales(const float* center, float scale)
{
    const double nowscale = double(mainview.scale);
    for (int k = 0; k < cameraframes - 1; k++) {
        const double w = GetProgress(k + 1);
        for (int i = 0; i < 3; i++) {
            const double now = double(mainview.center[i]);
            camtable[k].center[i] = float(now + w * (double(center[i]) - now));
        }
        camtable[k].scale = float(nowscale + w * (double(scale) - nowscale));
    }
    std::copy_n(center, 3, camtable[cameraframes - 1].center);
    camtable[cameraframes - 1].scale = scale;
}

void ChangeCamera(const float* dir, const float* up, const float* center, float scale)
{
    FillRotations(dir, up);
    FillCentersAndScales(center, std::clamp(scale, smallestscale, greatestscale));
    camposition = 0;
}

void SetStart()
{
    float axes[2][3] = {{0, 0, 1}, {0, 1, 0}};
    Rotate(&mainview, axes, 2);
    constexpr float origin[3] = {0, 0, 0};
    ChangeCamera(axes[0], axes[1], origin, 1);
}

static Wall RotateWall(const MainView* view, Wall wall)
{
    Rotate(view, &wall.direction, 1);
    Rotate(view, wall.ups, upnumber);
    return wall;
}

// The view after the shortest turn that brings a screen direction to face the viewer.
static MainView GetFacingView(const float* direction)
{
    MainView view = mainview;
    float columns[3][3];
    std::copy_n(view.rotation, 9, columns[0]);
    VectorRotate(columns, direction, toviewer.data());
    std::copy_n(columns[0], 9, view.rotation);
    return view;
}

// The first of the directions at the smallest angle to a goal.
static int FindNearestUp(const float ups[][3], const Direction& goal)
{
    int nearest = 0;
    for (int i = 1; i < upnumber; i++) {
        if (GetAlfaOfTwoVectors(ups[i], goal.data()) <
            GetAlfaOfTwoVectors(ups[nearest], goal.data())) { // strictly: the first of equals stays
            nearest = i;
        }
    }
    return nearest;
}

void CubeRotate()
{
    if (activepointer == nullptr || activepointer->type != ELEMENT_CUBEFACE) {
        return;
    }
    // The flight starts from the view as it is seen, so the wall must be taken from there too:
    // turned by a rotation that has not snapped it would end askew.
    std::copy_n(mainview.rotation, 9, mainview.freerotation);
    const Wall& wall = walls[activepointer - activebgcube];
    const Wall seen = RotateWall(&mainview, wall);
    const MainView facing = GetFacingView(seen.direction);
    const Wall ahead = RotateWall(&facing, wall);
    const int up = FindNearestUp(ahead.ups, upward);
    if (GetAlfaOfTwoVectors(seen.direction, toviewer.data()) >= wallangle ||
        GetAlfaOfTwoVectors(ahead.ups[up], upward.data()) >= wallangle) {
        ChangeCamera(seen.direction, seen.ups[up], mainview.center, mainview.scale);
        return;
    }
    const int side = FindNearestUp(ahead.ups, rightward);
    ChangeCamera(nullptr, seen.ups[side], mainview.center, mainview.scale);
}

// The triangle of a side that is nearest to the viewer under the pointer, -1 when there is none;
// `spot` is then where the pointer meets it.
static int FindTriangleUnderMouse(const Side& side, float* spot)
{
    int found = -1;
    for (int k = 0; k < side.trianglenumber; k++) {
        float hit[3] = {mouse[0], mouse[1], 0};
        if (InTheTriangle2dSetZ(hit, &side.shape->triangles[side.triangles[k]]) &&
            (found < 0 || hit[2] > spot[2])) { // strictly: the first of equal depths stays
            found = side.triangles[k];
            std::copy_n(hit, 3, spot);
        }
    }
    return found;
}

// The screen direction in which a triangle of a drawn copy faces. Its corners may have been moved
// by the perspective, and the copy's own normal with them: then they are taken back to the world.
static Direction GetFacingOfTriangle(const Shape* copy, int triangle)
{
    const float* own = copy->trianglenormals[triangle];
    if ((mainview.perspective & fadefull) == 0) {
        return {own[0], own[1], own[2]};
    }
    float corners[3][3];
    for (int k = 0; k < 3; k++) {
        std::copy_n(copy->points[copy->triangles[triangle].points[k]], 3, corners[k]);
    }
    ReTransferPoints(&mainview, corners, 3);
    float normal[1][3];
    Store(GetCross(corners[0], corners[1], corners[2]), normal[0]);
    Normalise(normal[0]);
    Rotate(&mainview, normal, 1);
    return {normal[0][0], normal[0][1], normal[0][2]};
}

void JumpSurface()
{
    if (activepointer == nullptr || activepointer->type != ELEMENT_SIDE) {
        return;
    }
    const Location place = LocateSide(int(activepointer - activesides));
    if (place.shape < 0) {
        return;
    }
    const Shape* copy = GetDrawnCopy(place.shape);
    float target[1][3];
    const int triangle = FindTriangleUnderMouse(copy->sides[place.index], target[0]);
    if (triangle < 0) {
        return;
    }
    const Direction normal = GetFacingOfTriangle(copy, triangle);
    // Deliberate: by the scale, although the lift is measured on the screen, where it shrinks so
    // as the view is zoomed in.
    const double lift = surfacelift / double(mainview.scale);
    for (int i = 0; i < 3; i++) {
        target[0][i] = float(double(target[0][i]) + double(normal[std::size_t(i)]) * lift);
    }
    ReTransferPoints(&mainview, target, 1);
    ChangeCamera(normal.data(), nullptr, target[0], mainview.scale);
}

void FitShapes(const int* indices, int count)
{
    if (count == 0) {
        return;
    }
    double sum[3] = {0, 0, 0};
    double radius = 0;
    double distance = 0; // the greatest between two centres
    for (int i = 0; i < count; i++) {
        const Shape* shape = shapes[indices[i]];
        radius = std::max(radius, double(shape->radius));
        for (int k = 0; k < 3; k++) {
            sum[k] += double(shape->center[k]);
        }
        for (int k = 0; k < i; k++) {
            distance = std::max(distance,
                                GetDistanceOfTwoPoints(shape->center, shapes[indices[k]]->center));
        }
    }
    const float center[3] = {float(sum[0] / count), float(sum[1] / count), float(sum[2] / count)};
    const double size = radius + distance; // 0 for a single spot, which fits at every scale
    const double scale = size > 0 ? fitradius / size : double(mainview.scale);
    ChangeCamera(nullptr, nullptr, center, float(std::min(scale, double(greatestscale))));
}

} // namespace korvane
