// "Create image..." in a test: the steps run by hand, one by one, and the finished image.
#pragma once

#include "tests/support/glwindow.h"
#include "tests/support/shapes.h"

#include <functional>
#include <vector>

namespace korvane::testing
{

struct Image {
    std::vector<unsigned char> pixels; // as in imagebuffer; empty when there is none

    Pixel At(int x, int y) const; // from the left, from the top
    int AlphaAt(int x, int y) const;
    bool operator==(const Image&) const = default;
};

// Runs the command. `step` is called until the image is finished, and has to run one step of it;
// the finished image is shown to `preview`, which answers the preview dialog.
void RunCreateImage(const std::function<void()>& step,
                    const std::function<void(GtkDialog*)>& preview);

Image CopyImage(); // of imagebuffer

// The image of the scene, made in this window; the preview is cancelled.
Image MakeImageIn(const GlWindow& window);

// Runs the command and cancels it after so many steps.
void CancelAfter(const GlWindow& window, int steps);

// The fixture of tests that look at images of a scene of their own.
class ImageTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyView();
    }

    void TearDown() override
    {
        StartEmptyView();
    }

    static int Add(OwnedShape shape); // to the scene, as seen; returns its index

    static void LookFromBehind(); // after half a turn about the upright axis

    Image MakeImage() const; // of the scene

    GlWindow window{300, 300};
};

} // namespace korvane::testing
