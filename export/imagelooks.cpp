#include "export/imagelooks.h"

#include "view/sidelook.h"

#include <cstring>
#include <string>
#include <unordered_map>

namespace korvane
{

TriangleLook GetLook(const ImageTriangle& triangle)
{
    return {triangle.colors, triangle.front != 0 || IsBackLikeFront(triangle.colors)};
}

// Where the acuity is nearly none, the lit program may come to no number at all.
bool IsOpaque(const TriangleLook& look)
{
    constexpr float leastacuity = 0.001F;
    const float* colors = look.colors;
    return look.front ? colors[FRONT_LIGHT + 3] == 1 && colors[FRONT_SHADOW + 3] == 1 &&
                            colors[FRONT_ACUITY] >= leastacuity
                      : colors[BACK_LIGHT + 3] == 1 && colors[BACK_SHADOW + 3] == 1 &&
                            colors[BACK_ACUITY] >= leastacuity;
}

// As they are looked up, byte by byte.
static bool AreSame(const TriangleLook& a, const TriangleLook& b)
{
    return a.front == b.front && std::memcmp(a.colors, b.colors, colornumber * sizeof(float)) == 0;
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
    Looks looks;
    looks.oftriangle.reserve(std::size_t(number));
    for (int i = 0; i < number; i++) {
        const TriangleLook look = GetLook(hszog[i]);
        int last = i == 0 ? -1 : looks.oftriangle.back();
        if (i == 0 || !AreSame(look, looks.states[std::size_t(last)])) { // of another side, mostly
            const auto [place, added] = known.try_emplace(GetKey(look), int(known.size()));
            last = place->second;
            if (added) {
                looks.states.push_back(look);
            }
        }
        looks.oftriangle.push_back(last);
    }
    return looks;
}

} // namespace korvane
