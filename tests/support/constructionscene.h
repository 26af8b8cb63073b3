// The fixture of tests that click constructions: the main window, an empty scene seen from the
// front so that the screen's coordinates are the model's, and a pointer that picks wherever it
// goes.
#pragma once

#include "tests/support/shapes.h"

#include <gtest/gtest.h>

namespace korvane::testing
{

class ConstructionScene : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    static void PointAt(float x, float y); // moves the pointer
    static void MakeAllPickable();         // but for the construction itself
    static void TurnToTheSide(); // the x axis points away from the viewer, the z axis to the right

    static int AddProjected(OwnedShape shape); // returns the shape's index

    // Which of the points under construction can be picked, "1" or "0" for each; and the points of
    // a shape.
    static std::string GetMarks();
    static std::string GetMarksOfShape(int shapeindex);
};

// A point of a shape in model coordinates.
std::array<float, 3> PlaceOf(const Shape* shape, int point);

} // namespace korvane::testing
