#include "geometry/normals.h"

#include "geometry/vectors.h"
#include "scene/arrays.h"
#include "scene/model.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <vector>

namespace korvane
{

// How a point is shaded. The bits add up over the stripes through the point; none makes it smooth.
enum PointClass : unsigned char { POINT_VERTEX = 1, POINT_CREASE = 2, POINT_CORNER = 4 };

// What the walk over the triangles gathers at a point; never across two lines of the cache.
struct alignas(32) PointWork {
    Vector sum; // of the normals of its triangles; of a crease point, of those in its first side
    int chain;  // the first ring in its chain of single edges, noone when there is none
    int rings;  // how many there are
};

// What a point needs besides when not all points of its shape are smooth.
struct SharpPoint {
    Vector others;            // of a crease point the sum of the normals of the other triangles
    int first;                // index of its first normal
    int met;                  // corners met so far; of a crease point its first side or noone
    unsigned char pointclass; // bits of PointClass
};

// The state of one SetNormalsOfShape. While an edge is single its second triangle and side are not
// known, and their places hold links. The single edges that join the same two points all run the
// same way, because one that runs the other way is matched instead of added; they form a ring, in
// which the last leads to the first, which is the next to be matched. The last edges of the rings
// are chained at one of their two points, the one whose chain is shorter when the ring begins: so
// no chain is long, however many edges meet in a point.
struct NormalWalk {
    Shape* shape;    // borrowed
    bool edgesknown; // the shape's edges are right already and stay
    int edgeroom;
    std::vector<PointWork> points;
    std::vector<SharpPoint> sharps; // empty when all points are smooth
};

static int& NextInRing(Edge& edge)
{
    return edge.triangles[1];
}

static int& NextInChain(Edge& edge)
{
    return edge.sides[1];
}

// Where a ring stands.
struct RingPlace {
    PointWork* point; // borrowed; the point whose chain holds the ring
    int before;       // the last edge of the ring before it in the point's chain, noone at the head
    int last;         // its last edge, noone where there is no such ring
};

static int& GetLink(Shape* shape, const RingPlace& place)
{
    return place.before == noone ? place.point->chain : NextInChain(shape->edges[place.before]);
}

// The ring of the single edges between a and b in the chain of one of them.
static RingPlace FindRing(Shape* shape, PointWork& point, int a, int b)
{
    RingPlace place = {&point, noone, point.chain};
    while (place.last != noone) {
        Edge& edge = shape->edges[place.last];
        if ((edge.points[0] == b && edge.points[1] == a) ||
            (edge.points[0] == a && edge.points[1] == b)) {
            break;
        }
        place.before = place.last;
        place.last = NextInChain(edge);
    }
    return place;
}

// Gives the first edge of the ring its second triangle and takes it out.
static void MatchEdge(Shape* shape, const RingPlace& place, int triangle, int side)
{
    Edge& last = shape->edges[place.last];
    Edge& first = shape->edges[NextInRing(last)];
    if (first.triangles[0] == triangle) {
        return; // Deliberate: what one triangle walks there and back is still single.
    }
    if (&first == &last) {
        GetLink(shape, place) = NextInChain(last);
        place.point->rings--;
    } else {
        NextInRing(last) = NextInRing(first);
    }
    first.triangles[1] = triangle;
    first.sides[1] = side;
}

// Makes the edge the last of a ring.
static void JoinRing(Shape* shape, const RingPlace& place, int index)
{
    Edge& edge = shape->edges[index];
    Edge& last = shape->edges[place.last];
    NextInRing(edge) = NextInRing(last);
    NextInRing(last) = index;
    NextInChain(edge) = NextInChain(last);
    GetLink(shape, place) = index;
}

// Makes the edge a ring of its own at the head of the point's chain.
static void BeginRing(Shape* shape, PointWork& point, int index)
{
    Edge& edge = shape->edges[index];
    NextInRing(edge) = index;
    NextInChain(edge) = point.chain;
    point.chain = index;
    point.rings++;
}

// Makes an edge that is in no ring yet. Returns its index.
static int AddEdge(NormalWalk& walk, int a, int b, int triangle, int side)
{
    Shape* shape = walk.shape;
    if (shape->edgenumber == walk.edgeroom) {
        // The usual shapes never get here: a border or a contradiction needs more than planned.
        const std::int64_t most = 3 * std::int64_t(shape->trianglenumber);
        walk.edgeroom = int(std::min<std::int64_t>(most, INT_MAX));
        ResizeArray(shape->edges, walk.edgeroom);
    }
    Edge& edge = shape->edges[shape->edgenumber];
    edge.points[0] = a;
    edge.points[1] = b;
    edge.triangles[0] = triangle;
    edge.sides[0] = side;
    return shape->edgenumber++;
}

// Takes in the edge that a triangle walks from a to b.
static void WalkEdge(NormalWalk& walk, int a, int b, int triangle, int side)
{
    Shape* shape = walk.shape;
    PointWork& first = walk.points[std::size_t(a)];
    PointWork& second = walk.points[std::size_t(b)];
    RingPlace place = FindRing(shape, first, a, b);
    if (place.last == noone) {
        place = FindRing(shape, second, a, b);
    }
    if (place.last != noone && shape->edges[place.last].points[0] == b) {
        MatchEdge(shape, place, triangle, side);
        return;
    }
    const int index = AddEdge(walk, a, b, triangle, side);
    if (place.last != noone) {
        JoinRing(shape, place, index);
    } else {
        BeginRing(shape, first.rings < second.rings ? first : second, index);
    }
}

// What is single at the end stays single: both its triangles are the one, and both its sides.
static void EndSingleEdges(Shape* shape, const PointWork& point)
{
    int next = noone;
    for (int last = point.chain; last != noone; last = next) {
        next = NextInChain(shape->edges[last]);
        int index = last;
        do {
            Edge& edge = shape->edges[index];
            index = NextInRing(edge);
            edge.triangles[1] = edge.triangles[0];
            edge.sides[1] = edge.sides[0];
        } while (index != last);
    }
}

// Takes in a triangle's corner. Returns the index of the corner's normal.
static int WalkCorner(NormalWalk& walk, int point, int side, const float* normal)
{
    PointWork& own = walk.points[std::size_t(point)];
    if (walk.sharps.empty()) {
        AddTo(own.sum, normal);
        return point;
    }
    SharpPoint& sharp = walk.sharps[std::size_t(point)];
    if (sharp.pointclass == 0) {
        AddTo(own.sum, normal);
        return sharp.first;
    }
    if ((sharp.pointclass & POINT_CREASE) == 0) {
        const int index = sharp.first + sharp.met++;
        std::copy_n(normal, 3, walk.shape->normals[index]);
        return index;
    }
    if (sharp.met == noone) {
        sharp.met = side;
    }
    AddTo(sharp.met == side ? own.sum : sharp.others, normal);
    return sharp.met == side ? sharp.first : sharp.first + 1;
}

static void WalkTriangle(NormalWalk& walk, int index, int side)
{
    Triangle& triangle = walk.shape->triangles[index];
    float* normal = walk.shape->trianglenormals[index];
    const float(*points)[3] = walk.shape->points;
    if (!StoreUnit(GetCross(points[triangle.points[0]], points[triangle.points[1]],
                            points[triangle.points[2]]),
                   normal)) {
        // Deliberate: this fallback differs from that of SetTriangleNormalsOfShape.
        Store({1, 0, 0}, normal);
    }
    for (int i = 0; i < 3; i++) {
        const int point = triangle.points[i];
        if (!walk.edgesknown) {
            WalkEdge(walk, point, triangle.points[i == 2 ? 0 : i + 1], index, side);
        }
        triangle.normals[i] = WalkCorner(walk, point, side, normal);
    }
}

// Every stripe makes its ends corners and its inner points creases, where they are vertexes; an
// inner point is a corner too when one of its neighbours is no vertex.
static void ClassifyPoints(NormalWalk& walk)
{
    const Shape* shape = walk.shape;
    walk.sharps.assign(walk.points.size(), {{0, 0, 0}, 0, 0, 0});
    for (int i = 0; i < shape->vertexnumber; i++) {
        walk.sharps[std::size_t(shape->vertexes[i])].pointclass = POINT_VERTEX;
    }
    const auto isvertex = [&walk](int point) {
        return walk.sharps[std::size_t(point)].pointclass != 0;
    };
    for (int i = 0; i < shape->stripenumber; i++) {
        const int* points = shape->stripes[i].points;
        const int last = shape->stripes[i].pointnumber - 1;
        for (int k = 0; k <= last; k++) {
            if (!isvertex(points[k])) {
                continue;
            }
            const bool crease =
                k > 0 && k < last && isvertex(points[k - 1]) && isvertex(points[k + 1]);
            unsigned char& own = walk.sharps[std::size_t(points[k])].pointclass;
            own = static_cast<unsigned char>(own | (crease ? POINT_CREASE : POINT_CORNER));
        }
    }
}

// For every point how many triangle corners lie on it.
static std::vector<int> CountCorners(const Shape* shape)
{
    std::vector<int> corners(std::size_t(shape->pointnumber), 0);
    for (int i = 0; i < shape->trianglenumber; i++) {
        for (int point : shape->triangles[i].points) {
            corners[std::size_t(point)]++;
        }
    }
    return corners;
}

// Gives every point its place among the normals. Returns how many normals there will be.
static int PlaceSharpNormals(NormalWalk& walk)
{
    const std::vector<int> corners = CountCorners(walk.shape);
    int number = 0;
    for (std::size_t i = 0; i < walk.sharps.size(); i++) {
        SharpPoint& sharp = walk.sharps[i];
        sharp.first = number;
        if (sharp.pointclass == 0) {
            number += 1;
        } else if ((sharp.pointclass & POINT_CREASE) != 0) {
            sharp.met = noone;
            number += 2;
        } else {
            number += corners[i];
        }
    }
    return number;
}

static void MakeRoomForEdges(NormalWalk& walk)
{
    Shape* shape = walk.shape;
    std::int64_t edgeends = 3 * std::int64_t(shape->trianglenumber);
    if (shape->sidenumber == 1 && shape->stripenumber > 0) {
        edgeends += shape->stripes[0].pointnumber; // its border edges have one triangle each
    }
    walk.edgeroom = int(edgeends / 2);
    shape->edgenumber = 0;
    ResizeArray(shape->edges, walk.edgeroom);
}

static NormalWalk StartWalk(Shape* shape, bool edgesknown)
{
    NormalWalk walk = {shape, edgesknown, 0, {}, {}};
    walk.points.assign(std::size_t(shape->pointnumber), {{0, 0, 0}, noone, 0});
    shape->normalnumber = shape->pointnumber;
    // A one-sided shape is smooth even along its vertexes.
    if (shape->sidenumber > 1 && shape->vertexnumber > 0) {
        ClassifyPoints(walk);
        shape->normalnumber = PlaceSharpNormals(walk);
    }
    if (!edgesknown) {
        MakeRoomForEdges(walk);
    }
    ResizeArray(shape->normals, shape->normalnumber);
    ResizeArray(shape->trianglenormals, shape->trianglenumber);
    return walk;
}

static void StoreSmoothNormal(const Vector& sum, float* normal)
{
    if (!StoreUnit(sum, normal)) {
        Store({1, 1, 1}, normal); // Deliberate: no unit vector, unlike the fallback of a triangle.
    }
}

static void FinishPoint(NormalWalk& walk, std::size_t index)
{
    const PointWork& own = walk.points[index];
    float(*normals)[3] = walk.shape->normals;
    EndSingleEdges(walk.shape, own);
    if (walk.sharps.empty()) {
        StoreSmoothNormal(own.sum, normals[index]);
        return;
    }
    const SharpPoint& sharp = walk.sharps[index];
    if (sharp.pointclass == 0) {
        StoreSmoothNormal(own.sum, normals[sharp.first]);
    } else if ((sharp.pointclass & POINT_CREASE) != 0) {
        // Deliberate: no fallback here.
        StoreUnit(own.sum, normals[sharp.first]);
        StoreUnit(sharp.others, normals[sharp.first + 1]);
    }
}

static void SetNormals(Shape* shape, bool edgesknown)
{
    NormalWalk walk = StartWalk(shape, edgesknown);
    for (int s = 0; s < shape->sidenumber; s++) {
        const Side& side = shape->sides[s];
        for (int k = 0; k < side.trianglenumber; k++) {
            WalkTriangle(walk, side.triangles[k], s);
        }
    }
    for (std::size_t i = 0; i < walk.points.size(); i++) {
        FinishPoint(walk, i);
    }
}

void SetNormalsOfShape(Shape* shape)
{
    SetNormals(shape, false);
    ResizeArray(shape->edges, shape->edgenumber);
}

void SetNormalsOverEdges(Shape* shape)
{
    SetNormals(shape, true);
}

} // namespace korvane
