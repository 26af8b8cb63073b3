// An image made through the dialogs, as a user makes it.
#include "tests/support/journey.h"
#include "tests/support/pngfile.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace korvane::testing;

// The button stands in the toolbar, to the left of the view and above it.
static constexpr int buttonx = -98;
static constexpr int buttony = -30;

// The middle of the buttons in the dialogs, from the lower right corner.
static constexpr int lastbuttonx = -50;
static constexpr int lastbutton2x = -150; // to the left of it
static constexpr int dialogbuttony = -23;

class CreatedImage : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const std::string scene = journey.GetFolder() + "/box.mrt";
        std::ofstream(scene) << MakeClear(BoxScene());
        ASSERT_TRUE(journey.Start(scene));
        ASSERT_TRUE(WaitFor([&] { return journey.Look().Count(IsYellow) > 5000; }));
    }

    static bool IsYellow(const Color& color)
    {
        return color.red > 150 && color.green > 150 && color.blue < 50;
    }

    static std::string MakeClear(std::string scene)
    {
        const std::string opaque = " 0 1\n"; // ends a colour of the box
        while (scene.find(opaque) != std::string::npos) {
            scene.replace(scene.find(opaque), opaque.size(), " 0 0,8\n");
        }
        return scene;
    }

    // A button of the dialog in front.
    void ClickInDialog(int fromright)
    {
        const Place dialog = journey.GetFront();
        journey.Click(dialog.left + dialog.width + fromright,
                      dialog.top + dialog.height + dialogbuttony);
    }

    Screenshot LookWithoutPointer()
    {
        journey.MoveTo(3, 3);
        return journey.LookWhenStill();
    }

    // Nothing has come instead of the dialog that has gone.
    void ExpectViewAlone(const Screenshot& before)
    {
        ASSERT_TRUE(journey.WaitForFront("Vintra"));
        EXPECT_EQ(LookWithoutPointer().CountDifferences(before), 0);
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

static constexpr int imagewidth = 1280;
static constexpr int imageheight = 1024;

// A byte of the image: red, green, blue or alpha.
static int GetByte(const PngLook& image, int x, int y, int channel)
{
    return image.pixels.at(std::size_t(y * imagewidth + x) * 4 + std::size_t(channel));
}

static Color GetPixel(const PngLook& image, int x, int y)
{
    return {GetByte(image, x, y, 0), GetByte(image, x, y, 1), GetByte(image, x, y, 2)};
}

TEST_F(CreatedImage, ShowsTheBoxOfTheScene)
{
    const std::string path = journey.GetFolder() + "/image.png";
    MakeImage(path);
    const PngLook look = ReadPng(path);
    EXPECT_TRUE(look.whole);
    EXPECT_EQ(look.width, unsigned(imagewidth));
    EXPECT_EQ(look.height, unsigned(imageheight));
    EXPECT_EQ(look.colortype, 6);
    // the middle of the box, at (0.2, 0.15) in the view; the view begins at (-0.625, 0.5)
    const Color middle = GetPixel(look, 845, 358);
    EXPECT_TRUE(IsYellow(middle)) << middle.red << " " << middle.green << " " << middle.blue;
    EXPECT_NEAR(GetByte(look, 845, 358, 3), 0.8 * 0.8 * 255, 1);
    EXPECT_FALSE(IsYellow(GetPixel(look, 435, 358))); // on the other side
    EXPECT_EQ(GetByte(look, 435, 358, 3), 0);
    EXPECT_FALSE(IsYellow(GetPixel(look, 845, 665))); // below
}

// A pixel of the preview: the average of 2 x 2 pixels over squares of 16 x 16 in two greys.
static Color LayOverSquares(const PngLook& image, int x, int y)
{
    const int grey = (x / 16 + y / 16) % 2 == 0 ? 100 : 116;
    int sums[4] = {};
    for (int channel = 0; channel < 4; channel++) {
        for (const auto& [right, down] : {std::pair{0, 0}, {1, 0}, {0, 1}, {1, 1}}) {
            sums[channel] += GetByte(image, 2 * x + right, 2 * y + down, channel);
        }
    }
    const int alpha = sums[3] / 4;
    const auto mix = [&](int sum) { return (sum / 4 * alpha + (255 - alpha) * grey) / 255; };
    return {mix(sums[0]), mix(sums[1]), mix(sums[2])};
}

static std::vector<Color> MakePreview(const PngLook& image)
{
    std::vector<Color> preview;
    for (int y = 0; y < imageheight / 2; y++) {
        for (int x = 0; x < imagewidth / 2; x++) {
            preview.push_back(LayOverSquares(image, x, y));
        }
    }
    return preview;
}

TEST_F(CreatedImage, StandsInThePreviewAsInTheFile)
{
    const std::string path = journey.GetFolder() + "/image.png";
    MakeImage(path);
    const std::vector<Color> expected = MakePreview(ReadPng(path));
    EXPECT_EQ(expected[0], (Color{100, 100, 100}));
    EXPECT_EQ(expected[16], (Color{116, 116, 116}));
    const Screenshot before = LookWithoutPointer();
    journey.Click(buttonx, buttony);
    ASSERT_TRUE(journey.WaitForFront("Image preview"));
    const Place dialog = journey.GetFront();
    const int border = (dialog.width - imagewidth / 2) / 2; // at the left and above
    Screenshot preview;
    EXPECT_TRUE(WaitFor([&] {
        preview = journey.LookAt(dialog.left + border, dialog.top + border, imagewidth / 2,
                                 imageheight / 2);
        return preview.pixels == expected;
    }));
    ClickInDialog(lastbutton2x);
    ExpectViewAlone(before);
    EXPECT_TRUE(journey.IsRunning());
}

TEST_F(CreatedImage, IsSavedByTheMouse)
{
    journey.Click(buttonx, buttony);
    ASSERT_TRUE(journey.WaitForFront("Image preview"));
    ClickInDialog(lastbuttonx);
    ASSERT_TRUE(journey.WaitForFront("Save image"));
    journey.Key("Escape");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
}

TEST_F(CreatedImage, CanBeGivenUpAndMadeAgain)
{
    const Screenshot before = LookWithoutPointer();
    journey.Click(buttonx, buttony);
    ASSERT_TRUE(journey.WaitForFront("Progress"));
    journey.Key("Escape");
    ExpectViewAlone(before);
    MakeImage(journey.GetFolder() + "/again.png");
    EXPECT_TRUE(ReadPng(journey.GetFolder() + "/again.png").whole);
    EXPECT_TRUE(journey.IsRunning());
}

TEST_F(CreatedImage, CanBeGivenUpByTheMouse)
{
    const Screenshot before = LookWithoutPointer();
    journey.Click(buttonx, buttony);
    ASSERT_TRUE(journey.WaitForFront("Progress"));
    ClickInDialog(lastbuttonx);
    ExpectViewAlone(before);
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
