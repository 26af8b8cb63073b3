// The fixture of journeys that work on a scene in the view, whose middle is empty at first: places
// are those of the view that the program starts with, in which the screen's coordinates are the
// world's, and what has become of the scene is read from the file that the program saves.
#pragma once

#include "scene/scenereader.h"
#include "tests/support/journey.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace korvane::testing
{

class SceneJourney : public ::testing::Test
{
protected:
    void Start(); // with an empty scene
    void Start(const std::string& scenetext);

    // Pixels of a place in view coordinates.
    int X(double x) const;
    int Y(double y) const;

    void Click(double x, double y, int button = 1);
    // A drag with the left button through these places, every step drawn before the next.
    void Drag(const std::vector<std::array<double, 2>>& places);
    // In the menu that a right click has brought, the item of this place, the first being 1, is
    // chosen.
    void ChooseItem(int place);
    Screenshot LookWithoutPointer();

    SceneDraft Save();      // the scene, as it is saved now
    OwnedShape SaveShape(); // its only shape

    Journey journey;
    Screenshot first; // the view at the start

private:
    void StartWith(const std::string& arguments);

    int saves = 0;
};

// A point of a shape lies at a place, to the pixel.
void ExpectPoint(const Shape& shape, int point, double x, double y, double z);

} // namespace korvane::testing
