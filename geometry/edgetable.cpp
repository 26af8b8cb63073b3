#include "geometry/edgetable.h"

#include "scene/arrays.h"
#include "scene/model.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace korvane
{

static constexpr int noone = -1;

// The single edges between two points. While there are some they all run the same way, for one that
// runs the other way is matched instead of added.
struct SingleEdges {
    int farend; // the point with the higher index; noone in a free place
    int last;   // the latest of the edges, noone when there are none
};

// Finds the single edges between two points. Each point has a stretch of `places`, hashed by the
// far end, with one place for every directed edge that goes from it to a point of higher index or
// back. The edges in one place form a ring: the last leads to the first, which is the earliest.
struct SingleEdgeTable {
    std::vector<std::size_t> starts; // per point the start of its stretch, and the end of the last
    std::vector<SingleEdges> places;
    std::vector<int> nexts; // per edge the next in its ring
};

std::vector<int> CountCornersOfPoints(const Shape* shape)
{
    std::vector<int> corners(std::size_t(shape->pointnumber), 0);
    for (int i = 0; i < shape->trianglenumber; i++) {
        for (int point : shape->triangles[i].points) {
            corners[std::size_t(point)]++;
        }
    }
    return corners;
}

static SingleEdgeTable MakeTable(const Shape* shape)
{
    SingleEdgeTable table;
    table.starts.assign(std::size_t(shape->pointnumber) + 1, 0);
    for (int i = 0; i < shape->trianglenumber; i++) {
        const int* p = shape->triangles[i].points;
        for (int k = 0; k < 3; k++) {
            table.starts[std::size_t(std::min(p[k], p[(k + 1) % 3]))]++;
        }
    }
    std::size_t start = 0;
    for (std::size_t& entry : table.starts) {
        start += std::exchange(entry, start);
    }
    table.places.assign(start, {noone, noone});
    return table;
}

// The place of the edges between two points; it is taken now if they had none.
static SingleEdges& FindPlace(SingleEdgeTable& table, int a, int b)
{
    const auto [nearend, farend] = std::minmax(a, b);
    const std::size_t start = table.starts[std::size_t(nearend)];
    const std::size_t room = table.starts[std::size_t(nearend) + 1] - start;
    constexpr std::uint32_t goldenratio = 2654435769; // spreads neighbouring indices
    std::size_t i = std::uint64_t(std::uint32_t(farend) * goldenratio) * room >> 32;
    for (;;) {
        SingleEdges& place = table.places[start + i];
        if (place.farend == farend) {
            return place;
        }
        if (place.farend == noone) {
            place.farend = farend;
            return place;
        }
        i = i + 1 == room ? 0 : i + 1;
    }
}

static void AddEdge(Shape* shape, int& room, SingleEdgeTable& table, SingleEdges& place,
                    const Edge& edge)
{
    const int index = shape->edgenumber++;
    if (index == room) {
        room = std::max(16, 2 * room);
        GrowArray(shape->edges, index, room);
    }
    shape->edges[index] = edge;
    if (place.last == noone) {
        table.nexts.push_back(index);
    } else {
        table.nexts.push_back(table.nexts[std::size_t(place.last)]);
        table.nexts[std::size_t(place.last)] = index;
    }
    place.last = index;
}

// Takes the earliest edge out of its ring.
static int TakeEdge(SingleEdgeTable& table, SingleEdges& place)
{
    const int first = table.nexts[std::size_t(place.last)];
    if (first == place.last) {
        place.last = noone;
    } else {
        table.nexts[std::size_t(place.last)] = table.nexts[std::size_t(first)];
    }
    return first;
}

void SetEdgesOfShape(Shape* shape)
{
    int room = int(std::int64_t(shape->trianglenumber) * 3 / 2);
    SingleEdgeTable table = MakeTable(shape);
    shape->edges = NewUnfilledArray<Edge>(room);
    shape->edgenumber = 0;
    for (int s = 0; s < shape->sidenumber; s++) {
        const Side& side = shape->sides[s];
        for (int k = 0; k < side.trianglenumber; k++) {
            const int t = side.triangles[k];
            const int* p = shape->triangles[t].points;
            for (int c = 0; c < 3; c++) {
                const int a = p[c];
                const int b = p[(c + 1) % 3];
                SingleEdges& place = FindPlace(table, a, b);
                if (place.last != noone && shape->edges[place.last].points[0] == b) {
                    Edge& edge = shape->edges[TakeEdge(table, place)];
                    edge.triangles[1] = t;
                    edge.sides[1] = s;
                } else {
                    AddEdge(shape, room, table, place, {{a, b}, {t, t}, {s, s}});
                }
            }
        }
    }
}

} // namespace korvane
