// A small window with a drawing area like that of the main window, and pictures read back from it.
#pragma once

#include "tests/support/widgets.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace korvane::testing
{

struct Pixel {
    int red, green, blue; // 0..255
};

// All three components differ by at most 1, the rounding of a driver.
bool operator==(const Pixel& a, const Pixel& b);
std::ostream& operator<<(std::ostream& stream, const Pixel& pixel);

// The pixel of a colour with components 0..1.
Pixel MakePixel(double red, double green, double blue);

constexpr Pixel cleared = {77, 77, 77}; // the background, 0.3 of 255

struct Picture {
    int width, height;
    std::vector<unsigned char> pixels; // red, green, blue, alpha; rows from bottom to top

    Pixel At(int x, int y) const;             // from the left, from the bottom
    Pixel AtView(double x, double y) const;   // the pixel in which a point in view coordinates lies
    void Save(const std::string& name) const; // as a PNG file, to be looked at
};

// Opens the window and waits for its first frame. Its handlers are InitGl, ConfigGl and ReDraw; the
// texture of the point markers is replaced by plain white.
class GlWindow
{
public:
    GlWindow(int areawidth, int areaheight);
    ~GlWindow();
    GlWindow(const GlWindow&) = delete;
    GlWindow& operator=(const GlWindow&) = delete;

    GtkWidget* GetArea() const
    {
        return area;
    }

    // Runs something with the window's context current.
    void Run(const std::function<void()>& work) const;

    // What `draw` paints on a cleared frame.
    Picture Draw(const std::function<void()>& draw) const;

    Picture DrawScene() const;

    // The same with a red sheet over the whole view, drawn afterwards at a depth: what stays
    // visible lies nearer than that.
    Picture DrawAndCover(const std::function<void()>& draw, float depth) const;

    // What the window shows, after the pending events are handled.
    Picture ReadWindow() const;

private:
    GtkWidget* window;
    GtkWidget* area;
};

// An empty scene in the start view: no shape, no construction, nothing under the pointer, every
// fade at rest, the program path as the driver has it.
void StartEmptyView();

// Projects the scene for the current view and rebuilds the active elements.
void ProjectScene();

// The fixture of tests that draw into a window of their own, each in an empty view.
class GlWindowTest : public ::testing::Test
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

    void Open(int w, int h) // in the place of the window that is there
    {
        window.reset();
        window = std::make_unique<GlWindow>(w, h);
    }

    std::unique_ptr<GlWindow> window = std::make_unique<GlWindow>(400, 400);
};

void ExpectEmpty(const Picture& picture); // all of it cleared

} // namespace korvane::testing
