#include "geometry/transforms.h"

#include "geometry/finishedit.h"
#include "geometry/shapegeometry.h"
#include "geometry/sideplane.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace korvane
{

static constexpr float viewmiddle[3] = {0, 0, 0};

// The turn, the scaling and the move of one point in view coordinates.
struct Turn {
    const float* pivot; // borrowed
    int first, second;  // the axes that are mixed
    double sine, cosine;

    void operator()(float* point) const
    {
        const double a = double(point[first]) - double(pivot[first]);
        const double b = double(point[second]) - double(pivot[second]);
        point[first] = float(a * cosine - b * sine + double(pivot[first]));
        point[second] = float(a * sine + b * cosine + double(pivot[second]));
    }
};

struct Scaling {
    const float* pivot; // borrowed
    double factor;
    int axis; // 0 for all, else one more than the coordinate's index

    void operator()(float* point) const
    {
        for (int k = 0; k < 3; k++) {
            if (axis == 0 || axis == k + 1) {
                const double offset = double(point[k]) - double(pivot[k]);
                point[k] = float(offset * factor + double(pivot[k]));
            }
        }
    }
};

struct Move {
    double dx, dy;

    void operator()(float* point) const
    {
        point[0] = float(double(point[0]) + dx);
        point[1] = float(double(point[1]) + dy);
    }
};

static Turn MakeTurn(const float* pivot, double degrees, int axis)
{
    const double angle = degrees / 180 * std::numbers::pi;
    return {pivot, (axis + 1) % 3, (axis + 2) % 3, std::sin(angle), std::cos(angle)};
}

static Move MakeMove(float x0, float y0, float x1, float y1)
{
    return {double(x1) - double(x0), double(y1) - double(y0)};
}

template <class Change> static void ChangeInView(float points[][3], int n, const Change& change)
{
    TransferPoints(&mainview, points, n);
    std::for_each_n(points, n, change);
    ReTransferPoints(&mainview, points, n);
}

template <class Work> static void ForEachSelected(const Work& work)
{
    int count = 0;
    const Block<int[]> indices = GetSelectedShapes(&count);
    std::for_each_n(indices.get(), count, work);
}

// makechange(center) is what happens to the points, given the side's centre. The view copy of a
// shape that has become too small to be drawn is an old one, so its points are projected first.
template <class MakeChange>
static void ChangeSide(int shape, int side, const MakeChange& makechange)
{
    const Shape* model = shapes[shape];
    const Shape* copy = shapest[shape];
    TransferPointsInto(&mainview, model->points, copy->points, model->pointnumber);
    const Block<float[]> center = GetCenterOfSide(&copy->sides[side]);
    const auto change = makechange(center.get());
    const Side& changed = model->sides[side];
    const Block<float[][3]> corners(NewUnfilledArray<float[3]>(changed.pointnumber));
    for (int k = 0; k < changed.pointnumber; k++) { // a point that is listed twice moves once
        std::copy_n(copy->points[changed.points[k]], 3, corners[std::size_t(k)]);
        change(corners[std::size_t(k)]);
    }
    ReTransferPoints(&mainview, corners.get(), changed.pointnumber);
    for (int k = 0; k < changed.pointnumber; k++) {
        std::copy_n(corners[std::size_t(k)], 3, model->points[changed.points[k]]);
    }
    FinishEdit(shape);
}

void SideRotate(int shape, int side, double degrees, int axis)
{
    if (!IsSideThere(shape, side)) {
        return;
    }
    ChangeSide(shape, side, [=](const float* center) { return MakeTurn(center, degrees, axis); });
    SetActivesOff();
}

void SideScale(int shape, int side, double factor, int axis)
{
    if (!IsSideThere(shape, side)) {
        return;
    }
    ChangeSide(shape, side, [=](const float* center) { return Scaling{center, factor, axis}; });
    SetActivesOff();
}

void SideMove(int shape, int side, float x0, float y0, float x1, float y1)
{
    if (IsSideThere(shape, side)) {
        ChangeSide(shape, side, [=](const float*) { return MakeMove(x0, y0, x1, y1); });
    }
}

// Measures the radius about the model's centre; the rounded version has both from the model. Under
// perspective what turns or moves rigidly on the screen is bent in the world.
static void SetBoundsOfVersions(int shape)
{
    Shape* model = shapes[shape];
    SetRadiusOfShape(model);
    std::copy_n(model->center, 3, round1[shape]->center);
    round1[shape]->radius = model->radius;
}

// Points and shading normals of a shape and of its rounded version.
static void RotateVersions(int shape, const float* pivot, double degrees, int axis)
{
    const Turn turn = MakeTurn(pivot, degrees, axis);
    const Turn turnnormal = MakeTurn(viewmiddle, degrees, axis);
    for (const Shape* version : {shapes[shape], round1[shape]}) {
        ChangeInView(version->points, version->pointnumber, turn);
        Rotate(&mainview, version->normals, version->normalnumber);
        std::for_each_n(version->normals, version->normalnumber, turnnormal);
        ReRotate(&mainview, version->normals, version->normalnumber);
    }
}

void ShapeRotate(int shape, double degrees, int axis)
{
    if (IsShapeThere(shape)) {
        // Deliberate: the centre stays where it is, even when perspective takes it away from the
        // mean of the points. A turn back needs the same pivot.
        RotateVersions(shape, shapest[shape]->center, degrees, axis);
        SetBoundsOfVersions(shape);
        TransferOneShape(shape);
    }
}

void SelectedRotate(double degrees, int axis)
{
    ForEachSelected([=](int shape) {
        RotateVersions(shape, viewmiddle, degrees, axis);
        SetCenterPointOfShape(shapes[shape]);
        SetBoundsOfVersions(shape);
        TransferOneShape(shape);
    });
}

void ShapeScale(int shape, double factor, int axis)
{
    if (!IsShapeThere(shape)) {
        return;
    }
    const Scaling scaling = {shapest[shape]->center, factor, axis};
    ChangeInView(shapes[shape]->points, shapes[shape]->pointnumber, scaling);
    FinishEdit(shape);
    SetActivesOff();
}

void SelectedScale(double factor, int axis)
{
    const Scaling scaling = {viewmiddle, factor, axis};
    ForEachSelected([&](int shape) {
        ChangeInView(shapes[shape]->points, shapes[shape]->pointnumber, scaling);
        SetNormalsOfShape(shapes[shape]);
        ChangeShape(shape);
    });
    SetActives();
    SetActivesOff();
    TransferAllShape();
}

static void MoveVersions(int shape, const Move& move)
{
    for (const Shape* version : {shapes[shape], round1[shape]}) {
        ChangeInView(version->points, version->pointnumber, move);
    }
    SetCenterPointOfShape(shapes[shape]);
    SetBoundsOfVersions(shape);
    TransferOneShape(shape);
}

void ShapeMove(int shape, float x0, float y0, float x1, float y1)
{
    if (IsShapeThere(shape)) {
        MoveVersions(shape, MakeMove(x0, y0, x1, y1));
        SetActives();
    }
}

void SelectedMove(float x0, float y0, float x1, float y1)
{
    const Move move = MakeMove(x0, y0, x1, y1);
    ForEachSelected([&](int shape) { MoveVersions(shape, move); });
    SetActives();
}

} // namespace korvane
