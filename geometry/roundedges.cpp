#include "geometry/roundedges.h"

#include "geometry/subdivision.h"
#include "scene/arrays.h"
#include "scene/model.h"

#include <array>
#include <cstddef>
#include <vector>

namespace korvane
{

// Why this gives what SetNormalsOfShape finds by searching. It walks the triangles, gives a
// directed edge to the earliest edge between the same points that runs against it and is single,
// and else makes a new edge. Of the 27 directed edges of nine triangles
//
// - 18 lie inside. Their point pairs hold the face point, or edge points of two different
//   edges. Each comes twice within the nine, once in either direction, so that every such
//   edge is complete when the next nine begin.
// - 9 are thirds of the three outer edges. Their point pairs hold an edge point of that edge
//   alone. The triangle that walks the edge from its points[0] makes them; the other one,
//   which must come later, completes them, last third first.
//
// So it is known beforehand which steps of the walk make an edge: the first of every two inside,
// and the thirds of those outer edges that the triangle walks from their points[0].

static constexpr int stepnumber = 27;

// A line from one local point to another, and the step of the walk that runs it first.
struct WalkLine {
    LocalPoint from;
    LocalPoint to;
    int step;    // step / 3 is the triangle, of the nine, that runs it
    int against; // the later step that runs it in the other direction; none for an outer third
};

struct Walk {
    std::array<WalkLine, 9> inner;
    std::array<std::array<WalkLine, 3>, 3> thirds; // per corner, from there on
};

static constexpr int FindStep(int from, int to)
{
    for (int step = 0; step < stepnumber; step++) {
        const LocalPoint* triangle = ninetriangles[step / 3];
        if (triangle[step % 3] == from && triangle[(step + 1) % 3] == to) {
            return step;
        }
    }
    return noone;
}

static constexpr Walk GetWalk()
{
    Walk found = {};
    std::size_t inner = 0;
    for (int step = 0; step < stepnumber; step++) {
        const LocalPoint* triangle = ninetriangles[step / 3];
        const LocalPoint from = triangle[step % 3];
        const LocalPoint to = triangle[(step + 1) % 3];
        const int against = FindStep(to, from);
        if (against > step) {
            found.inner[inner++] = {from, to, step, against};
        }
    }
    for (int k = 0; k < 3; k++) {
        const int line[4] = {A + k, AB1 + 2 * k, AB2 + 2 * k, A + (k + 1) % 3};
        for (int i = 0; i < 3; i++) {
            found.thirds[std::size_t(k)][std::size_t(i)] = {LocalPoint(line[i]),
                                                            LocalPoint(line[i + 1]),
                                                            FindStep(line[i], line[i + 1]), noone};
        }
    }
    return found;
}

static constexpr Walk walk = GetWalk();

// Per step how many edges the walk makes before it. Which outer edges it makes is told by a bit per
// corner.
using StepPlaces = std::array<int, stepnumber + 1>;

static constexpr StepPlaces GetStepPlaces(unsigned outer)
{
    std::array<bool, stepnumber> makes = {};
    for (const WalkLine& line : walk.inner) {
        makes[std::size_t(line.step)] = true;
    }
    for (std::size_t k = 0; k < 3; k++) {
        for (const WalkLine& line : walk.thirds[k]) {
            makes[std::size_t(line.step)] = (outer >> k & 1) != 0;
        }
    }
    StepPlaces before = {};
    for (std::size_t step = 0; step < stepnumber; step++) {
        before[step + 1] = before[step] + (makes[step] ? 1 : 0);
    }
    return before;
}

static constexpr std::array<StepPlaces, 8> stepplaces = {
    GetStepPlaces(0), GetStepPlaces(1), GetStepPlaces(2), GetStepPlaces(3),
    GetStepPlaces(4), GetStepPlaces(5), GetStepPlaces(6), GetStepPlaces(7)};

struct RoundEdges {
    Edge* edges;                            // owned, until the shape takes them; room for all
    int number;                             // how many are there
    std::vector<std::array<int, 3>> thirds; // per edge of the shape the edges that are its thirds
};

static bool IsForward(int end)
{
    return end % 2 == 0;
}

// What must hold for a triangle to be walked. It keeps a triangle from being walked twice.
static bool IsRegular(const RoundEdges& round, const std::array<int, 3>& ends)
{
    for (const int end : ends) {
        if (end == noend) {
            return false;
        }
        const int third = round.thirds[end / 2][0];
        const bool single =
            third != noone && round.edges[third].triangles[0] == round.edges[third].triangles[1];
        if (IsForward(end) ? third != noone : !single) {
            return false;
        }
    }
    return ends[0] / 2 != ends[1] / 2 && ends[1] / 2 != ends[2] / 2 && ends[2] / 2 != ends[0] / 2;
}

static void WalkTriangle(RoundEdges& round, const Subdivision& work, const LocalPoints& local,
                         int t, int side)
{
    const std::array<int, 3>& ends = work.ends[t];
    const unsigned outer = (IsForward(ends[0]) ? 1U : 0U) | (IsForward(ends[1]) ? 2U : 0U) |
                           (IsForward(ends[2]) ? 4U : 0U);
    const StepPlaces& place = stepplaces[outer];
    for (const WalkLine& line : walk.inner) {
        round.edges[round.number + place[line.step]] = {
            {local[line.from], local[line.to]},
            {9 * t + line.step / 3, 9 * t + line.against / 3},
            {side, side}};
    }
    for (std::size_t k = 0; k < 3; k++) {
        std::array<int, 3>& thirds = round.thirds[ends[k] / 2];
        for (std::size_t i = 0; i < 3; i++) {
            const WalkLine& line = walk.thirds[k][i];
            const int triangle = 9 * t + line.step / 3;
            if (IsForward(ends[k])) {
                thirds[i] = round.number + place[line.step];
                round.edges[thirds[i]] = {
                    {local[line.from], local[line.to]}, {triangle, triangle}, {side, side}};
            } else {
                Edge& edge = round.edges[thirds[2 - i]];
                edge.triangles[1] = triangle;
                edge.sides[1] = side;
            }
        }
    }
    round.number += place[stepnumber];
}

static bool WalkSides(RoundEdges& round, const Subdivision& work)
{
    LocalPoints local = {};
    for (int s = 0; s < work.shape->sidenumber; s++) {
        const Side& side = work.shape->sides[s];
        for (int k = 0; k < side.trianglenumber; k++) {
            const int t = side.triangles[k];
            if (!IsRegular(round, work.ends[t])) {
                return false;
            }
            SetLocalPoints(local, work, t);
            WalkTriangle(round, work, local, t, s);
        }
    }
    return true;
}

bool SetRoundEdges(Subdivision& work)
{
    // As planned: three of every edge, nine in every triangle.
    const int number = work.round->edgenumber;
    RoundEdges round;
    round.edges = NewUnfilledArray<Edge>(number);
    round.number = 0;
    round.thirds.assign(work.shape->edgenumber, {noone, noone, noone});
    if (!WalkSides(round, work) || round.number != number) {
        FreeArray(round.edges);
        return false;
    }
    FreeArray(work.round->edges);
    work.round->edges = round.edges;
    return true;
}

} // namespace korvane
