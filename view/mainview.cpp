#include "view/mainview.h"

#include "geometry/construction.h"
#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane
{

constinit MainView mainview = {
    .bgshape = BACKGROUND_CUBE,
    .bgcubefade = fadefull,
    .bgplanefade = 0,
    .gradientfade = 0,
    .imagefade = 0,
    .bgimage = nullptr,
    .smallcubefade = fadedone,
    .centerlinesfade = 0,
    .reservedbytes = {},
    .showshape = SHAPE_BOTH,
    .sidesfade = fadefull,
    .linesfade = fadefull,
    .onlyselected = 1,
    .perspective = 0,
    .action = 0,
    .reservedwords = {},
    .center = {0, 0, 0},
    .rotation = {1, 0, 0, 0, 1, 0, 0, 0, 1},
    .freerotation = {1, 0, 0, 0, 1, 0, 0, 0, 1},
    .scale = 1,
};
int32_t width = 0;
int32_t height = 0;
char cisign = 0;

// A shape's size on the screen is the square of its radius over the number of its triangles.
static constexpr double roundedsize = 0.0001; // above it the shape is drawn rounded
static constexpr double plainsize = 1e-6;     // above it the shape is drawn at all
static constexpr double halfdepth = 1.0;      // half the depth of the view

float GetCosRate(int8_t level)
{
    return float(0.5 - 0.5 * std::cos(std::numbers::pi * (level & fadefull) / fadefull));
}

void SetScale(float scale)
{
    if (std::isfinite(scale) && scale > 0) {
        mainview.scale = std::clamp(scale, smallestscale, greatestscale);
    }
}

void SetPerspective(float points[][3], int32_t n, int8_t level)
{
    if ((level & fadefull) == 0) {
        return;
    }
    ApplyPerspective(points, n, level);
    RefreshView();
}

void GetHalfView(float* halfwidth, float* halfheight)
{
    *halfwidth = 0.5F;
    *halfheight = 0.5F;
    if (width <= 0 || height <= 0) {
        return;
    }
    if (width <= height) {
        *halfheight = float(0.5 * height / width);
    } else {
        *halfwidth = float(0.5 * width / height);
    }
}

// Centre and radius of the projected copy.
static void TransferBounds(const Shape* shape, Shape* copy)
{
    TransferPointsInto(&mainview, &shape->center, &copy->center, 1);
    const double factor = GetPerspectiveFactor(mainview.perspective, double(copy->center[2]));
    copy->radius = float(double(shape->radius) * double(mainview.scale) * factor);
}

// Touching the border of the view counts as outside.
static bool IsOutsideView(const Shape* copy)
{
    float halfwidth, halfheight;
    GetHalfView(&halfwidth, &halfheight);
    const double half[3] = {double(halfwidth), double(halfheight), halfdepth};
    const double r = double(copy->radius);
    for (int k = 0; k < 3; k++) {
        const double c = double(copy->center[k]);
        if (c + r <= -half[k] || c - r >= half[k]) {
            return true;
        }
    }
    return false;
}

static void TransferShape(const Shape* shape, Shape* copy)
{
    TransferPointsInto(&mainview, shape->points, copy->points, shape->pointnumber);
    RotateInto(&mainview, shape->normals, copy->normals, shape->normalnumber);
    SetTriangleNormalsOfShape(copy);
}

void TransferOneShape(int32_t shapeindex)
{
    const int32_t i = shapeindex;
    ForgetScreenBoxes(i);
    TransferBounds(shapes[i], shapest[i]);
    showtable[i] = SHOW_NOTHING;
    const bool exporting = cisign != 0; // nothing is culled then, and nothing is too small
    if ((selected[i] & selectedfade) == 0 || (!exporting && IsOutsideView(shapest[i]))) {
        return;
    }
    const double r = double(shapest[i]->radius);
    const double size = r * r / shapes[i]->trianglenumber;
    if (size > plainsize || exporting) {
        showtable[i] = size > roundedsize ? SHOW_ROUNDED : SHOW_PLAIN;
        TransferShape(shapes[i], shapest[i]);
    }
    if (size > roundedsize || exporting) {
        TransferShape(round1[i], round1t[i]);
    }
}

void TransferPlainShape(int32_t shapeindex)
{
    ForgetScreenBoxes(shapeindex);
    TransferBounds(shapes[shapeindex], shapest[shapeindex]);
    TransferShape(shapes[shapeindex], shapest[shapeindex]);
}

void RefreshView()
{
    TransferAllShape();
    ChangeActives();
}

void TransferAllShape()
{
    for (int32_t i = 0; i < shapenumber; i++) {
        TransferOneShape(i);
    }
    TransferConstruction(&mainview);
    SearchActive();
}

} // namespace korvane
