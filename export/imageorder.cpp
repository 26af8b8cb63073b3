#include "export/imageorder.h"

#include "view/sidelook.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <deque>
#include <string>
#include <unordered_map>

namespace korvane
{

TriangleLook GetLook(const ImageTriangle& triangle)
{
    const bool front = triangle.front != 0;
    const bool turned = !front && IsBackLikeFront(triangle.colors);
    return {triangle.colors, front || turned, turned ? -1.0F : 1.0F};
}

// As they are looked up, byte by byte.
static bool AreSameColors(const float* a, const float* b)
{
    return std::memcmp(a, b, colornumber * sizeof(float)) == 0;
}

bool ShareLightState(const TriangleLook& a, const TriangleLook& b)
{
    return a.front == b.front && AreSameColors(a.colors, b.colors);
}

// The bytes of a light state, to look it up by.
static std::string GetKey(const TriangleLook& look)
{
    std::string key(colornumber * sizeof(float) + 1, look.front ? 'f' : 'b');
    std::memcpy(key.data(), look.colors, colornumber * sizeof(float));
    return key;
}

Looks GetLooks(const ImageTriangle* hszog, int number)
{
    std::unordered_map<std::string, int> known;
    Looks looks = {std::vector<int>(std::size_t(number), 0), 0};
    TriangleLook last = {};
    int lastnumber = 0;
    for (int i = 0; i < number; i++) {
        const TriangleLook look = GetLook(hszog[i]);
        if (i == 0 || !ShareLightState(look, last)) { // of another side, mostly
            lastnumber = known.try_emplace(GetKey(look), int(known.size())).first->second;
        }
        looks.oftriangle[std::size_t(i)] = lastnumber;
        last = look;
    }
    looks.number = int(known.size());
    return looks;
}

// A row of equal places in view coordinates; `span` is negative when they count downwards.
struct Places {
    double start, span;
    int number;
};

struct Range {
    int first, last; // none when first is greater
};

// The places over which a triangle reaches along an axis, and those less than `margin` places away.
static Range GetRange(const ImageTriangle& triangle, int axis, const Places& places, double margin)
{
    double low = places.number;
    double high = -1;
    for (const float* corner : triangle.vertices) {
        const double place = (double(corner[axis]) - places.start) * (1 / places.span);
        low = std::min(low, place - margin);
        high = std::max(high, place + margin);
    }
    return {low < 0 ? 0 : int(low), high < 0 ? -1 : int(std::min(high, places.number - 1.0))};
}

static unsigned int GetTileSet(const ImageTriangle& triangle)
{
    // The passes move the image by less than a pixel; another one is for the rounding on its way.
    constexpr double margin = 2.0 / tilesize;
    constexpr Places across = {-tilespan * tilecolumns / 2, tilespan, tilecolumns};
    constexpr Places down = {tilespan * tilerows / 2, -tilespan, tilerows};
    const Range columns = GetRange(triangle, 0, across, margin);
    const Range rows = GetRange(triangle, 1, down, margin);
    unsigned int set = 0;
    for (int row = rows.first; row <= rows.last; row++) {
        for (int column = columns.first; column <= columns.last; column++) {
            set |= 1U << (row * tilecolumns + column);
        }
    }
    return set;
}

std::vector<unsigned int> GetTileSets(const ImageTriangle* hszog, int number)
{
    std::vector<unsigned int> sets;
    sets.reserve(std::size_t(number));
    for (int i = 0; i < number; i++) {
        sets.push_back(GetTileSet(hszog[i]));
    }
    return sets;
}

TileOrders GetTileOrders(const std::vector<unsigned int>& tilesets, const int* zindex)
{
    TileOrders orders;
    for (std::size_t i = 0; i < tilesets.size(); i++) {
        unsigned int rest = tilesets[std::size_t(zindex[i])];
        for (; rest != 0; rest &= rest - 1) { // takes the lowest bit away
            orders[std::size_t(std::countr_zero(rest))].push_back(zindex[i]);
        }
    }
    return orders;
}

// A tile is cut into cells.
static constexpr int cellnumber = 64; // in each direction
static constexpr double cellspan = tilespan / cellnumber;

struct Reach {
    Range columns, rows;

    int CountCells() const
    {
        return (columns.last - columns.first + 1) * (rows.last - rows.first + 1);
    }
};

// What lies beside the tile may be moved into it by a pass: it counts to the cells of the border.
static Range GetCells(const ImageTriangle& triangle, int axis, double start, double span)
{
    const Range range = GetRange(triangle, axis, {start, span, cellnumber}, 0);
    return {std::min(range.first, cellnumber - 1), std::max(range.last, 0)};
}

// The cells of a tile over which a triangle reaches.
static Reach GetReach(const ImageTriangle& triangle, int tile)
{
    const int column = tile % tilecolumns;
    const int row = tile / tilecolumns;
    return {GetCells(triangle, 0, tilespan * (column - tilecolumns / 2.0), cellspan),
            GetCells(triangle, 1, tilespan * (tilerows / 2.0 - row), -cellspan)};
}

// To fill eight cells costs as much as to draw a small triangle.
static int GetCost(const Reach& reach)
{
    return 1 + reach.CountCells() / 8;
}

int CountAffordable(const std::vector<int>& order, int tile, const ImageTriangle* hszog,
                    const Looks& looks)
{
    constexpr int lookcost = 20; // of another light state
    std::size_t number = 0;
    int look = -1;
    for (int cost = 0; number < order.size() && cost < stepcost; number++) {
        const int last = look;
        look = looks.oftriangle[std::size_t(order[number])];
        cost += GetCost(GetReach(hszog[order[number]], tile)) + (look == last ? 0 : lookcost);
    }
    return int(number);
}

// The cells of a tile, each with the queue of the triangles that reach into it. A triangle can be
// drawn when it is the first in all its queues: triangles that share no cell share no pixel,
// wherever a pass moves them to, for it moves them alike. Triangles are named by their place in the
// order.
class TileQueues
{
public:
    TileQueues(const std::vector<int>& order, int tile, const ImageTriangle* hszog)
    {
        reaches.reserve(order.size());
        for (const int index : order) {
            reaches.push_back(GetReach(hszog[index], tile));
            cost += GetCost(reaches.back());
        }
        MakeQueues();
    }

    std::int64_t GetTotalCost() const
    {
        return cost;
    }

    // Calls `ready` for every triangle that waits for no other.
    template <class Ready> void FindFirst(Ready ready)
    {
        waits.assign(reaches.size(), 0);
        for (std::size_t k = 0; k < reaches.size(); k++) {
            ForCells(k, [&](Queue& queue) { waits[k] += entries[queue.next] == k ? 0 : 1; });
            if (waits[k] == 0) {
                ready(k);
            }
        }
    }

    // Takes a triangle out of its queues; `ready` is called for those that waited for it alone.
    template <class Ready> void Take(std::size_t k, Ready ready)
    {
        ForCells(k, [&](Queue& queue) {
            queue.next++;
            if (queue.next < queue.end && --waits[entries[queue.next]] == 0) {
                ready(entries[queue.next]);
            }
        });
    }

private:
    struct Queue {
        std::size_t next, end; // of its run of `entries`; what lies before `next` has been taken
    };

    template <class Work> void ForCells(std::size_t k, Work work)
    {
        const Reach& reach = reaches[k];
        for (int row = reach.rows.first; row <= reach.rows.last; row++) {
            for (int column = reach.columns.first; column <= reach.columns.last; column++) {
                work(queues[std::size_t(row * cellnumber + column)]);
            }
        }
    }

    // Counts what the queues hold, lays out their runs one behind the other, and fills them.
    void MakeQueues()
    {
        queues.assign(std::size_t(cellnumber) * cellnumber, {0, 0});
        for (std::size_t k = 0; k < reaches.size(); k++) {
            ForCells(k, [](Queue& queue) { queue.end++; });
        }
        std::size_t start = 0;
        for (Queue& queue : queues) {
            queue.next = start;
            start += queue.end;
            queue.end = queue.next;
        }
        entries.resize(start);
        for (std::size_t k = 0; k < reaches.size(); k++) {
            ForCells(k, [&](Queue& queue) { entries[queue.end++] = k; });
        }
    }

    std::vector<Reach> reaches;       // the cells of each triangle
    std::int64_t cost = 0;            // of all of them
    std::vector<int> waits;           // for each triangle the queues in which it is not the first
    std::vector<Queue> queues;        // of the cells, row by row
    std::vector<std::size_t> entries; // the runs of all queues
};

// Draws all that can be drawn in one look, before the look that has waited longest comes next.
std::int64_t GatherLooks(std::vector<int>& order, int tile, const ImageTriangle* hszog,
                         const Looks& looks)
{
    TileQueues queues(order, tile, hszog);
    std::vector<std::vector<std::size_t>> drawable(std::size_t(looks.number)); // of each look
    std::deque<std::size_t> waiting; // the looks with drawable triangles
    const auto ready = [&](std::size_t k) {
        const auto look = std::size_t(looks.oftriangle[std::size_t(order[k])]);
        if (drawable[look].empty()) {
            waiting.push_back(look);
        }
        drawable[look].push_back(k);
    };
    std::vector<int> gathered;
    gathered.reserve(order.size());
    queues.FindFirst(ready);
    while (!waiting.empty()) {
        std::vector<std::size_t>& triangles = drawable[waiting.front()];
        for (std::size_t i = 0; i < triangles.size(); i++) { // it grows meanwhile
            gathered.push_back(order[triangles[i]]);
            queues.Take(triangles[i], ready);
        }
        triangles.clear();
        waiting.pop_front();
    }
    order = std::move(gathered);
    return queues.GetTotalCost();
}

// Deliberate: no deeper than it has to be. A depth buffer of 24 bits that is as deep as the
// greatest tells surfaces apart only when they lie more than two pixels from each other.
double GetHalfDepth(const std::vector<unsigned int>& tilesets, const ImageTriangle* hszog)
{
    constexpr double least = 2; // as deep as the view is drawn
    constexpr double greatest = 20000;
    double depth = least;
    for (std::size_t i = 0; i < tilesets.size(); i++) {
        for (const float* corner : hszog[i].vertices) {
            depth = tilesets[i] == 0 ? depth : std::max(depth, std::abs(double(corner[2])));
        }
    }
    return std::min(1.01 * depth, greatest);
}

} // namespace korvane
