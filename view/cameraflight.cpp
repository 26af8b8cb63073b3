#include "view/cameraflight.h"

#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace korvane
{

CameraFrame camtable[cameraframes];
int camposition = cameraframes; // idle: no flight plays at the start

using Direction = std::array<float, 3>;

static constexpr Direction rightward = {1, 0, 0};
static constexpr Direction upward = {0, 1, 0};
static constexpr Direction toviewer = {0, 0, 1};

// A way along a great circle, cut into equal pieces.
static constexpr int arcend = 256; // index of the last sample
using Arc = std::array<Direction, arcend + 1>;

static constexpr double opposite = 1e-6;    // square of the distance to the opposite direction
static constexpr double exactness = 0.0001; // components nearer to 0, 1 or -1 end exactly there

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
static constexpr double wallangle =
    0.001; // radians within which a wall counts as facing and upright

static constexpr double fitradius = 0.6; // the radius to which what is fitted comes on the screen
static constexpr double surfacelift =
    1.0 / 80; // how far above a clicked surface the view's centre lies

// Makes the vector one unit long. False, and the vector is as it was, when it has no direction.
static bool Normalise(float* v)
{
    const double x = double(v[0]);
    const double y = double(v[1]);
    const double z = double(v[2]);
    const double length = std::hypot(x, y, z);
    if (!(length > 0) || !std::isfinite(length)) {
        return false;
    }
    v[0] = float(x / length);
    v[1] = float(y / length);
    v[2] = float(z / length);
    return true;
}

// A given direction at unit length; `otherwise` when none is given, or one that points nowhere (a
// triangle without area has such a normal).
static Direction GetDirection(const float* given, const Direction& otherwise)
{
    Direction direction = otherwise;
    if (given != nullptr) {
        std::copy_n(given, 3, direction.data());
        if (!Normalise(direction.data())) {
            return otherwise;
        }
    }
    return direction;
}

static bool AreOpposite(const Direction& a, const Direction& b)
{
    const double x = double(a[0]) + double(b[0]);
    const double y = double(a[1]) + double(b[1]);
    const double z = double(a[2]) + double(b[2]);
    return x * x + y * y + z * z <= opposite;
}

static Direction GetHalfway(const Direction& a, const Direction& b)
{
    Direction middle = {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
    Normalise(middle.data());
    return middle;
}

// Samples the shorter way between two directions by halving it again and again. Between opposite
// directions every way is as short: it goes through `detour`.
static Arc SampleArc(const Direction& from, const Direction& to, const Direction& detour)
{
    Arc arc;
    arc.front() = from;
    arc.back() = to;
    for (std::size_t step = arcend / 2; step > 0; step /= 2) {
        for (std::size_t i = step; i < arcend; i += 2 * step) {
            const Direction& before = arc[i - step];
            const Direction& after = arc[i + step];
            arc[i] = AreOpposite(before, after) ? detour : GetHalfway(before, after);
        }
    }
    return arc;
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
    Direction aside = {facing[1] * up[2] - facing[2] * up[1], facing[2] * up[0] - facing[0] * up[2],
                       facing[0] * up[1] - facing[1] * up[0]};
    Normalise(aside.data());
    return aside;
}

// Turns the columns as the arc goes from one of its samples to another. The turn passes through the
// middle sample: the ends of half a turn alone would not tell its axis.
static void TurnAlong(float columns[][3], const Arc& arc, int first, int last)
{
    constexpr int middle = arcend / 2;
    if ((first < middle && middle < last) || (last < middle && middle < first)) {
        TurnAlong(columns, arc, first, middle);
        TurnAlong(columns, arc, middle, last);
        return;
    }
    VectorRotateExact(columns, arc[std::size_t(first)].data(), arc[std::size_t(last)].data());
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

static void SnapComponents(float* rotation)
{
    for (int i = 0; i < 9; i++) {
        const float target = std::round(rotation[i]);
        if (std::fabs(double(rotation[i]) - double(target)) < exactness) {
            rotation[i] = target;
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

// The drawn copy of the side whose record is given, as its shape and its index there.
struct DrawnSide {
    const Shape* copy;
    int side;
};

static DrawnSide FindDrawnSide(const ActiveElement* record)
{
    int side = int(record - activesides);
    int i = 0;
    while (side >= shapes[i]->sidenumber) {
        side -= shapes[i]->sidenumber;
        i++;
    }
    return {showtable[i] == SHOW_PLAIN ? shapest[i] : round1t[i], side};
}

// The triangle of a side that is nearest to the viewer under the pointer, -1 when there is none;
// `spot` is then where the pointer meets it.
static int FindTriangleUnderMouse(const DrawnSide& drawn, float* spot)
{
    const Side& side = drawn.copy->sides[drawn.side];
    int found = -1;
    for (int k = 0; k < side.trianglenumber; k++) {
        float hit[3] = {mouse[0], mouse[1], 0};
        if (InTheTriangle2dSetZ(hit, &drawn.copy->triangles[side.triangles[k]]) &&
            (found < 0 || hit[2] > spot[2])) { // strictly: the first of equal depths stays
            found = side.triangles[k];
            std::copy_n(hit, 3, spot);
        }
    }
    return found;
}

void JumpSurface()
{
    if (activepointer == nullptr || activepointer->type != ELEMENT_SIDE) {
        return;
    }
    const DrawnSide drawn = FindDrawnSide(activepointer);
    float target[1][3];
    const int triangle = FindTriangleUnderMouse(drawn, target[0]);
    if (triangle < 0) {
        return;
    }
    const float* normal = drawn.copy->trianglenormals[triangle];
    const double lift = surfacelift / double(mainview.scale);
    for (int i = 0; i < 3; i++) {
        target[0][i] = float(double(target[0][i]) + double(normal[i]) * lift);
    }
    ReTransferPoints(&mainview, target, 1);
    ChangeCamera(normal, nullptr, target[0], mainview.scale);
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
    const double size = radius + distance;
    ChangeCamera(nullptr, nullptr, center, size > 0 ? float(fitradius / size) : mainview.scale);
}

} // namespace korvane
