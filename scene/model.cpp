#include "scene/model.h"

#include "geometry/rounding.h"
#include "geometry/shapegeometry.h"
#include "scene/arrays.h"
#include "view/picking.h"

#include <cstring>

namespace korvane
{

int shapenumber = 0;
Shape** shapes = nullptr;
Shape** round1 = nullptr;
Shape** shapest = nullptr;
Shape** round1t = nullptr;
int* showtable = nullptr;
unsigned char* selected = nullptr;

TreeIter* treeiters = nullptr;
int treeiternumber = 0;
int* treeselected = nullptr;
int treeselectednumber = 0;
char insertiter = 0;

TreeIter* copyiters = nullptr;
int copyiternumber = 0;
Shape** copyshapes = nullptr;
int copyshapenumber = 0;

static constexpr unsigned char selectedatstart = selectedintree | selectedshown;

static void GrowSceneArrays(int newcount)
{
    GrowArray(shapes, shapenumber, newcount);
    GrowArray(round1, shapenumber, newcount);
    GrowArray(shapest, shapenumber, newcount);
    GrowArray(round1t, shapenumber, newcount);
    GrowArray(showtable, shapenumber, newcount);
    GrowArray(selected, shapenumber, newcount);
}

static void DeriveVersions(int index)
{
    round1[index] = RoundShape(shapes[index]);
    shapest[index] = CopyShape(shapes[index]);
    round1t[index] = CopyShape(round1[index]);
}

bool IsShapeThere(int shape)
{
    return shape >= 0 && shape < shapenumber;
}

bool IsSideThere(int shape, int side)
{
    return IsShapeThere(shape) && side >= 0 && side < shapes[shape]->sidenumber;
}

void AddShape(Shape* shape)
{
    SetCenterPointOfShape(shape);
    SetRadiusOfShape(shape);
    const int index = shapenumber;
    GrowSceneArrays(index + 1);
    selected[index] = selectedatstart;
    shapes[index] = shape;
    DeriveVersions(index);
    shapenumber++;
}

static void DeleteDerivedVersions(int index)
{
    DeleteShape(round1[index]);
    DeleteShape(shapest[index]);
    DeleteShape(round1t[index]);
}

void ChangeShape(int index)
{
    SetCenterPointOfShape(shapes[index]);
    SetRadiusOfShape(shapes[index]);
    DeleteDerivedVersions(index);
    DeriveVersions(index);
}

static void CopyStripes(Shape* copy, const Shape* source)
{
    copy->stripes = CopyArray(source->stripes, source->stripenumber);
    for (int i = 0; i < copy->stripenumber; i++) {
        Stripe& stripe = copy->stripes[i];
        stripe.points = CopyArray(source->stripes[i].points, stripe.pointnumber);
        stripe.shape = copy;
    }
}

static void CopyTriangles(Shape* copy, const Shape* source)
{
    copy->triangles = CopyArray(source->triangles, source->trianglenumber);
    for (int i = 0; i < copy->trianglenumber; i++) {
        copy->triangles[i].shape = copy;
    }
}

static void CopySides(Shape* copy, const Shape* source)
{
    copy->sides = CopyArray(source->sides, source->sidenumber);
    for (int i = 0; i < copy->sidenumber; i++) {
        Side& side = copy->sides[i];
        side.points = CopyArray(source->sides[i].points, side.pointnumber);
        side.triangles = CopyArray(source->sides[i].triangles, side.trianglenumber);
        side.shape = copy;
    }
}

Shape* CopyShape(const Shape* shape)
{
    Shape* copy = CopyArray(shape, 1); // counts, centre and radius; every pointer is replaced below
    copy->vertexes =
        shape->vertexnumber == 0 ? nullptr : CopyArray(shape->vertexes, shape->vertexnumber);
    copy->points = CopyArray(shape->points, shape->pointnumber);
    copy->normals = CopyArray(shape->normals, shape->normalnumber);
    copy->trianglenormals = CopyArray(shape->trianglenormals, shape->trianglenumber);
    copy->edges = CopyArray(shape->edges, shape->edgenumber);
    CopyStripes(copy, shape);
    CopyTriangles(copy, shape);
    CopySides(copy, shape);
    return copy;
}

void DeleteShape(Shape* shape)
{
    for (int i = 0; i < shape->sidenumber; i++) {
        FreeArray(shape->sides[i].points);
        FreeArray(shape->sides[i].triangles);
    }
    FreeArray(shape->sides);
    FreeArray(shape->triangles);
    FreeArray(shape->edges);
    for (int i = 0; i < shape->stripenumber; i++) {
        FreeArray(shape->stripes[i].points);
    }
    FreeArray(shape->stripes);
    FreeArray(shape->trianglenormals);
    FreeArray(shape->normals);
    FreeArray(shape->points);
    if (shape->vertexnumber != 0) {
        FreeArray(shape->vertexes);
    }
    FreeArray(shape);
}

static void DeleteVersions(int index)
{
    DeleteShape(shapes[index]);
    DeleteDerivedVersions(index);
}

static void MoveInScene(int from, int to)
{
    shapes[to] = shapes[from];
    round1[to] = round1[from];
    shapest[to] = shapest[from];
    round1t[to] = round1t[from];
    showtable[to] = showtable[from];
    selected[to] = selected[from];
}

void DeleteShapeByIndex(int index)
{
    DeleteVersions(index);
    for (int i = index + 1; i < shapenumber; i++) {
        MoveInScene(i, i - 1);
    }
    shapenumber--;
    SetActives();
}

void DeleteMarkedShapes(const char* gone)
{
    int kept = 0;
    for (int i = 0; i < shapenumber; i++) {
        if (gone[i] != 0) {
            DeleteVersions(i);
        } else {
            MoveInScene(i, kept++);
        }
    }
    shapenumber = kept;
    SetActives();
}

void DeleteAllShapes()
{
    while (shapenumber > 0) {
        DeleteVersions(--shapenumber);
    }
    SetActives();
}

} // namespace korvane
