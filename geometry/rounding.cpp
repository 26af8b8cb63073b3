#include "geometry/rounding.h"

#include "geometry/creases.h"
#include "geometry/shapegeometry.h"
#include "scene/arrays.h"
#include "scene/model.h"

#include <array>
#include <vector>

namespace korvane
{

// Points of the result, for P points, T triangles and E edges of the shape:
//
//     0 ..                P + T ..                   P + T + 2E
//     | points, moved | a face point per triangle | two edge points per edge |
//
// The ends of the edges are numbered as their edge points are: end 2e is edge e's points[0], end 2e
// + 1 its points[1], end ^ 1 the other end of the same edge, and firstedge + end the edge point
// near it.

// What a point gathers from the triangles, later from the edges, that use it.
struct PointSum {
    double sum[3];
    int count;
};

constexpr int noend = -1;

// The working tables of one rounding.
struct Rounding {
    const Shape* shape; // what is rounded
    Shape* round;       // what comes of it
    int firstface;      // index of the first face point
    int firstedge;      // index of the first edge point
    Creases creases;
    std::vector<PointSum> sums; // per point; all zero between two gatherings
    std::vector<std::array<int, 3>>
        triangleends;                  // per triangle and corner: the end there of the edge
                                       // to the next corner; noend when there is none
    std::vector<unsigned char> marked; // per edge: 1 when a crease of the result runs along it
};

static void AddTo(PointSum& sum, const float* point)
{
    for (int i = 0; i < 3; i++) {
        sum.sum[i] += double(point[i]);
    }
    sum.count++;
}

// Moves a point halfway to the mean of what it has gathered, and empties the sum. Without a
// triangle round it a point stays.
static void MoveHalfway(float* moved, const float* point, PointSum& sum)
{
    const double count = sum.count;
    for (int i = 0; i < 3; i++) {
        const double old = double(point[i]);
        moved[i] = sum.count == 0 ? point[i] : float((count * old + sum.sum[i]) / (2 * count));
    }
    sum = PointSum{};
}

// The face points, each the mean of its triangle, which its corners gather.
static void SetFacePoints(Rounding& work)
{
    const Shape* shape = work.shape;
    for (int t = 0; t < shape->trianglenumber; t++) {
        const int* corners = shape->triangles[t].points;
        const float* a = shape->points[corners[0]];
        const float* b = shape->points[corners[1]];
        const float* c = shape->points[corners[2]];
        float* face = work.round->points[work.firstface + t];
        for (int i = 0; i < 3; i++) {
            face[i] = float((double(a[i]) + double(b[i]) + double(c[i])) / 3);
        }
        for (int k = 0; k < 3; k++) {
            AddTo(work.sums[corners[k]], face);
        }
    }
}

// A crease point follows the curve of a cubic B-spline through itself and its two neighbours.
static void MoveAlongCrease(float* moved, const Rounding& work, int point)
{
    const float(*points)[3] = work.shape->points;
    const std::array<int, 2>& neighbours = work.creases.neighbours[point];
    const float* p = points[point];
    const float* n1 = points[neighbours[0]];
    const float* n2 = points[neighbours[1]];
    for (int i = 0; i < 3; i++) {
        moved[i] = float((6 * double(p[i]) + double(n1[i]) + double(n2[i])) / 8);
    }
}

static void KeepPoint(float* moved, const float* point)
{
    for (int i = 0; i < 3; i++) {
        moved[i] = point[i];
    }
}

static void MovePoints(Rounding& work)
{
    for (int p = 0; p < work.shape->pointnumber; p++) {
        const float* point = work.shape->points[p];
        float* moved = work.round->points[p];
        const unsigned char flags = work.creases.flags[p];
        if (flags == 0) {
            MoveHalfway(moved, point, work.sums[p]);
            continue;
        }
        work.sums[p] = PointSum{};
        if ((flags & FLAG_CORNER) != 0) {
            KeepPoint(moved, point);
        } else {
            // Deliberate: a vertex through which no stripe runs has point 0 for both neighbours.
            MoveAlongCrease(moved, work, p);
        }
    }
}

static bool IsCreaseEdge(const Rounding& work, const Edge& edge)
{
    return work.creases.flags[edge.points[0]] != 0 && work.creases.flags[edge.points[1]] != 0;
}

// On a crease the edge points stay on the line of the edge's ends, moved or not.
static void SetCreaseEdgePoints(float (*pair)[3], const Rounding& work, const Edge& edge)
{
    const float* a = work.shape->points[edge.points[0]];
    const float* b = work.shape->points[edge.points[1]];
    for (int k = 0; k < 2; k++) {
        const float* moved = work.round->points[edge.points[k]];
        for (int i = 0; i < 3; i++) {
            pair[k][i] = float((double(a[i]) + double(moved[i]) + double(b[i])) / 3);
        }
    }
}

// Elsewhere they lean to the face points of both triangles; a border edge has the same triangle
// twice.
static void SetSmoothEdgePoints(float (*pair)[3], const Rounding& work, const Edge& edge)
{
    const float* face1 = work.round->points[work.firstface + edge.triangles[0]];
    const float* face2 = work.round->points[work.firstface + edge.triangles[1]];
    for (int k = 0; k < 2; k++) {
        const float* moved = work.round->points[edge.points[k]];
        for (int i = 0; i < 3; i++) {
            pair[k][i] = float((double(moved[i]) + double(face1[i]) + double(face2[i])) / 3);
        }
    }
}

// The edge points, which the points of the edges gather.
static void SetEdgePoints(Rounding& work)
{
    for (int e = 0; e < work.shape->edgenumber; e++) {
        const Edge& edge = work.shape->edges[e];
        float(*pair)[3] = work.round->points + work.firstedge + 2 * e;
        if (IsCreaseEdge(work, edge)) {
            SetCreaseEdgePoints(pair, work, edge);
        } else {
            SetSmoothEdgePoints(pair, work, edge);
        }
        AddTo(work.sums[edge.points[0]], pair[0]);
        AddTo(work.sums[edge.points[1]], pair[1]);
    }
}

// Notes edge e at the corners of triangle t between which it runs. Of several edges between the
// same two corners the first stays.
static void NoteEdgeOfTriangle(Rounding& work, int e, int t)
{
    const int* ends = work.shape->edges[e].points;
    const int* corners = work.shape->triangles[t].points;
    for (int k = 0; k < 3; k++) {
        const int from = corners[k];
        const int to = corners[k == 2 ? 0 : k + 1];
        int& noted = work.triangleends[t][k];
        if (noted != noend) {
            continue;
        }
        if (ends[0] == from && ends[1] == to) {
            noted = 2 * e;
        } else if (ends[1] == from && ends[0] == to) {
            noted = 2 * e + 1;
        }
    }
}

static void NoteEdgesOfTriangles(Rounding& work)
{
    work.triangleends.assign(work.shape->trianglenumber, {noend, noend, noend});
    for (int e = 0; e < work.shape->edgenumber; e++) {
        const Edge& edge = work.shape->edges[e];
        NoteEdgeOfTriangle(work, e, edge.triangles[0]);
        if (edge.triangles[1] != edge.triangles[0]) {
            NoteEdgeOfTriangle(work, e, edge.triangles[1]);
        }
    }
}

// The points from which the nine triangles of one are made: its corners, its face point, and on the
// way from each corner to the next the two edge points, the near one first.
enum LocalPoint { A, B, C, M, AB1, AB2, BC1, BC2, CA1, CA2, localpoints };

constexpr LocalPoint ninetriangles[9][3] = {{A, AB1, CA2}, {AB1, AB2, M}, {AB2, B, BC1},
                                            {M, CA2, AB1}, {BC1, M, AB2}, {CA2, M, CA1},
                                            {M, BC1, BC2}, {BC2, CA1, M}, {CA1, BC2, C}};

// Looks up the edge points of triangle t. Where an edge is missing, those of the triangle before
// stay.
static void SetLocalPoints(int* local, const Rounding& work, int t)
{
    for (int k = 0; k < 3; k++) {
        local[A + k] = work.shape->triangles[t].points[k];
        const int end = work.triangleends[t][k];
        if (end != noend) {
            local[AB1 + 2 * k] = work.firstedge + end;
            local[AB2 + 2 * k] = work.firstedge + (end ^ 1);
        }
    }
    local[M] = work.firstface + t;
}

static void SmoothFacePoint(float (*points)[3], const int* local)
{
    float* face = points[local[M]];
    for (int i = 0; i < 3; i++) {
        double sum = 6 * double(face[i]);
        for (int k = AB1; k < localpoints; k++) {
            sum += double(points[local[k]][i]);
        }
        face[i] = float(sum / 12);
    }
}

static void SetTriangles(Rounding& work)
{
    Shape* round = work.round;
    int local[localpoints] = {};
    for (int t = 0; t < work.shape->trianglenumber; t++) {
        SetLocalPoints(local, work, t);
        SmoothFacePoint(round->points, local);
        Triangle* nine = round->triangles + 9 * t;
        for (int i = 0; i < 9; i++) {
            const LocalPoint* corners = ninetriangles[i];
            nine[i] = {{local[corners[0]], local[corners[1]], local[corners[2]]}, {}, round};
        }
    }
}

static void MoveSmoothPointsAgain(Rounding& work)
{
    for (int p = 0; p < work.shape->pointnumber; p++) {
        if (work.creases.flags[p] == 0) {
            float* point = work.round->points[p];
            MoveHalfway(point, point, work.sums[p]);
        }
    }
}

// For every point the edge ends there, as lists in edge order.
struct EndLists {
    std::vector<int> first; // per point
    std::vector<int> next;  // per end
};

static EndLists GetEndLists(const Shape* shape)
{
    EndLists lists{std::vector<int>(shape->pointnumber, noend),
                   std::vector<int>(2 * std::size_t(shape->edgenumber))};
    for (int end = 2 * shape->edgenumber - 1; end >= 0; end--) {
        int& first = lists.first[shape->edges[end / 2].points[end % 2]];
        lists.next[end] = first;
        first = end;
    }
    return lists;
}

// The end at p of the first edge between p and q; noend when there is none.
static int FindEnd(const Shape* shape, const EndLists& lists, int p, int q)
{
    int end = lists.first[p];
    while (end != noend) {
        const Edge& edge = shape->edges[end / 2];
        if (edge.points[0] == q || edge.points[1] == q) {
            break;
        }
        end = lists.next[end];
    }
    return end;
}

// Fills the stripe of the result that belongs to `stripe`. Returns the number of its segments that
// are creases and marks their edges. A segment without an edge is filled with its own two points.
static int SetStripe(Rounding& work, const EndLists& lists, const Stripe& stripe, int* filled)
{
    int creasesegments = 0;
    for (int k = 0; k < stripe.pointnumber - 1; k++) {
        const int p = stripe.points[k];
        const int q = stripe.points[k + 1];
        const int end = FindEnd(work.shape, lists, p, q);
        filled[3 * k] = p;
        filled[3 * k + 1] = end == noend ? p : work.firstedge + end;
        filled[3 * k + 2] = end == noend ? q : work.firstedge + (end ^ 1);
        if (end != noend && IsCreaseEdge(work, work.shape->edges[end / 2])) {
            work.marked[end / 2] = 1;
            creasesegments++;
        }
    }
    filled[3 * (stripe.pointnumber - 1)] = stripe.points[stripe.pointnumber - 1];
    return creasesegments;
}

// Returns the number of crease segments, an edge counted once for every stripe along it.
static int SetStripes(Rounding& work)
{
    const Shape* shape = work.shape;
    const EndLists lists = GetEndLists(shape);
    work.marked.resize(shape->edgenumber);
    int creasesegments = 0;
    for (int i = 0; i < shape->stripenumber; i++) {
        Stripe& stripe = work.round->stripes[i];
        stripe.pointnumber = 3 * shape->stripes[i].pointnumber - 2;
        stripe.points = NewUnfilledArray<int>(stripe.pointnumber);
        stripe.shape = work.round;
        creasesegments += SetStripe(work, lists, shape->stripes[i], stripe.points);
    }
    return creasesegments;
}

// The vertexes of the shape and the edge points of the marked edges. An edge on two stripes was
// counted twice: the list then repeats its last entry.
static void SetVertexes(Rounding& work, int creasesegments)
{
    const Shape* shape = work.shape;
    Shape* round = work.round;
    round->vertexnumber = shape->vertexnumber + 2 * creasesegments;
    if (round->vertexnumber == 0) {
        return;
    }
    round->vertexes = NewUnfilledArray<int>(round->vertexnumber);
    int filled = 0;
    for (; filled < shape->vertexnumber; filled++) {
        round->vertexes[filled] = shape->vertexes[filled];
    }
    for (int end = 0; end < 2 * shape->edgenumber && creasesegments > 0; end++) {
        if (work.marked[end / 2] != 0) {
            round->vertexes[filled++] = work.firstedge + end;
        }
    }
    for (; filled < round->vertexnumber; filled++) {
        round->vertexes[filled] = round->vertexes[filled - 1];
    }
}

static void SetSides(Rounding& work)
{
    for (int s = 0; s < work.shape->sidenumber; s++) {
        const Side& side = work.shape->sides[s];
        Side& round = work.round->sides[s];
        round = side; // visibility and colours; all else is set below
        round.pointnumber = 1;
        round.points = NewArray<int>(1); // Deliberate: a rounded side keeps no outline
        round.trianglenumber = 9 * side.trianglenumber;
        round.triangles = NewUnfilledArray<int>(round.trianglenumber);
        round.shape = work.round;
        for (int k = 0; k < round.trianglenumber; k++) {
            round.triangles[k] = 9 * side.triangles[k / 9] + k % 9;
        }
    }
}

// The result with its counts and its empty arrays. Normals and edges are SetNormalsOfShape's.
static Shape* CreateRoundShape(const Shape* shape)
{
    Shape* round = CopyArray(shape, 1); // center and radius; all else is set below
    round->pointnumber = shape->pointnumber + shape->trianglenumber + 2 * shape->edgenumber;
    round->trianglenumber = 9 * shape->trianglenumber;
    round->edgenumber = 3 * shape->edgenumber + 9 * shape->trianglenumber;
    round->normalnumber = 0;
    round->vertexnumber = 0;
    round->vertexes = nullptr;
    round->points = NewUnfilledArray<float[3]>(round->pointnumber);
    round->normals = NewArray<float[3]>(0);
    round->trianglenormals = NewArray<float[3]>(0);
    round->stripes = NewUnfilledArray<Stripe>(round->stripenumber);
    round->triangles = NewUnfilledArray<Triangle>(round->trianglenumber);
    round->edges = NewArray<Edge>(0);
    round->sides = NewUnfilledArray<Side>(round->sidenumber);
    return round;
}

Shape* RoundShape(const Shape* shape)
{
    Rounding work;
    work.shape = shape;
    work.round = CreateRoundShape(shape);
    work.firstface = shape->pointnumber;
    work.firstedge = shape->pointnumber + shape->trianglenumber;
    work.creases = GetCreases(shape);
    work.sums.resize(shape->pointnumber);

    SetFacePoints(work);
    MovePoints(work);
    SetEdgePoints(work);
    NoteEdgesOfTriangles(work);
    SetTriangles(work);
    MoveSmoothPointsAgain(work);
    ClearBorderCrease(work.creases, shape);
    const int creasesegments = SetStripes(work);
    SetVertexes(work, creasesegments);
    SetSides(work);
    SetNormalsOfShape(work.round);
    return work.round;
}

} // namespace korvane
