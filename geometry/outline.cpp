#include "geometry/outline.h"

#include "geometry/triangulation.h"
#include "scene/model.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace korvane
{

static constexpr float infinity = std::numeric_limits<float>::infinity();
static constexpr FlatBox nowhere = {{infinity, infinity}, {-infinity, -infinity}};
static constexpr FlatBox everywhere = {{-infinity, -infinity}, {infinity, infinity}};

Outline MakeOutline(int cornernumber)
{
    Outline outline;
    outline.first = 0;
    outline.corners.resize(std::size_t(cornernumber));
    for (int i = 0; i < cornernumber; i++) {
        OutlineCorner& corner = GetCorner(outline, i);
        corner.previous = i == 0 ? cornernumber - 1 : i - 1;
        corner.next = i + 1 == cornernumber ? 0 : i + 1;
        corner.blocker = noone;
        corner.waiting = noone;
    }
    outline.leaves = int(std::bit_ceil(unsigned(cornernumber)));
    outline.nodes.assign(2 * std::size_t(outline.leaves), {nowhere, infinity, noone});
    return outline;
}

// The box round three points. What lies outside it is outside their triangle by the first rule of
// InTheTriangle2d. Coordinates that are not numbers do not obey that rule.
static FlatBox GetBox(const float* a, const float* b, const float* c)
{
    if (std::isnan(a[0] + b[0] + c[0] + a[1] + b[1] + c[1])) {
        return everywhere;
    }
    FlatBox box;
    for (int i = 0; i < 2; i++) {
        box.low[i] = std::min({a[i], b[i], c[i]});
        box.high[i] = std::max({a[i], b[i], c[i]});
    }
    return box;
}

// What is nowhere is apart even from everywhere.
static bool AreApart(const FlatBox& a, const FlatBox& b)
{
    return a.low[0] > b.high[0] || b.low[0] > a.high[0] || a.low[1] > b.high[1] ||
           b.low[1] > a.high[1] || a.low[0] > a.high[0];
}

static void JoinNodes(Outline& outline, int index)
{
    const OutlineNode& left = outline.nodes[2 * std::size_t(index)];
    const OutlineNode& right = outline.nodes[2 * std::size_t(index) + 1];
    OutlineNode& node = outline.nodes[std::size_t(index)];
    for (int i = 0; i < 2; i++) {
        node.box.low[i] = std::min(left.box.low[i], right.box.low[i]);
        node.box.high[i] = std::max(left.box.high[i], right.box.high[i]);
    }
    const OutlineNode& smaller =
        right.angle < left.angle ? right : left; // the first of equal ears stays
    node.angle = smaller.angle;
    node.ear = smaller.ear;
}

static OutlineNode& GetLeaf(Outline& outline, int index)
{
    return outline.nodes[std::size_t(outline.leaves) + std::size_t(index)];
}

static void SetLeaf(Outline& outline, int index)
{
    const OutlineCorner& corner = GetCorner(outline, index);
    GetLeaf(outline, index) = {GetBox(corner.flat, corner.flat, corner.flat), corner.angle, index};
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

void PlantTree(Outline& outline)
{
    for (int i = 0; i < int(outline.corners.size()); i++) {
        SetLeaf(outline, i);
    }
    for (int i = outline.leaves - 1; i > 0; i--) {
        JoinNodes(outline, i);
    }
    const FlatBox& box = outline.nodes[1].box;
    const double reach = std::max({std::fabs(box.low[0]), std::fabs(box.low[1]),
                                   std::fabs(box.high[0]), std::fabs(box.high[1])});
    constexpr double rounding = 1e-12; // some thousand times that of the products in an area
    outline.margin = rounding * reach * reach;
}

void ShowCorner(Outline& outline, int index)
{
    SetLeaf(outline, index);
    MendTree(outline, index, index, index);
}

void HideCorner(Outline& outline, int index)
{
    GetLeaf(outline, index).angle = infinity;
    GetLeaf(outline, index).ear = noone;
    MendTree(outline, index, index, index);
}

void RemoveCorner(Outline& outline, int index)
{
    const OutlineCorner& corner = GetCorner(outline, index);
    GetCorner(outline, corner.previous).next = corner.next;
    GetCorner(outline, corner.next).previous = corner.previous;
    if (index == outline.first) {
        outline.first = corner.next;
    }
    GetLeaf(outline, index) = {nowhere, infinity, noone};
    SetLeaf(outline, corner.previous);
    SetLeaf(outline, corner.next);
    MendTree(outline, corner.previous, index, corner.next);
}

// One side of a triangle as a x + b y + c, which is not negative on the side of the triangle.
struct FlatLine {
    double a, b, c;
};

// The triangle of a corner and its neighbours, to be searched for other corners.
struct EarTriangle {
    const float* previous; // borrowed, as the next two; the corners' coordinates
    const float* own;
    const float* next;
    FlatBox box;
    std::array<FlatLine, 3> lines;
};

static FlatLine GetLine(const float* a, const float* b, const float* opposite)
{
    FlatLine line = {double(a[1]) - b[1], double(b[0]) - a[0],
                     double(b[1]) * a[0] - double(a[1]) * b[0]};
    const double side = GetOrientation2d(a, b, opposite);
    const double sign = side > 0 ? 1 : side < 0 ? -1 : 0;
    return {sign * line.a, sign * line.b, sign * line.c};
}

// Whether all of a box lies beyond a line, by more than the margin, so that the rounding of the
// exact test could not find a point of it in the triangle.
static bool IsBeyond(const FlatLine& line, const FlatBox& box, double margin)
{
    const double x = line.a > 0 ? box.high[0] : box.low[0];
    const double y = line.b > 0 ? box.high[1] : box.low[1];
    return line.a * x + line.b * y + line.c < -margin;
}

static EarTriangle MakeEarTriangle(const Outline& outline, const OutlineCorner& corner)
{
    const float* a = GetCorner(outline, corner.previous).flat;
    const float* b = corner.flat;
    const float* c = GetCorner(outline, corner.next).flat;
    return {a, b, c, GetBox(a, b, c), {GetLine(a, b, c), GetLine(b, c, a), GetLine(c, a, b)}};
}

// A corner under the node that lies in the triangle, or noone.
static int SearchNode(const Outline& outline, const EarTriangle& ear, int index)
{
    const FlatBox& box = outline.nodes[std::size_t(index)].box;
    if (AreApart(box, ear.box)) {
        return noone;
    }
    if (index >= outline.leaves) {
        const int corner = index - outline.leaves;
        const float* flat = GetCorner(outline, corner).flat;
        return InTheTriangle2d(flat, ear.previous, ear.own, ear.next) != 0 ? corner : noone;
    }
    for (const FlatLine& line : ear.lines) {
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

int FindBlocker(const Outline& outline, int index)
{
    const OutlineCorner& corner = GetCorner(outline, index);
    const EarTriangle ear = MakeEarTriangle(outline, corner);
    if (corner.next < corner.previous) { // between them lies the end of the outline
        return SearchRange(outline, ear, corner.next + 1, corner.previous);
    }
    const int found = SearchRange(outline, ear, corner.next + 1, outline.leaves);
    return found != noone ? found : SearchRange(outline, ear, 0, corner.previous);
}

} // namespace korvane
