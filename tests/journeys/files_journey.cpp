// Scenes from the command line, through the window, and back into files.
#include "tests/support/journey.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>

using namespace korvane::testing;

static const std::string platonic = std::string(KORVANE_SOURCE_DIR) + "/examples/platonic.mrt";

static bool IsBlue(const Color& color)
{
    return color.blue > color.red + 40 && color.blue > color.green + 15;
}

static bool IsOrange(const Color& color)
{
    return color.red > color.blue + 60 && color.red > color.green + 20;
}

// The bodies of the example are on the screen.
static bool ShowsBodies(const Screenshot& picture)
{
    return picture.Count(IsBlue) > 1000 && picture.Count(IsOrange) > 1000;
}

static bool StartWithBodies(Journey& journey, const std::string& scene,
                            const std::string& environment = "")
{
    return journey.Start(scene, environment) &&
           WaitFor([&] { return ShowsBodies(journey.Look()); });
}

static bool SaveAs(Journey& journey, const std::string& path)
{
    journey.Key("ctrl+shift+s");
    if (!journey.WaitForFront("Save scene")) {
        return false;
    }
    journey.Key("ctrl+a");
    journey.Type(path);
    journey.Key("Return");
    return journey.WaitForFront("Vintra") && WaitFor([&] { return std::filesystem::exists(path); });
}

// A locale with a decimal comma, made for this journey alone.
static std::string MakeGermanLocale(const Journey& journey)
{
    const std::string environment = "LOCPATH=" + journey.GetFolder() + " LC_ALL=de_DE.UTF-8";
    const std::string commands = "localedef -i de_DE -f UTF-8 " + journey.GetFolder() +
                                 "/de_DE.UTF-8 >/dev/null 2>&1; test \"$(" + environment +
                                 " locale decimal_point)\" = ,";
    EXPECT_EQ(std::system(commands.c_str()), 0)
        << "no locale with a decimal comma: localedef needs the Debian package locales";
    return environment;
}

TEST(Files, AreSavedAndLoadedBackAsTheSamePicture)
{
    Journey journey;
    const std::string first = journey.GetFolder() + "/first.mrt";
    const std::string second = journey.GetFolder() + "/second.mrt";
    ASSERT_TRUE(StartWithBodies(journey, platonic));
    const Screenshot original = journey.LookWhenStill();
    ASSERT_TRUE(SaveAs(journey, first));

    ASSERT_TRUE(StartWithBodies(journey, first));
    EXPECT_EQ(original.CountDifferences(journey.LookWhenStill()), 0);
    ASSERT_TRUE(SaveAs(journey, second));
    EXPECT_GT(ReadWholeFile(first).size(), 10000U);
    EXPECT_TRUE(ReadWholeFile(first) == ReadWholeFile(second));
}

TEST(Files, AreTheSameUnderALocaleWithADecimalComma)
{
    Journey journey;
    const std::string plain = journey.GetFolder() + "/plain.mrt";
    const std::string german = journey.GetFolder() + "/german.mrt";
    ASSERT_TRUE(StartWithBodies(journey, platonic, "LC_ALL=C"));
    ASSERT_TRUE(SaveAs(journey, plain));
    ASSERT_TRUE(StartWithBodies(journey, platonic, MakeGermanLocale(journey)));
    ASSERT_TRUE(SaveAs(journey, german));
    EXPECT_GT(ReadWholeFile(plain).size(), 10000U);
    EXPECT_TRUE(ReadWholeFile(plain) == ReadWholeFile(german));
}

TEST(Files, OfAnotherKindEndTheProgramWithTheUsage)
{
    Journey journey;
    journey.Launch("scene.txt");
    EXPECT_EQ(journey.WaitForEnd(), 0);
    EXPECT_EQ(ReadWholeFile(journey.GetOutput()), "Usage: korvane [path/]filename\n");
}

TEST(Files, ThatAreMissingEndTheProgramWithAMessage)
{
    Journey journey;
    journey.Launch(journey.GetFolder() + "/missing.mrt");
    EXPECT_EQ(journey.WaitForEnd(), 1);
    EXPECT_EQ(ReadWholeFile(journey.GetOutput()), "Can't open the file\n");
}

// The window belongs to the desktop before the command line is looked at: a wrong name too.
TEST(Files, AreLookedAtOnceTheWindowCanBeShown)
{
    Journey journey;
    journey.Launch("scene.txt", "DISPLAY=:nowhere");
    EXPECT_EQ(journey.WaitForEnd(), 1); // the toolkit has no display, and the name is not judged
    EXPECT_EQ(ReadWholeFile(journey.GetOutput()), "");
}

TEST(Files, ThatAreBrokenShowADialogAndTheProgramLivesOn)
{
    Journey journey;
    const std::string broken = journey.GetFolder() + "/broken.mrt";
    std::ofstream(broken) << "This is no scene.\n";
    journey.Launch(broken);
    ASSERT_TRUE(journey.WaitForFront("")); // a message has no title
    journey.Key("Escape");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(journey.IsRunning());
    ASSERT_TRUE(SaveAs(journey, journey.GetFolder() + "/empty.mrt")); // and does what it is told
}

// Nobody ever writes into the pipe.
TEST(Files, ThatArePipesShowADialogAtOnce)
{
    Journey journey;
    const std::string pipe = journey.GetFolder() + "/pipe.mrt";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    journey.Launch(pipe);
    ASSERT_TRUE(journey.WaitForFront(""));
    journey.Key("Escape");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(journey.IsRunning());
}

TEST(Files, AreOfferedFromTheExamplesFirst)
{
    Journey journey;
    ASSERT_TRUE(journey.Start(""));
    journey.Key("ctrl+o");
    ASSERT_TRUE(journey.WaitForFront("Open scene"));
    journey.Key("ctrl+l"); // a name beside the files that are shown
    journey.Type("platonic.mrt");
    journey.Key("Return");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(WaitFor([&] { return ShowsBodies(journey.Look()); }));
}
