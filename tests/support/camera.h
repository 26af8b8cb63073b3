// The camera in tests: its start, its columns, and turns to compare it with.
#pragma once

#include "tests/support/shapes.h"
#include "view/cameraflight.h"

#include <gtest/gtest.h>

#include <random>

namespace korvane::testing
{

// Three columns: the screen images of the world's x, y and z axes.
using Columns = std::array<std::array<float, 3>, 3>;
using Vector = std::array<double, 3>;

constexpr Columns identity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
constexpr double degree = 3.14159265358979323846 / 180;

// An empty scene in a square area, the camera as the program starts with it, the pointer in the
// middle over nothing, and no flight.
void StartView();

// The fixture of tests that begin there.
class StartViewTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartView();
    }
};

int AddToView(OwnedShape shape); // adds it to the scene, projected and pickable; returns its index

Columns ToColumns(const float rotation[9]);
void SetRotation(const Columns& columns); // both of the camera's rotations

const CameraFrame& LastFrame(); // of the flight that has been prepared
Columns RotationOfFrame(int frame);
Columns LastRotation();
void PlayFlight(); // to its end

// The rotation about a vector (of any length) by an angle, counter-clockwise seen from its tip.
Columns MakeTurn(const Vector& axis, double angle);

// First `inner`, then `outer`.
Columns Compose(const Columns& outer, const Columns& inner);

Columns MakeInverse(const Columns& turn);

double GetTurnAngle(const Columns& a, const Columns& b); // of the turn from one to the other, 0..pi

Vector Apply(const Columns& turn, const Vector& v);
double GetAngle(const Vector& a, const Vector& b);

Columns GetRandomRotation(std::mt19937& random); // all orientations are equally likely
Vector GetRandomDirection(std::mt19937& random); // of unit length

// Every component within `tolerance`; 0 means to the bit.
::testing::AssertionResult AreColumns(const Columns& actual, const Columns& expected,
                                      double tolerance);

} // namespace korvane::testing
