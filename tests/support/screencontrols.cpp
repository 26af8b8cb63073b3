#include "tests/support/screencontrols.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

// The toolkit's measures, in pixels.
static constexpr int knoblength = 31;
static constexpr int troughheight = 14;
static constexpr int boxsize = 11; // inside the frame of a check box
static constexpr int tolerance = 2;

// A rectangle of one colour, in pixels of the view.
struct Patch {
    int left, top, width, height;
    Color color;
};

// Goes on with a patch that ends in the row above, or begins one.
static void AddRun(std::vector<Patch>& patches, const Patch& run)
{
    const auto above = std::ranges::find_if(patches, [&](const Patch& patch) {
        return patch.top + patch.height == run.top && patch.left == run.left &&
               patch.width == run.width && patch.color == run.color;
    });
    if (above != patches.end()) {
        above->height++;
    } else {
        patches.push_back(run);
    }
}

// Rectangles of the dialog, other than its ground, about as high as told and at least as wide, from
// top to bottom and from left to right.
static std::vector<Patch> FindPatches(const Journey& journey, int leastwidth, int height)
{
    const Place front = journey.GetFront();
    const Screenshot picture = journey.LookAt(front.left, front.top, front.width, front.height);
    const Color ground = picture.At(0, picture.height - 1);
    std::vector<Patch> patches;
    for (int y = 0; y < picture.height; y++) {
        int left = 0;
        for (int x = 1; x <= picture.width; x++) {
            const Color& color = picture.At(left, y);
            if (x < picture.width && picture.At(x, y) == color) {
                continue;
            }
            if (x - left >= leastwidth && color != ground) {
                AddRun(patches, {front.left + left, front.top + y, x - left, 1, color});
            }
            left = x;
        }
    }
    std::erase_if(patches, [=](const Patch& patch) {
        return patch.height < height - tolerance || patch.height > height + tolerance;
    });
    return patches;
}

struct ScreenSlider {
    int left, right; // the ends of the trough
    int knob;        // the middle of the knob
    int y;
};

// Of a trough is seen what the knob leaves free: a patch on its left, and maybe one on its right.
static std::vector<ScreenSlider> FindSliders(const Journey& journey)
{
    std::vector<ScreenSlider> sliders;
    int top = 0;
    for (const Patch& patch : FindPatches(journey, knoblength, troughheight)) {
        const int end = patch.left + patch.width;
        if (!sliders.empty() && patch.top == top) {
            sliders.back().right = end;
        } else {
            sliders.push_back(
                {patch.left, end + knoblength, end + knoblength / 2, patch.top + patch.height / 2});
        }
        top = patch.top;
    }
    return sliders;
}

void DragSlider(Journey& journey, int number, int slider, double part)
{
    std::vector<ScreenSlider> sliders;
    ASSERT_TRUE(WaitFor([&] {
        sliders = FindSliders(journey);
        return int(sliders.size()) == number;
    })) << sliders.size()
        << " sliders";
    const auto [left, right, knob, y] = sliders[std::size_t(slider)];
    const int way = right - left - knoblength;
    journey.MoveTo(knob, y);
    journey.Press(1);
    journey.MoveTo(left + knoblength / 2 + int(part * way + 0.5), y);
    journey.Release(1);
}

std::vector<ScreenPlace> FindEmptyCheckBoxes(const Journey& journey)
{
    std::vector<ScreenPlace> places;
    for (const Patch& patch : FindPatches(journey, boxsize - tolerance, boxsize)) {
        if (patch.width <= boxsize + tolerance && patch.color == Color{255, 255, 255}) {
            places.push_back({patch.left + patch.width / 2, patch.top + patch.height / 2});
        }
    }
    return places;
}

} // namespace korvane::testing
