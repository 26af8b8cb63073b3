#include "export/imagetriangles.h"

#include "view/mainview.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace korvane
{

static constexpr int roundingfactor = 9; // triangles that rounding makes of one

std::int64_t EstimateTriangles()
{
    std::int64_t number = 0;
    for (int i = 0; i < shapenumber; i++) {
        if (showtable[i] == SHOW_ROUNDED) {
            number += std::int64_t(roundingfactor) * round1[i]->trianglenumber;
        } else if (showtable[i] == SHOW_PLAIN) {
            number += round1[i]->trianglenumber;
        }
    }
    return number;
}

static bool IsSeen(int visibility, bool front)
{
    return (visibility & (front ? VISIBLE_FRONT : VISIBLE_BACK)) != 0;
}

static void SetCorners(ImageTriangle& record, const Shape* copy, const Triangle& triangle)
{
    for (int i = 0; i < 3; i++) {
        std::copy_n(copy->points[triangle.points[i]], 3, record.vertices[i]);
        std::copy_n(copy->normals[triangle.normals[i]], 3, record.normals[i]);
    }
}

static int AddTrianglesOfSide(ImageTriangle* hszog, int number, const Shape* copy, const Side& side)
{
    for (int i = 0; i < side.trianglenumber; i++) {
        const int triangle = side.triangles[i];
        const bool front = copy->trianglenormals[triangle][2] > 0;
        if (!IsSeen(side.visibility, front)) {
            continue;
        }
        ImageTriangle& record = hszog[number];
        SetCorners(record, copy, copy->triangles[triangle]);
        record.front = front ? 1 : 0;
        std::copy_n(side.colors, colornumber, record.colors);
        number++;
    }
    return number;
}

int AddTrianglesOfShape(ImageTriangle* hszog, int number, const Shape* copy)
{
    for (int i = 0; i < copy->sidenumber; i++) {
        number = AddTrianglesOfSide(hszog, number, copy, copy->sides[i]);
    }
    return number;
}

void SetTriangleKeys(const ImageTriangle* hszog, int number, float* ztable, int* zindex)
{
    for (int i = 0; i < number; i++) {
        const float(*corners)[3] = hszog[i].vertices;
        ztable[i] = float(double(corners[0][2]) + corners[1][2] + corners[2][2]);
        zindex[i] = i;
    }
}

// Keys and the indices that move with them; `spare` has room for the left half of what is merged.
struct Sequence {
    float* keys;
    int* indices;

    Sequence From(int place) const
    {
        return {keys + place, indices + place};
    }
    void Take(int place, const Sequence& source, int from) const
    {
        keys[place] = source.keys[from];
        indices[place] = source.indices[from];
    }
};

static void SortByExchange(const Sequence& sequence, int count)
{
    for (int i = 0; i < count; i++) {
        for (int j = i + 1; j < count; j++) {
            if (sequence.keys[i] > sequence.keys[j]) {
                std::swap(sequence.keys[i], sequence.keys[j]);
                std::swap(sequence.indices[i], sequence.indices[j]);
            }
        }
    }
}

// The right run is merged where it stands: it is never overtaken.
static void Merge(const Sequence& sequence, int half, int count, const Sequence& spare)
{
    std::copy_n(sequence.keys, half, spare.keys);
    std::copy_n(sequence.indices, half, spare.indices);
    int left = 0;
    int right = half;
    int place = 0;
    while (left < half && right < count) {
        if (sequence.keys[right] <= spare.keys[left]) { // of equal keys the right one comes first
            sequence.Take(place++, sequence, right++);
        } else {
            sequence.Take(place++, spare, left++);
        }
    }
    while (left < half) {
        sequence.Take(place++, spare, left++);
    }
}

static void Sort(const Sequence& sequence, int count, const Sequence& spare)
{
    if (cisign == 0) {
        return;
    }
    if (count < 4) {
        SortByExchange(sequence, count);
        return;
    }
    const int half = count / 2;
    Sort(sequence, half, spare);
    Sort(sequence.From(half), count - half, spare);
    if (cisign != 0) {
        Merge(sequence, half, count, spare);
    }
}

void SetTriangleSequence(float* keys, int* indices, int count)
{
    const auto room = std::size_t(std::max(count / 2, 0));
    std::vector<float> sparekeys(room);
    std::vector<int> spareindices(room);
    Sort({keys, indices}, count, {sparekeys.data(), spareindices.data()});
}

} // namespace korvane
