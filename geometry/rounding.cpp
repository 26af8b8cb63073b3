#include "geometry/rounding.h"

#include "geometry/creases.h"
#include "geometry/normals.h"
#include "geometry/roundedges.h"
#include "geometry/subdivision.h"
#include "scene/arrays.h"
#include "scene/model.h"

#include <array>
#include <vector>

namespace korvane
{

// What a point gathers from the triangles, later from the edges, that use it.
struct PointSum {
    double sum[3];
    int count;
};

// The working tables of one rounding.
struct Rounding {
    Subdivision mesh;
    Creases creases;
    std::vector<PointSum> sums; // per point; all zero between two gatherings
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
    const Shape* shape = work.mesh.shape;
    for (int t = 0; t < shape->trianglenumber; t++) {
        const int* corners = shape->triangles[t].points;
        const float* a = shape->points[corners[0]];
        const float* b = shape->points[corners[1]];
        const float* c = shape->points[corners[2]];
        float* face = work.mesh.round->points[work.mesh.firstface + t];
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
    const float(*points)[3] = work.mesh.shape->points;
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
    for (int p = 0; p < work.mesh.shape->pointnumber; p++) {
        const float* point = work.mesh.shape->points[p];
        float* moved = work.mesh.round->points[p];
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
    const float* a = work.mesh.shape->points[edge.points[0]];
    const float* b = work.mesh.shape->points[edge.points[1]];
    for (int k = 0; k < 2; k++) {
        const float* moved = work.mesh.round->points[edge.points[k]];
        for (int i = 0; i < 3; i++) {
            pair[k][i] = float((double(a[i]) + double(moved[i]) + double(b[i])) / 3);
        }
    }
}

// Elsewhere they lean to the face points of both triangles; a border edge has the same triangle
// twice.
static void SetSmoothEdgePoints(float (*pair)[3], const Rounding& work, const Edge& edge)
{
    const float* face1 = work.mesh.round->points[work.mesh.firstface + edge.triangles[0]];
    const float* face2 = work.mesh.round->points[work.mesh.firstface + edge.triangles[1]];
    for (int k = 0; k < 2; k++) {
        const float* moved = work.mesh.round->points[edge.points[k]];
        for (int i = 0; i < 3; i++) {
            pair[k][i] = float((double(moved[i]) + double(face1[i]) + double(face2[i])) / 3);
        }
    }
}

// The edge points, which the points of the edges gather.
static void SetEdgePoints(Rounding& work)
{
    float(*pair)[3] = work.mesh.round->points + work.mesh.firstedge;
    for (int e = 0; e < work.mesh.shape->edgenumber; e++, pair += 2) {
        const Edge& edge = work.mesh.shape->edges[e];
        if (IsCreaseEdge(work, edge)) {
            SetCreaseEdgePoints(pair, work, edge);
        } else {
            SetSmoothEdgePoints(pair, work, edge);
        }
        AddTo(work.sums[edge.points[0]], pair[0]);
        AddTo(work.sums[edge.points[1]], pair[1]);
    }
}

static void SmoothFacePoint(float (*points)[3], const LocalPoints& local)
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

static void SmoothFacePoints(Rounding& work)
{
    LocalPoints local = {};
    for (int t = 0; t < work.mesh.shape->trianglenumber; t++) {
        SetLocalPoints(local, work.mesh, t);
        SmoothFacePoint(work.mesh.round->points, local);
    }
}

static void MoveSmoothPointsAgain(Rounding& work)
{
    for (int p = 0; p < work.mesh.shape->pointnumber; p++) {
        if (work.creases.flags[p] == 0) {
            float* point = work.mesh.round->points[p];
            MoveHalfway(point, point, work.sums[p]);
        }
    }
}

Shape* RoundShape(const Shape* shape)
{
    Rounding work;
    work.mesh = StartSubdivision(shape);
    work.creases = GetCreases(shape);
    work.sums.resize(shape->pointnumber);

    SetFacePoints(work);
    MovePoints(work);
    SetEdgePoints(work);
    SmoothFacePoints(work);
    MoveSmoothPointsAgain(work);
    SetNineTriangles(work.mesh);
    ClearBorderCrease(work.creases, shape);
    SetRoundStripes(work.mesh, work.creases);
    SetRoundSides(work.mesh);
    if (SetRoundEdges(work.mesh)) {
        SetNormalsOverEdges(work.mesh.round);
    } else {
        SetNormalsOfShape(work.mesh.round);
    }
    return work.mesh.round;
}

} // namespace korvane
