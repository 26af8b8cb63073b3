#include "geometry/triangulation.h"

#include "geometry/sideplane.h"
#include "scene/model.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace korvane
{

static double GetLength2d(const float* a, const float* b)
{
    return std::hypot(double(b[0]) - a[0], double(b[1]) - a[1]);
}

// The angle of a triangle at c, given the lengths of its sides.
static double GetAlfaOfTriangle(double ca, double cb, double ab)
{
    const double alfa = std::acos((ca * ca + cb * cb - ab * ab) / 2 / ca / cb);
    return std::isnan(alfa) ? 0 : alfa;
}

double GetAlfaOfThreePoints2d(const float* c, const float* a, const float* b)
{
    return GetAlfaOfTriangle(GetLength2d(c, a), GetLength2d(c, b), GetLength2d(a, b));
}

static double GetOrientation(const float* a, const float* b, const float* c)
{
    return (double(c[1]) - a[1]) * b[0] + (double(a[1]) - b[1]) * c[0] +
           (double(b[1]) - c[1]) * a[0];
}

int InTheTriangle2d(const float* p, const float* a, const float* b, const float* c)
{
    for (int i = 0; i < 2; i++) {
        if ((a[i] > p[i] && b[i] > p[i] && c[i] > p[i]) ||
            (a[i] < p[i] && b[i] < p[i] && c[i] < p[i])) {
            return 0;
        }
    }
    const std::array<const float*, 5> corners = {a, b, c, a, b};
    for (std::size_t i = 0; i < 3; i++) {
        const double own = GetOrientation(corners[i], corners[i + 1], p);
        const double opposite = GetOrientation(corners[i], corners[i + 1], corners[i + 2]);
        if ((own > 0 && opposite < 0) || (own < 0 && opposite > 0)) {
            return 0;
        }
    }
    return 1;
}

static constexpr int noone = -1;
static constexpr float infinity = std::numeric_limits<float>::infinity();
static constexpr double fullturn = 2 * std::numbers::pi;

// A rectangle of the flat side.
struct Box {
    float low[2];
    float high[2];
};
static constexpr Box nowhere = {{infinity, infinity}, {-infinity, -infinity}};
static constexpr Box everywhere = {{-infinity, -infinity}, {infinity, infinity}};

struct Corner {
    float flat[2];
    float angle;   // inside the outline
    double length; // of the edge to the next corner
    int previous;
    int next;
    int blocker; // while it is in `blocked`: a corner in the triangle that it makes with its
                 // neighbours
};

// A part of the corners: the box round them, and the one with the smallest angle that may be an
// ear.
struct Node {
    Box box;
    float angle; // of the ear, infinite without one
    int ear;     // noone when none of them can be one
};

// The part of the outline that is not yet cut off. The nodes are a binary tree: under node i are 2i
// and 2i + 1, under node 1 all corners, and node `leaves` + k is corner k alone. Finding the
// smallest ear and what lies in a triangle takes a few steps through it instead of a look at every
// corner.
struct Outline {
    int leaves; // a power of two
    int first;  // the first corner that is left
    std::vector<Corner> corners;
    std::vector<Node> nodes;
    double margin;
    std::vector<int> blocked; // the corners that are known to be no ears
};

static Corner& GetCorner(Outline& outline, int index)
{
    return outline.corners[std::size_t(index)];
}

static const Corner& GetCorner(const Outline& outline, int index)
{
    return outline.corners[std::size_t(index)];
}

// The box round three points. A point in the triangle lies in the box: whoever is outside it is
// outside by the first rule of InTheTriangle2d. Coordinates that are not numbers obey no such rule.
static Box GetBox(const float* a, const float* b, const float* c)
{
    if (std::isnan(a[0] + b[0] + c[0] + a[1] + b[1] + c[1])) {
        return everywhere;
    }
    Box box;
    for (int i = 0; i < 2; i++) {
        box.low[i] = std::min({a[i], b[i], c[i]});
        box.high[i] = std::max({a[i], b[i], c[i]});
    }
    return box;
}

// What is nowhere is apart even from everywhere.
static bool AreApart(const Box& a, const Box& b)
{
    return a.low[0] > b.high[0] || b.low[0] > a.high[0] || a.low[1] > b.high[1] ||
           b.low[1] > a.high[1] || a.low[0] > a.high[0];
}

static void JoinNodes(Outline& outline, int index)
{
    const Node& left = outline.nodes[std::size_t(2 * index)];
    const Node& right = outline.nodes[std::size_t(2 * index + 1)];
    Node& node = outline.nodes[std::size_t(index)];
    for (int i = 0; i < 2; i++) {
        node.box.low[i] = std::min(left.box.low[i], right.box.low[i]);
        node.box.high[i] = std::max(left.box.high[i], right.box.high[i]);
    }
    const Node& smaller = right.angle < left.angle ? right : left; // the first of equal ears stays
    node.angle = smaller.angle;
    node.ear = smaller.ear;
}

static void SetLeaf(Outline& outline, int index)
{
    const Corner& corner = GetCorner(outline, index);
    outline.nodes[std::size_t(outline.leaves + index)] = {
        GetBox(corner.flat, corner.flat, corner.flat), corner.angle, index};
}

static void SetLeafBlocked(Outline& outline, int index)
{
    Node& leaf = outline.nodes[std::size_t(outline.leaves + index)];
    leaf.angle = infinity;
    leaf.ear = noone;
}

// Brings the tree up to date above three leaves.
static void MendTree(Outline& outline, int a, int b, int c)
{
    std::array<int, 3> indices = {outline.leaves + a, outline.leaves + b, outline.leaves + c};
    while (indices[0] > 1) {
        int joined = noone; // neighbours soon have the same node above them
        for (int& index : indices) {
            index /= 2;
            if (index != joined) {
                JoinNodes(outline, index);
                joined = index;
            }
        }
    }
}

static Outline FlattenSide(const Side* side, const FlatPlane& plane)
{
    const int number = side->pointnumber;
    Outline outline;
    outline.leaves = int(std::bit_ceil(unsigned(number)));
    outline.first = 0;
    outline.corners.resize(std::size_t(number));
    outline.nodes.assign(2 * std::size_t(outline.leaves), {nowhere, infinity, noone});
    for (int i = 0; i < number; i++) {
        Corner& corner = outline.corners[std::size_t(i)];
        LayFlat(plane, GetPointOfSide(side, i), corner.flat);
        corner.previous = i == 0 ? number - 1 : i - 1;
        corner.next = i + 1 == number ? 0 : i + 1;
    }
    return outline;
}

static void MeasureAngles(Outline& outline)
{
    for (Corner& corner : outline.corners) {
        corner.length = GetLength2d(corner.flat, GetCorner(outline, corner.next).flat);
    }
    for (Corner& corner : outline.corners) {
        const Corner& previous = GetCorner(outline, corner.previous);
        const Corner& next = GetCorner(outline, corner.next);
        const double alfa = GetAlfaOfTriangle(previous.length, corner.length,
                                              GetLength2d(previous.flat, next.flat));
        const bool turnsleft = GetOrientation(previous.flat, corner.flat, next.flat) > 0;
        corner.angle = float(turnsleft ? alfa : fullturn - alfa);
    }
}

static void TurnAnglesInside(Outline& outline)
{
    float sum = 0;
    for (const Corner& corner : outline.corners) {
        sum += corner.angle;
    }
    if (sum > double(outline.corners.size()) * fullturn - sum) {
        for (Corner& corner : outline.corners) {
            corner.angle = float(fullturn - corner.angle);
        }
    }
}

static void PlantTree(Outline& outline)
{
    for (int i = 0; i < int(outline.corners.size()); i++) {
        SetLeaf(outline, i);
    }
    for (int i = outline.leaves - 1; i > 0; i--) {
        JoinNodes(outline, i);
    }
    const Box& box = outline.nodes[1].box;
    const double reach = std::max({std::fabs(box.low[0]), std::fabs(box.low[1]),
                                   std::fabs(box.high[0]), std::fabs(box.high[1])});
    outline.margin = 1e-12 * reach * reach;
}

// One side of a triangle as a x + b y + c, which is not negative on the side of the triangle.
struct Line {
    double a, b, c;
};

// The triangle of a corner and its neighbours, to be searched for other corners.
struct EarTriangle {
    const float* previous;
    const float* own;
    const float* next;
    Box box;
    std::array<Line, 3> lines;
};

static Line GetLine(const float* a, const float* b, const float* opposite)
{
    Line line = {double(a[1]) - b[1], double(b[0]) - a[0],
                 double(b[1]) * a[0] - double(a[1]) * b[0]};
    const double side = GetOrientation(a, b, opposite);
    const double sign = side > 0 ? 1 : side < 0 ? -1 : 0;
    return {sign * line.a, sign * line.b, sign * line.c};
}

static bool IsBeyond(const Line& line, const Box& box, double margin)
{
    const double x = line.a > 0 ? box.high[0] : box.low[0];
    const double y = line.b > 0 ? box.high[1] : box.low[1];
    return line.a * x + line.b * y + line.c < -margin;
}

static EarTriangle MakeEarTriangle(const Outline& outline, const Corner& corner)
{
    const float* a = GetCorner(outline, corner.previous).flat;
    const float* b = corner.flat;
    const float* c = GetCorner(outline, corner.next).flat;
    return {a, b, c, GetBox(a, b, c), {GetLine(a, b, c), GetLine(b, c, a), GetLine(c, a, b)}};
}

// A corner under the node that lies in the triangle, or noone.
static int SearchNode(const Outline& outline, const EarTriangle& ear, int index)
{
    const Box& box = outline.nodes[std::size_t(index)].box;
    if (AreApart(box, ear.box)) {
        return noone;
    }
    if (index >= outline.leaves) {
        const int corner = index - outline.leaves;
        const float* flat = GetCorner(outline, corner).flat;
        return InTheTriangle2d(flat, ear.previous, ear.own, ear.next) != 0 ? corner : noone;
    }
    for (const Line& line : ear.lines) {
        if (IsBeyond(line, box, outline.margin)) {
            return noone;
        }
    }
    const int found = SearchNode(outline, ear, 2 * index);
    return found != noone ? found : SearchNode(outline, ear, 2 * index + 1);
}

// The same among the corners from one position to before another.
static int SearchRange(const Outline& outline, const EarTriangle& ear, int from, int to)
{
    int left = outline.leaves + from;
    int right = outline.leaves + to;
    int found = noone;
    while (left < right && found == noone) {
        if (left % 2 != 0) { // a right child: its parent covers too much
            found = SearchNode(outline, ear, left++);
        }
        if (right % 2 != 0 && found == noone) {
            found = SearchNode(outline, ear, --right);
        }
        left /= 2;
        right /= 2;
    }
    return found;
}

// A corner in the triangle that `corner` makes with its neighbours, or noone.
static int FindBlocker(const Outline& outline, const Corner& corner)
{
    const EarTriangle ear = MakeEarTriangle(outline, corner);
    if (corner.next < corner.previous) { // between them lies the end of the outline
        return SearchRange(outline, ear, corner.next + 1, corner.previous);
    }
    const int found = SearchRange(outline, ear, corner.next + 1, outline.leaves);
    return found != noone ? found : SearchRange(outline, ear, 0, corner.previous);
}

// The corner with the smallest angle of those whose triangle is free, the first of equal ones. What
// is blocked stays so until its blocker is cut off or its triangle changes.
static int FindSmallestEar(Outline& outline)
{
    while (outline.nodes[1].ear != noone) {
        const int ear = outline.nodes[1].ear;
        Corner& corner = GetCorner(outline, ear);
        corner.blocker = FindBlocker(outline, corner);
        if (corner.blocker == noone) {
            return ear;
        }
        outline.blocked.push_back(ear);
        SetLeafBlocked(outline, ear);
        MendTree(outline, ear, ear, ear);
    }
    return outline.first; // there is no ear
}

// Three positions in the outline, in its order.
using Positions = std::array<int, 3>;

static void WriteTriangle(Side* side, int first, int k, const Positions& positions)
{
    Triangle& triangle = side->shape->triangles[first + k];
    for (std::size_t i = 0; i < 3; i++) {
        triangle.points[i] = side->points[positions[i]];
    }
    triangle.shape = side->shape;
    side->triangles[k] = first + k;
}

static Positions GetTriangleOfCorner(const Outline& outline, int index)
{
    const Corner& corner = GetCorner(outline, index);
    return {corner.previous, index, corner.next};
}

// What a cut ear blocked may be an ear now, and so may its neighbours.
static void FreeBlocked(Outline& outline, int ear)
{
    std::erase_if(outline.blocked, [&outline, ear](int index) {
        const Corner& corner = GetCorner(outline, index);
        if (corner.blocker == ear) {
            SetLeaf(outline, index);
            MendTree(outline, index, index, index);
            return true;
        }
        return index == ear || corner.previous == ear || corner.next == ear;
    });
}

static void ClipEar(Outline& outline, int ear)
{
    const Corner& corner = GetCorner(outline, ear);
    Corner& previous = GetCorner(outline, corner.previous);
    Corner& next = GetCorner(outline, corner.next);
    const double cut = GetLength2d(previous.flat, next.flat);
    previous.angle = float(previous.angle - GetAlfaOfTriangle(previous.length, cut, corner.length));
    next.angle = float(next.angle - GetAlfaOfTriangle(cut, corner.length, previous.length));
    FreeBlocked(outline, ear);
    previous.length = cut;
    previous.next = corner.next;
    next.previous = corner.previous;
    outline.nodes[std::size_t(outline.leaves + ear)] = {nowhere, infinity, noone};
    SetLeaf(outline, corner.previous);
    SetLeaf(outline, corner.next);
    MendTree(outline, corner.previous, ear, corner.next);
    if (ear == outline.first) {
        outline.first = corner.next;
    }
}

void SetTrianglesOfSide(Side* side, int first)
{
    const Plane plane =
        MakePlaneOfSide(side); // of a triangle too: looking for it may nudge a point
    const int last = side->trianglenumber - 1;
    if (last == 0) {
        WriteTriangle(side, first, 0, {0, 1, 2});
        return;
    }
    Outline outline = FlattenSide(side, PreparePlane(plane));
    MeasureAngles(outline);
    TurnAnglesInside(outline);
    PlantTree(outline);
    for (int k = 0; k < last; k++) {
        const int ear = FindSmallestEar(outline);
        WriteTriangle(side, first, k, GetTriangleOfCorner(outline, ear));
        ClipEar(outline, ear);
    }
    // the three corners that remain, from the first
    const int middle = GetCorner(outline, outline.first).next;
    WriteTriangle(side, first, last, GetTriangleOfCorner(outline, middle));
}

} // namespace korvane
