#include "export/imageorder.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <deque>
#include <string>
#include <unordered_map>

namespace korvane
{

// The passes move the image by less than a pixel; another one is for the rounding on its way.
static constexpr double margin = 2 * tilespan / tilesize;

TriangleLook GetLook(const ImageTriangle& triangle)
{
    const float* colors = triangle.colors;
    const bool front = triangle.front != 0;
    const bool alike = std::equal(colors + FRONT_LIGHT, colors + BACK_LIGHT, colors + BACK_LIGHT);
    return {colors, front || alike, !front && alike ? -1.0F : 1.0F};
}

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

std::vector<int> GetLookNumbers(const ImageTriangle* hszog, int number)
{
    std::unordered_map<std::string, int> known;
    std::vector<int> numbers(std::size_t(number), 0);
    TriangleLook last = {};
    for (int i = 0; i < number; i++) {
        const TriangleLook look = GetLook(hszog[i]);
        if (i > 0 && ShareLightState(look, last)) { // of the same side, mostly
            numbers[std::size_t(i)] = numbers[std::size_t(i - 1)];
        } else {
            numbers[std::size_t(i)] =
                known.try_emplace(GetKey(look), int(known.size())).first->second;
        }
        last = look;
    }
    return numbers;
}

// A row of equal places in view coordinates; `direction` is -1 when they count downwards.
struct Places {
    double start, direction, span;
    int number;
};

struct Range {
    int first, last; // none when first is greater
};

// The places over which a triangle reaches along an axis.
static Range GetRange(const ImageTriangle& triangle, int axis, const Places& places)
{
    double low = places.number;
    double high = -1;
    for (const float* corner : triangle.vertices) {
        const double distance = places.direction * (double(corner[axis]) - places.start);
        low = std::min(low, (distance - margin) / places.span);
        high = std::max(high, (distance + margin) / places.span);
    }
    return {low < 0 ? 0 : int(low), high < 0 ? -1 : int(std::min(high, places.number - 1.0))};
}

TileOrders GetTileOrders(const ImageTriangle* hszog, const int* zindex, int number)
{
    static constexpr Places across = {-tilespan * tilecolumns / 2, 1, tilespan, tilecolumns};
    static constexpr Places down = {tilespan * tilerows / 2, -1, tilespan, tilerows};
    TileOrders orders;
    for (int i = 0; i < number; i++) {
        const Range columns = GetRange(hszog[zindex[i]], 0, across);
        const Range rows = GetRange(hszog[zindex[i]], 1, down);
        for (int row = rows.first; row <= rows.last; row++) {
            for (int column = columns.first; column <= columns.last; column++) {
                orders[std::size_t(row * tilecolumns + column)].push_back(zindex[i]);
            }
        }
    }
    return orders;
}

// A tile in cells, each with the queue of the triangles that may fall into it. A triangle can be
// drawn when it is the first in all its queues: triangles that share no cell share no pixel.
class TileQueues
{
public:
    TileQueues(const std::vector<int>& order, int tile, const ImageTriangle* hszog)
    {
        const Places across = {tilespan * (tile % tilecolumns - tilecolumns / 2.0), 1, cellspan,
                               cellnumber};
        const Places down = {tilespan * (tilerows / 2.0 - tile / tilecolumns), -1, cellspan,
                             cellnumber};
        for (const int index : order) {
            reaches.push_back({GetRange(hszog[index], 0, across), GetRange(hszog[index], 1, down)});
        }
        FillQueues();
    }

    // Calls `ready` with the place in the order of every triangle that waits for no other.
    template <class Ready> void FindFirst(Ready ready)
    {
        waits.assign(reaches.size(), 0);
        for (std::size_t k = 0; k < reaches.size(); k++) {
            ForCells(int(k), [&](Queue& queue) {
                waits[k] += queue.entries[queue.next] == int(k) ? 0 : 1;
            });
            if (waits[k] == 0) {
                ready(int(k));
            }
        }
    }

    // Takes a triangle out of its queues; `ready` is called for those that waited for it alone.
    template <class Ready> void Take(int k, Ready ready)
    {
        ForCells(k, [&](Queue& queue) {
            queue.next++;
            if (queue.next < queue.entries.size()) {
                const int next = queue.entries[queue.next];
                if (--waits[std::size_t(next)] == 0) {
                    ready(next);
                }
            }
        });
    }

private:
    static constexpr int cellnumber = 32; // in each direction
    static constexpr double cellspan = tilespan / cellnumber;

    struct Reach {
        Range columns, rows;
    };
    struct Queue {
        std::vector<int> entries; // places in the order
        std::size_t next;         // the first entry that has not been taken
    };

    template <class Work> void ForCells(int k, Work work)
    {
        const Reach& reach = reaches[std::size_t(k)];
        for (int row = reach.rows.first; row <= reach.rows.last; row++) {
            for (int column = reach.columns.first; column <= reach.columns.last; column++) {
                work(queues[std::size_t(row * cellnumber + column)]);
            }
        }
    }

    void FillQueues()
    {
        queues.resize(std::size_t(cellnumber) * cellnumber);
        for (std::size_t k = 0; k < reaches.size(); k++) {
            ForCells(int(k), [k](Queue& queue) { queue.entries.push_back(int(k)); });
        }
    }

    std::vector<Reach> reaches; // the cells of each triangle
    std::vector<int> waits;     // for each triangle the queues in which it is not the first
    std::vector<Queue> queues;
};

// Draws all that can be drawn in one look, before the look that has waited longest comes next.
void GatherLooks(std::vector<int>& order, int tile, const ImageTriangle* hszog,
                 const std::vector<int>& looknumbers)
{
    TileQueues queues(order, tile, hszog);
    std::unordered_map<int, std::vector<int>> drawable; // of each look
    std::deque<int> looks;                              // those with drawable triangles
    const auto ready = [&](int k) {
        const int look = looknumbers[std::size_t(order[std::size_t(k)])];
        std::vector<int>& triangles = drawable[look];
        if (triangles.empty()) {
            looks.push_back(look);
        }
        triangles.push_back(k);
    };
    std::vector<int> gathered;
    queues.FindFirst(ready);
    while (!looks.empty()) {
        std::vector<int>& triangles = drawable[looks.front()];
        for (std::size_t i = 0; i < triangles.size(); i++) { // it grows meanwhile
            gathered.push_back(order[std::size_t(triangles[i])]);
            queues.Take(triangles[i], ready);
        }
        triangles.clear();
        looks.pop_front();
    }
    order = std::move(gathered);
}

// Deliberate: no deeper than it has to be. A depth buffer of 24 bits that is as deep as the
// greatest tells surfaces apart only when they lie more than two pixels from each other.
double GetHalfDepth(const TileOrders& orders, const ImageTriangle* hszog)
{
    constexpr double least = 2; // as deep as the view is drawn
    constexpr double greatest = 20000;
    double depth = least;
    for (const std::vector<int>& order : orders) {
        for (const int index : order) {
            for (const float* corner : hszog[index].vertices) {
                depth = std::max(depth, std::abs(double(corner[2])));
            }
        }
    }
    return std::min(1.01 * depth, greatest);
}

} // namespace korvane
