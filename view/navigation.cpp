#include "view/navigation.h"

#include "geometry/directions.h"
#include "geometry/rotation.h"
#include "geometry/vectors.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

// Four steps double or halve the scale.
static constexpr double zoominfactor = 1.1892071;
static constexpr double zoomoutfactor = 0.8408964;

static constexpr double snapcosine = 0.99; // an axis nearer than about 8.1 degrees snaps
static constexpr double gradientrate = 60; // steps of the grid in the shorter side at scale 1

static constexpr float axisdirections[6][3] = {{1, 0, 0},  {0, 1, 0},  {0, 0, 1},
                                               {-1, 0, 0}, {0, -1, 0}, {0, 0, -1}};

// Where a position touches the ball: a sphere whose outline is as wide as the view. A position
// beside the ball touches the nearest point of that outline.
static void GetBallPoint(double x, double y, float point[3])
{
    const double u = 2 * x;
    const double v = 2 * y;
    const double r = std::hypot(u, v);
    if (r <= 1) {
        point[0] = float(u);
        point[1] = float(v);
        const double square = std::max(0.0, 1 - u * u - v * v); // rounding may leave less than 0
        point[2] = float(std::sqrt(square));
    } else {
        point[0] = float(u / r);
        point[1] = float(v / r);
        point[2] = 0;
    }
}

// Turns all columns so that one of them lies on an axis. The others are square to it then, and are
// told so: what rounding leaves of them would tilt this column when the next one snaps.
static void SnapColumn(float columns[][3], int column, int axis)
{
    VectorRotateExact(columns, columns[column], axisdirections[axis]);
    for (int i = 0; i < 3; i++) {
        if (i != column) {
            columns[i][axis % 3] = 0;
        }
    }
}

// A column that has snapped is exactly on its axis; so is the third when two have.
static void SnapToAxes(float columns[][3])
{
    for (int column = 0; column < 3; column++) {
        for (int axis = 0; axis < 6; axis++) {
            if (GetDot(ToVector(columns[column]), ToVector(axisdirections[axis])) > snapcosine) {
                SnapColumn(columns, column, axis);
            }
        }
    }
    for (int column = 0; column < 3; column++) {
        Normalise(columns[column]);
    }
}

void MouseRotate(float x1, float y1, float x2, float y2)
{
    if (x1 == x2 && y1 == y2) { // a flight may have ended near an axis: no motion must not snap it
        return;
    }
    float from[3];
    float to[3];
    GetBallPoint(double(x1), double(y1), from);
    GetBallPoint(double(x2), double(y2), to);
    float columns[3][3];
    std::copy_n(mainview.freerotation, 9, columns[0]);
    VectorRotate(columns, from, to);
    std::copy_n(columns[0], 9, mainview.freerotation);
    // Deliberate: freerotation is not snapped, so that dragging on leaves the axis smoothly.
    SnapToAxes(columns);
    std::copy_n(columns[0], 9, mainview.rotation);
    RefreshView();
}

// Returns by how much the scale has grown: not at all where its range ends.
static double StepScale(bool in)
{
    const double before = double(mainview.scale);
    SetScale(float(before * (in ? zoominfactor : zoomoutfactor)));
    return double(mainview.scale) / before;
}

void ChangeScale(bool in)
{
    const bool onpoint = activepointer != nullptr && activepointer->type == ELEMENT_POINT;
    float anchor[1][3];
    std::copy_n(onpoint ? activepointer->position : gmouse, 3, anchor[0]);
    ReTransferPoints(&mainview, anchor, 1);
    const double factor = StepScale(in);
    for (int i = 0; i < 3; i++) {
        const double a = double(anchor[0][i]);
        mainview.center[i] = float(a - (a - double(mainview.center[i])) / factor);
    }
    RefreshView();
}

void ChangeScaleFromOrigo(bool in)
{
    StepScale(in);
    RefreshView();
}

void ChangePosition(float x1, float y1, float z1, float x2, float y2, float z2)
{
    float way[1][3] = {{x1 - x2, y1 - y2, z1 - z2}};
    ReTransferPoints(&mainview, way, 1); // from the old centre: the end of the way is the new one
    std::copy_n(way[0], 3, mainview.center);
    RefreshView();
    rdstate |= redrawwanted;
}

double GetPowerOfTwo(double scale)
{
    return std::ldexp(1.0, std::ilogb(scale));
}

double GetGradientStep(double scale)
{
    return 1 / GetPowerOfTwo(scale) / gradientrate;
}

// The grid line nearest to a position. `center` is where the view's centre lies on the turned grid.
static float SnapToGrid(float position, float center)
{
    const double scale = double(mainview.scale);
    const double step = GetGradientStep(scale);
    const double line = std::round((double(position) / scale + double(center)) / step);
    return float((line * step - double(center)) * scale);
}

void SetGradientMouse()
{
    std::copy_n(mouse, 3, gmouse);
    if (mainview.gradientfade == 0) {
        return;
    }
    float center[1][3];
    std::copy_n(mainview.center, 3, center[0]);
    Rotate(&mainview, center, 1);
    gmouse[0] = SnapToGrid(mouse[0], center[0][0]);
    gmouse[1] = SnapToGrid(mouse[1], center[0][1]);
}

} // namespace korvane
