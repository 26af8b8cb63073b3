// A mesh exported by the program, read by somebody else.
#include "tests/support/journey.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using namespace korvane::testing;

// The button stands in the toolbar, to the left of the view and above it.
static constexpr int buttonx = -63;
static constexpr int buttony = -30;

// What the reader says of a mesh, line by line; empty when it cannot read it.
static std::string Describe(const Journey& journey, const std::string& mesh)
{
    const std::string description = journey.GetFolder() + "/description.txt";
    const std::string command = "assimp info " + mesh + " >" + description;
    EXPECT_EQ(std::system(command.c_str()), 0) << "needs the Debian package assimp-utils";
    return ReadWholeFile(description);
}

static bool Says(const std::string& description, const std::string& line)
{
    return description.find("\n" + line + "\n") != std::string::npos;
}

TEST(Export, IsReadByAnotherProgram)
{
    Journey journey;
    const std::string scene = journey.GetFolder() + "/box.mrt";
    const std::string mesh = journey.GetFolder() + "/box.obj";
    std::ofstream(scene) << BoxScene();
    ASSERT_TRUE(journey.Start(scene));
    journey.Click(buttonx, buttony);
    ASSERT_TRUE(journey.WaitForFront("Export wavefront obj"));
    journey.Key("ctrl+a");
    journey.Type(mesh);
    journey.Key("alt+s");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(mesh); }));

    // each of the 12 triangles becomes nine; two points more on each of the 18 edges, and one in
    // each triangle: 8 + 36 + 12
    const std::string description = Describe(journey, mesh);
    EXPECT_TRUE(Says(description, "Faces:              108")) << description;
    EXPECT_TRUE(Says(description, "Vertices:           56")) << description;
    // ten times x, z and -y of the box
    EXPECT_TRUE(Says(description, "Minimum point      (1.000000 -1.500000 -2.000000)"));
    EXPECT_TRUE(Says(description, "Maximum point      (3.000000 0.500000 -1.000000)"));
}
