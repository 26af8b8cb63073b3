#include "export/imagegathering.h"

#include <algorithm>
#include <deque>

namespace korvane
{

// To fill eight cells costs as much as to draw a small triangle.
static int GetCost(const TileTriangle& triangle)
{
    return 1 + CountCells(triangle.reach) / 8;
}

// So many comparisons a triangle costs in a queue at most.
static constexpr std::size_t largestgroup = 8;

// The cells of a tile, each with the queue of the triangles that reach into it, in their sequence.
// A queue is a row of groups, in which all triangles lie apart from each other. A triangle can be
// drawn when it is in the first group of all its queues. It is named by its place in the sequence.
class TileQueues
{
public:
    explicit TileQueues(const std::vector<TileTriangle>& sequence);

    // Calls `ready` for every triangle that waits for no other.
    template <class Ready> void FindFirst(Ready ready)
    {
        for (Queue& queue : queues) {
            OpenGroup(queue, [](std::size_t) {});
        }
        for (std::size_t k = 0; k < sequence.size(); k++) {
            if (waits[k] == 0) {
                ready(k);
            }
        }
    }

    // Takes a triangle out of its queues; `ready` is called for those that waited for it alone.
    template <class Ready> void Take(std::size_t k, Ready ready)
    {
        ForCells(queues, sequence[k].reach, [&](Queue& queue) {
            queue.open--;
            if (queue.open == 0) {
                OpenGroup(queue, ready);
            }
        });
    }

private:
    struct Entry {
        std::uint32_t k;
        bool startsgroup;
    };
    struct Queue {
        std::size_t next, end; // of its run of `entries`, without the first group
        std::size_t lastgroup; // the entry with which its last group starts
        int open;              // triangles of the first group that have not been taken
        int look;              // of the last triangle
        bool manylooks;
    };

    // Makes the next group the first, if there is one.
    template <class Ready> void OpenGroup(Queue& queue, Ready ready)
    {
        const std::size_t start = queue.next;
        while (queue.next < queue.end &&
               (queue.next == start || !entries[queue.next].startsgroup)) {
            const std::size_t k = entries[queue.next].k;
            queue.next++;
            queue.open++;
            waits[k]--;
            if (waits[k] == 0) {
                ready(k);
            }
        }
    }

    void CountEntries();
    void LayOutQueues();
    void FillQueues();
    bool JoinsLastGroup(const Queue& queue, const TileTriangle& triangle) const;

    const std::vector<TileTriangle>& sequence;
    std::vector<int> waits;    // for each triangle the queues in which it is not in the first group
    std::vector<Queue> queues; // of the cells, row by row
    std::vector<Entry> entries; // the runs of all queues, one behind the other
};

TileQueues::TileQueues(const std::vector<TileTriangle>& triangles)
    : sequence(triangles), queues(cellnumber)
{
    CountEntries();
    LayOutQueues();
    FillQueues();
}

void TileQueues::CountEntries()
{
    waits.reserve(sequence.size());
    for (const TileTriangle& triangle : sequence) {
        waits.push_back(CountCells(triangle.reach));
        ForCells(queues, triangle.reach, [&](Queue& queue) {
            queue.manylooks = queue.manylooks || (queue.end != 0 && queue.look != triangle.look);
            queue.look = triangle.look;
            queue.end++;
        });
    }
}

void TileQueues::LayOutQueues()
{
    std::size_t start = 0;
    for (Queue& queue : queues) {
        queue.next = start;
        queue.lastgroup = start;
        start += queue.end;
        queue.end = queue.next;
    }
    entries.resize(start);
}

void TileQueues::FillQueues()
{
    constexpr int largestjoining = 64; // cells; to compare a larger one in all of its takes long
    for (std::size_t k = 0; k < sequence.size(); k++) {
        const bool small = CountCells(sequence[k].reach) <= largestjoining;
        ForCells(queues, sequence[k].reach, [&](Queue& queue) {
            const bool joins = small && JoinsLastGroup(queue, sequence[k]);
            queue.lastgroup = joins ? queue.lastgroup : queue.end;
            entries[queue.end] = {std::uint32_t(k), !joins};
            queue.end++;
        });
    }
}

// Where all have one look, they need not be drawn in another order.
bool TileQueues::JoinsLastGroup(const Queue& queue, const TileTriangle& triangle) const
{
    if (!queue.manylooks || queue.end - queue.lastgroup == largestgroup) {
        return false;
    }
    for (std::size_t i = queue.lastgroup; i < queue.end; i++) {
        if (!AreApart(sequence[entries[i].k], triangle)) {
            return false;
        }
    }
    return true;
}

using Arranged = std::vector<const TileTriangle*>;

// Draws all that can be drawn in one look, before the look that has waited longest comes next.
static Arranged Arrange(const std::vector<TileTriangle>& sequence, std::size_t looknumber)
{
    TileQueues queues(sequence);
    std::vector<std::vector<std::size_t>> drawable(looknumber); // of each look
    std::deque<std::size_t> waiting;                            // the looks with drawable triangles
    const auto ready = [&](std::size_t k) {
        const auto look = std::size_t(sequence[k].look);
        if (drawable[look].empty()) {
            waiting.push_back(look);
        }
        drawable[look].push_back(k);
    };
    Arranged arranged;
    arranged.reserve(sequence.size());
    queues.FindFirst(ready);
    while (!waiting.empty()) {
        std::vector<std::size_t>& next = drawable[waiting.front()];
        for (std::size_t i = 0; i < next.size(); i++) { // it grows meanwhile
            arranged.push_back(&sequence[next[i]]);
            queues.Take(next[i], ready);
        }
        next.clear();
        waiting.pop_front();
    }
    return arranged;
}

std::int64_t GatherLooks(const std::vector<TileTriangle>& sequence, std::size_t looknumber,
                         bool nearestfirst, std::vector<TilePart>& parts)
{
    constexpr int lookcost = 20; // of another light state
    std::int64_t total = 0;
    int cost = stepcost; // of the last part
    int look = -1;
    for (const TileTriangle* triangle : Arrange(sequence, looknumber)) {
        if (cost >= stepcost) {
            parts.push_back({{}, nearestfirst});
            cost = 0;
            look = -1;
        }
        parts.back().triangles.push_back(triangle->index);
        cost += GetCost(*triangle) + (triangle->look == look ? 0 : lookcost);
        look = triangle->look;
        total += GetCost(*triangle);
    }
    return total;
}

} // namespace korvane
