// An image made through the dialogs, as a user makes it.
#include "tests/support/journey.h"
#include "tests/support/pngfile.h"
#include "tests/support/scenetexts.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace korvane::testing;

// The button stands in the toolbar, to the left of the view and above it.
static constexpr int buttonx = -98;
static constexpr int buttony = -30;

class CreatedImage : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const std::string scene = journey.GetFolder() + "/box.mrt";
        std::ofstream(scene) << BoxScene();
        ASSERT_TRUE(journey.Start(scene));
        ASSERT_TRUE(WaitFor([&] { return journey.Look().Count(IsYellow) > 5000; }));
    }

    static bool IsYellow(const Color& color)
    {
        return color.red > 150 && color.green > 150 && color.blue < 50;
    }

    // From the button to the finished image in its file.
    void MakeImage(const std::string& path)
    {
        journey.Click(buttonx, buttony);
        ASSERT_TRUE(journey.WaitForFront("Image preview"));
        journey.Key("alt+s");
        ASSERT_TRUE(journey.WaitForFront("Save image"));
        journey.Key("ctrl+a");
        journey.Type(path);
        journey.Key("alt+s");
        ASSERT_TRUE(journey.WaitForFront("Vintra"));
        ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(path); }));
    }

    Journey journey;
};

static Color GetPixel(const std::string& path, int x, int y)
{
    GdkPixbuf* picture = gdk_pixbuf_new_from_file(path.c_str(), nullptr);
    if (picture == nullptr) {
        return {-1, -1, -1};
    }
    const int rowstride = gdk_pixbuf_get_rowstride(picture);
    const unsigned char* pixel = gdk_pixbuf_read_pixels(picture) + y * rowstride + x * 4;
    const Color color = {pixel[0], pixel[1], pixel[2]};
    g_object_unref(picture);
    return color;
}

TEST_F(CreatedImage, ShowsTheBoxOfTheScene)
{
    const std::string path = journey.GetFolder() + "/image.png";
    MakeImage(path);
    const PngLook look = ReadPng(path);
    EXPECT_TRUE(look.whole);
    EXPECT_EQ(look.width, 1280U);
    EXPECT_EQ(look.height, 1024U);
    EXPECT_EQ(look.colortype, 6);
    // the middle of the box, at (0.2, 0.15) in the view; the view begins at (-0.625, 0.5)
    const Color middle = GetPixel(path, 845, 358);
    EXPECT_TRUE(IsYellow(middle)) << middle.red << " " << middle.green << " " << middle.blue;
    EXPECT_FALSE(IsYellow(GetPixel(path, 435, 358))); // on the other side
    EXPECT_FALSE(IsYellow(GetPixel(path, 845, 665))); // below
}

TEST_F(CreatedImage, CanBeGivenUpAndMadeAgain)
{
    const Screenshot before = journey.LookWhenStill();
    journey.Click(buttonx, buttony);
    ASSERT_TRUE(journey.WaitForFront("Progress"));
    journey.Key("Escape");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    journey.MoveTo(buttonx, buttony);
    EXPECT_TRUE(WaitFor([&] { return journey.Look().CountDifferences(before) == 0; }));
    MakeImage(journey.GetFolder() + "/again.png");
    EXPECT_TRUE(ReadPng(journey.GetFolder() + "/again.png").whole);
    EXPECT_TRUE(journey.IsRunning());
}

TEST_F(CreatedImage, IsFinishedWhileTheWindowIsMinimized)
{
    journey.Click(buttonx, buttony);
    ASSERT_TRUE(journey.WaitForFront("Progress"));
    journey.Minimize();
    ASSERT_TRUE(WaitFor([&] { return journey.IsViewHidden(); }));
    ASSERT_TRUE(journey.WaitForFront("Image preview"));
    EXPECT_TRUE(journey.IsViewHidden());
    journey.Key("Escape");
    journey.Restore();
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(journey.IsRunning());
}
