#include "tests/support/paintedshapes.h"

#include <algorithm>

namespace korvane::testing
{

void Paint(Side& side, int place, const Colors& light, const Colors& shadow)
{
    std::copy(light.begin(), light.end(), side.colors + place);
    std::copy(shadow.begin(), shadow.end(), side.colors + place + 4);
}

void PaintPlain(Side& side, const Colors& color)
{
    Paint(side, FRONT_LIGHT, color, color);
    Paint(side, BACK_LIGHT, color, color);
}

OwnedShape SquareAt(float x, float y, float z)
{
    constexpr float half = 0.25F;
    return MakeFlatShape({{x - half, y - half, z},
                          {x + half, y - half, z},
                          {x + half, y + half, z},
                          {x - half, y + half, z}});
}

OwnedShape PlainSquareAt(float x, float y, float z, const Colors& color)
{
    OwnedShape shape = SquareAt(x, y, z);
    PaintPlain(shape->sides[0], color);
    return shape;
}

OwnedShape CheckeredSheet(int n)
{
    Points points;
    Outlines sides;
    for (int i = 0; i < n; i++) {
        for (int j = 0; j < n; j++) {
            const int first = int(points.size());
            for (const auto& [u, v] : {std::array{i, j}, {i + 1, j}, {i + 1, j + 1}, {i, j + 1}}) {
                points.push_back(
                    {float(u) / float(2 * n) - 0.25F, float(v) / float(2 * n) - 0.25F, 0});
            }
            std::vector<int> outline = {first, first + 1, first + 2, first + 3};
            if ((i + j) % 2 == 1) {
                std::reverse(outline.begin(), outline.end());
            }
            sides.push_back(outline);
        }
    }
    return MakeShape(points, sides);
}

} // namespace korvane::testing
