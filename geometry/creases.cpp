#include "geometry/creases.h"

#include "scene/model.h"

namespace korvane
{

// The marked neighbours that a point has along the stripes that start or end at it.
struct EndNeighbours {
    int found;                 // how many; more than two make a corner, so counting stops at three
    std::array<int, 2> points; // the first two, in stripe order
};

static void SetFlag(Creases& creases, int point, CreaseFlag flag)
{
    creases.flags[point] = static_cast<unsigned char>(creases.flags[point] | flag);
}

static bool IsVertex(const Creases& creases, int point)
{
    return (creases.flags[point] & FLAG_VERTEX) != 0;
}

static void SetCrease(Creases& creases, int point, int neighbour1, int neighbour2)
{
    SetFlag(creases, point, FLAG_CREASE);
    creases.neighbours[point] = {neighbour1, neighbour2};
}

// The closed border of a one-sided shape, its first point repeated at the end; null for other
// shapes.
static const Stripe* GetBorder(const Shape* shape)
{
    return shape->sidenumber == 1 && shape->stripenumber > 0 ? &shape->stripes[0] : nullptr;
}

static void SetBorderCrease(Creases& creases, const Stripe& border)
{
    const int last = border.pointnumber - 1;
    for (int k = 1; k < last; k++) {
        SetCrease(creases, border.points[k], border.points[k - 1], border.points[k + 1]);
    }
    SetCrease(creases, border.points[0], border.points[last - 1], border.points[1]);
}

static void AddEndNeighbour(EndNeighbours& end, const Creases& creases, int neighbour)
{
    if (!IsVertex(creases, neighbour) || end.found == 3) {
        return;
    }
    if (end.found < 2) {
        end.points[end.found] = neighbour;
    }
    end.found++;
}

// For every point, what the stripes that start or end there find; a closed stripe finds both its
// ways.
static std::vector<EndNeighbours> GetEndNeighbours(const Creases& creases, const Shape* shape)
{
    std::vector<EndNeighbours> ends(creases.flags.size());
    for (int i = 0; i < shape->stripenumber; i++) {
        const int* points = shape->stripes[i].points;
        const int last = shape->stripes[i].pointnumber - 1;
        AddEndNeighbour(ends[points[0]], creases, points[1]);
        AddEndNeighbour(ends[points[last]], creases, points[last - 1]);
    }
    return ends;
}

// Along a stripe a vertex between two vertexes is a crease point; a lone or last one is a corner.
static void ClassifyInside(Creases& creases, const Stripe& stripe)
{
    for (int k = 1; k < stripe.pointnumber - 1; k++) {
        const int before = stripe.points[k - 1];
        const int after = stripe.points[k + 1];
        if (!IsVertex(creases, stripe.points[k])) {
            continue;
        }
        if (IsVertex(creases, before) && IsVertex(creases, after)) {
            SetCrease(creases, stripe.points[k], before, after);
        } else {
            SetFlag(creases, stripe.points[k], FLAG_CORNER);
        }
    }
}

static void ClassifyEnd(Creases& creases, int point, const EndNeighbours& end)
{
    if (end.found == 2) {
        SetCrease(creases, point, end.points[0], end.points[1]);
    } else {
        SetFlag(creases, point, FLAG_CORNER);
    }
}

static void ClassifyStripes(Creases& creases, const Shape* shape)
{
    const std::vector<EndNeighbours> ends = GetEndNeighbours(creases, shape);
    const bool onesided = shape->sidenumber == 1;
    for (int i = 0; i < shape->stripenumber; i++) {
        const Stripe& stripe = shape->stripes[i];
        ClassifyInside(creases, stripe);
        // The border crease has flagged every point of a one-sided shape: its first is judged all
        // the same.
        const int first = stripe.points[0];
        if (IsVertex(creases, first) && (onesided || creases.flags[first] == FLAG_VERTEX)) {
            ClassifyEnd(creases, first, ends[first]);
        }
        const int last = stripe.points[stripe.pointnumber - 1];
        if (creases.flags[last] == FLAG_VERTEX) {
            ClassifyEnd(creases, last, ends[last]);
        }
    }
}

Creases GetCreases(const Shape* shape)
{
    Creases creases;
    creases.flags.resize(shape->pointnumber);
    creases.neighbours.resize(shape->pointnumber);
    for (int i = 0; i < shape->vertexnumber; i++) {
        SetFlag(creases, shape->vertexes[i], FLAG_VERTEX);
    }
    if (const Stripe* border = GetBorder(shape)) {
        SetBorderCrease(creases, *border);
    }
    if (shape->vertexnumber > 0) {
        ClassifyStripes(creases, shape);
    }
    return creases;
}

void ClearBorderCrease(Creases& creases, const Shape* shape)
{
    const Stripe* border = GetBorder(shape);
    if (border == nullptr) {
        return;
    }
    for (int k = 0; k < border->pointnumber; k++) {
        unsigned char& flags = creases.flags[border->points[k]];
        flags = static_cast<unsigned char>(flags & ~FLAG_CREASE);
    }
}

} // namespace korvane
