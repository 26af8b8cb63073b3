#include "view/sidelook.h"

#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace korvane
{

static constexpr double opaquealpha = 0.987654321; // light and shadow together; more is opaque
static constexpr double alphatolerance = 1e-5;     // alphas closer than this count as equal
static constexpr double probedistance = 0.001;     // beside an edge, of the edge's length
static constexpr float lightdirection[3] = {-1, 1, 1};

bool IsSideOpaque(const Side* side)
{
    return double(side->colors[FRONT_LIGHT + 3]) + side->colors[FRONT_SHADOW + 3] > opaquealpha;
}

bool IsTriangleShown(int visibility, const float* normal)
{
    switch (visibility) {
    case VISIBLE_BOTH:
        return true;
    case VISIBLE_FRONT:
        return normal[2] > 0;
    case VISIBLE_BACK:
        return normal[2] < 0;
    default:
        return false;
    }
}

bool IsBackLikeFront(const float* colors)
{
    return std::equal(colors + FRONT_LIGHT, colors + BACK_LIGHT, colors + BACK_LIGHT);
}

Rgba GetColorOfTriangle(const Side* side, const float* normal)
{
    const bool front = normal[2] > 0;
    const float* light = side->colors + (front ? FRONT_LIGHT : BACK_LIGHT);
    const float* shadow = side->colors + (front ? FRONT_SHADOW : BACK_SHADOW);
    const double turn = GetAlfaOfTwoVectors(normal, lightdirection) / std::numbers::pi;
    const double t = front ? 1 - turn : turn;
    Rgba color;
    for (std::size_t i = 0; i < color.size(); i++) {
        color[i] = float(light[i] * t + shadow[i] * (1 - t));
    }
    return color;
}

static bool AreColorsEqual(const Side& a, const Side& b)
{
    return std::equal(std::begin(a.colors), std::end(a.colors), b.colors);
}

bool IsEdgeSmoothed(const Shape* copy, const Edge* edge)
{
    if (edge->triangles[0] == edge->triangles[1]) {
        return true;
    }
    const float first = copy->trianglenormals[edge->triangles[0]][2];
    const float second = copy->trianglenormals[edge->triangles[1]][2];
    if ((first < 0 && second > 0) || (first > 0 && second < 0)) {
        return true;
    }
    return edge->sides[0] != edge->sides[1] &&
           !AreColorsEqual(copy->sides[edge->sides[0]], copy->sides[edge->sides[1]]);
}

static bool IsHidden(const Shape* copy, const Edge* edge, int which)
{
    const int visibility = copy->sides[edge->sides[which]].visibility;
    const float z = copy->trianglenormals[edge->triangles[which]][2];
    return visibility == VISIBLE_NOT || (visibility == VISIBLE_FRONT && z < 0) ||
           (visibility == VISIBLE_BACK && z > 0);
}

// Where the two triangles overlap beside the edge, the one nearer to the viewer; -1 where they do
// not. One probe is taken on either side of the edge's middle, across the axis along which the edge
// mainly runs.
static int GetNearerBesideEdge(const Shape* copy, const Edge* edge)
{
    const float* start = copy->points[edge->points[0]];
    const float* end = copy->points[edge->points[1]];
    const double dx = double(end[0]) - start[0];
    const double dy = double(end[1]) - start[1];
    const double offset = probedistance * std::hypot(dx, dy);
    const bool alongx = std::abs(dx) >= std::abs(dy);
    for (const double shift : {offset, -offset}) {
        const float x = float(start[0] + dx / 2 + (alongx ? 0 : shift));
        const float y = float(start[1] + dy / 2 + (alongx ? shift : 0));
        float first[3] = {x, y, 0};
        float second[3] = {x, y, 0};
        if (InTheTriangle2dSetZ(first, &copy->triangles[edge->triangles[0]]) &&
            InTheTriangle2dSetZ(second, &copy->triangles[edge->triangles[1]]) &&
            first[2] != second[2]) {
            return first[2] > second[2] ? 0 : 1;
        }
    }
    return -1;
}

int GetFrontOfEdge(const Shape* copy, const Edge* edge)
{
    const bool firsthidden = IsHidden(copy, edge, 0);
    const bool secondhidden = IsHidden(copy, edge, 1);
    if (firsthidden || secondhidden) {
        return !firsthidden ? 0 : !secondhidden ? 1 : -1;
    }
    const double more = double(copy->sides[edge->sides[0]].colors[FRONT_LIGHT + 3]) -
                        copy->sides[edge->sides[1]].colors[FRONT_LIGHT + 3];
    if (std::abs(more) > alphatolerance) {
        return more > 0 ? 0 : 1;
    }
    const int nearer = GetNearerBesideEdge(copy, edge);
    if (nearer >= 0) {
        return nearer;
    }
    const float first = copy->trianglenormals[edge->triangles[0]][2];
    const float second = copy->trianglenormals[edge->triangles[1]][2];
    return second > first ? 1 : 0; // equal: the first triangle
}

} // namespace korvane
