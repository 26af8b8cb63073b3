#include "geometry/subdivision.h"

#include "scene/arrays.h"
#include "scene/model.h"

namespace korvane
{

// The result with its counts and its empty arrays. Normals and edges come when the points are
// there.
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

// Notes edge e at the corners of triangle t between which it runs. Of several edges between the
// same two corners the first stays.
static void NoteEdgeOfTriangle(Subdivision& work, int e, int t)
{
    const int* points = work.shape->edges[e].points;
    const int* corners = work.shape->triangles[t].points;
    for (int k = 0; k < 3; k++) {
        const int from = corners[k];
        const int to = corners[k == 2 ? 0 : k + 1];
        int& noted = work.ends[t][k];
        if (noted != noend) {
            continue;
        }
        if (points[0] == from && points[1] == to) {
            noted = 2 * e;
        } else if (points[1] == from && points[0] == to) {
            noted = 2 * e + 1;
        }
    }
}

static void NoteEdgesOfTriangles(Subdivision& work)
{
    work.ends.assign(work.shape->trianglenumber, {noend, noend, noend});
    for (int e = 0; e < work.shape->edgenumber; e++) {
        const Edge& edge = work.shape->edges[e];
        NoteEdgeOfTriangle(work, e, edge.triangles[0]);
        if (edge.triangles[1] != edge.triangles[0]) {
            NoteEdgeOfTriangle(work, e, edge.triangles[1]);
        }
    }
}

Subdivision StartSubdivision(const Shape* shape)
{
    Subdivision work;
    work.shape = shape;
    work.round = CreateRoundShape(shape);
    work.firstface = shape->pointnumber;
    work.firstedge = shape->pointnumber + shape->trianglenumber;
    NoteEdgesOfTriangles(work);
    return work;
}

void SetLocalPoints(LocalPoints& local, const Subdivision& work, int t)
{
    for (int k = 0; k < 3; k++) {
        local[A + k] = work.shape->triangles[t].points[k];
        const int end = work.ends[t][k];
        if (end != noend) {
            local[AB1 + 2 * k] = work.firstedge + end;
            local[AB2 + 2 * k] = work.firstedge + (end ^ 1);
        }
    }
    local[M] = work.firstface + t;
}

void SetNineTriangles(Subdivision& work)
{
    LocalPoints local = {};
    Triangle* next = work.round->triangles;
    for (int t = 0; t < work.shape->trianglenumber; t++) {
        SetLocalPoints(local, work, t);
        for (const auto& corners : ninetriangles) {
            *next++ = {{local[corners[0]], local[corners[1]], local[corners[2]]}, {}, work.round};
        }
    }
}

void SetRoundSides(Subdivision& work)
{
    for (int s = 0; s < work.shape->sidenumber; s++) {
        const Side& side = work.shape->sides[s];
        Side& round = work.round->sides[s];
        round = side; // visibility and colours; all else is set below
        round.pointnumber = 1;
        round.points = NewUnfilledArray<int>(1);
        round.points[0] = 0; // Deliberate: a rounded side keeps no outline
        round.trianglenumber = 9 * side.trianglenumber;
        round.triangles = NewUnfilledArray<int>(round.trianglenumber);
        round.shape = work.round;
        for (int k = 0; k < side.trianglenumber; k++) {
            for (int i = 0; i < 9; i++) {
                round.triangles[9 * k + i] = 9 * side.triangles[k] + i;
            }
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
    EndLists lists;
    lists.first.assign(shape->pointnumber, noend);
    lists.next.resize(2 * std::size_t(shape->edgenumber));
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

// The edges along which creases of the result run.
struct CreaseLines {
    // Per edge: 1 when a stripe runs along it between flagged points.
    std::vector<unsigned char> marked;
    int segments; // how often: an edge counts once for every stripe along it
};

// Fills the stripe of the result that belongs to `stripe`. A segment without an edge is filled with
// its own two points.
static void FillStripe(int* filled, const Stripe& stripe, const Subdivision& work,
                       const EndLists& lists, const Creases& creases, CreaseLines& lines)
{
    const int last = stripe.pointnumber - 1;
    for (int k = 0; k < last; k++) {
        const int p = stripe.points[k];
        const int q = stripe.points[k + 1];
        const int end = FindEnd(work.shape, lists, p, q);
        *filled++ = p;
        *filled++ = end == noend ? p : work.firstedge + end;
        *filled++ = end == noend ? q : work.firstedge + (end ^ 1);
        if (end != noend && creases.flags[p] != 0 && creases.flags[q] != 0) {
            lines.marked[end / 2] = 1;
            lines.segments++;
        }
    }
    *filled = stripe.points[last];
}

// The vertexes of the shape and the edge points of the marked edges. An edge on two stripes was
// counted twice: the list then repeats its last entry.
static void SetRoundVertexes(Subdivision& work, const CreaseLines& lines)
{
    const Shape* shape = work.shape;
    Shape* round = work.round;
    round->vertexnumber = shape->vertexnumber + 2 * lines.segments;
    if (round->vertexnumber == 0) {
        return;
    }
    round->vertexes = NewUnfilledArray<int>(round->vertexnumber);
    int filled = 0;
    for (; filled < shape->vertexnumber; filled++) {
        round->vertexes[filled] = shape->vertexes[filled];
    }
    for (int end = 0; end < 2 * shape->edgenumber; end++) {
        if (lines.marked[end / 2] != 0) {
            round->vertexes[filled++] = work.firstedge + end;
        }
    }
    for (; filled < round->vertexnumber; filled++) {
        round->vertexes[filled] = round->vertexes[filled - 1];
    }
}

void SetRoundStripes(Subdivision& work, const Creases& creases)
{
    const Shape* shape = work.shape;
    const EndLists lists = GetEndLists(shape);
    CreaseLines lines{std::vector<unsigned char>(shape->edgenumber), 0};
    for (int i = 0; i < shape->stripenumber; i++) {
        Stripe& stripe = work.round->stripes[i];
        stripe.pointnumber = 3 * shape->stripes[i].pointnumber - 2;
        stripe.points = NewUnfilledArray<int>(stripe.pointnumber);
        stripe.shape = work.round;
        FillStripe(stripe.points, shape->stripes[i], work, lists, creases, lines);
    }
    SetRoundVertexes(work, lines);
}

} // namespace korvane
