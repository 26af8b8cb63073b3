#include "tests/support/scenejourney.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace korvane::testing
{

// The back wall of the background cube, which the middle of the view shows once it is drawn.
static constexpr Color wall = {102, 102, 102};

void SceneJourney::StartWith(const std::string& arguments)
{
    ASSERT_TRUE(journey.Start(arguments));
    ASSERT_TRUE(WaitFor([&] {
        const Screenshot picture = journey.Look();
        return picture.At(picture.width / 2, picture.height / 2) == wall;
    }));
    first = LookWithoutPointer();
}

void SceneJourney::Start()
{
    StartWith("");
}

void SceneJourney::Start(const std::string& scenetext)
{
    const std::string scene = journey.GetFolder() + "/scene.mrt";
    std::ofstream(scene) << scenetext;
    StartWith(scene);
}

int SceneJourney::X(double x) const
{
    return int(first.width / 2.0 + x * std::min(first.width, first.height));
}

int SceneJourney::Y(double y) const
{
    return int(first.height / 2.0 - y * std::min(first.width, first.height));
}

void SceneJourney::Click(double x, double y, int button)
{
    journey.Click(X(x), Y(y), button);
}

void SceneJourney::Drag(const std::vector<std::array<double, 2>>& places)
{
    journey.MoveTo(X(places[0][0]), Y(places[0][1]));
    journey.LookWhenStill();
    journey.Press(1);
    for (std::size_t i = 1; i < places.size(); i++) {
        journey.MoveTo(X(places[i][0]), Y(places[i][1]));
        journey.LookWhenStill();
    }
    journey.Release(1);
    journey.LookWhenStill();
}

void SceneJourney::ChooseItem(int place)
{
    EXPECT_TRUE(WaitFor([&] { return journey.HasMenu(); }));
    for (int i = 0; i < place; i++) {
        journey.Key("Down");
    }
    journey.Key("Return");
    EXPECT_TRUE(WaitFor([&] { return !journey.HasMenu(); }));
}

Screenshot SceneJourney::LookWithoutPointer()
{
    journey.MoveTo(3, 3);
    return journey.LookWhenStill();
}

SceneDraft SceneJourney::Save()
{
    const std::string path = journey.GetFolder() + "/saved" + std::to_string(saves++) + ".mrt";
    journey.Key("ctrl+shift+s");
    EXPECT_TRUE(journey.WaitForFront("Save scene"));
    journey.Key("ctrl+a");
    journey.Type(path);
    journey.Key("alt+s");
    EXPECT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(WaitFor([&] { return std::filesystem::exists(path); }));
    return ReadScene(ReadWholeFile(path));
}

OwnedShape SceneJourney::SaveShape()
{
    SceneDraft draft = Save();
    if (draft.shapes.size() != 1) {
        ADD_FAILURE() << "the scene has " << draft.shapes.size() << " shapes";
        return Cube();
    }
    return OwnedShape(draft.shapes[0].shape.release());
}

void ExpectPoint(const Shape& shape, int point, double x, double y, double z)
{
    constexpr double pixel = 0.003;
    EXPECT_NEAR(shape.points[point][0], x, pixel);
    EXPECT_NEAR(shape.points[point][1], y, pixel);
    EXPECT_NEAR(shape.points[point][2], z, pixel);
}

} // namespace korvane::testing
