// The hands of the monkey: where on the screen it points at, and how it clicks and presses keys
// there, by the same handlers that the window's events call.
#pragma once

#include <array>
#include <random>
#include <string>
#include <vector>

namespace korvane::testing
{

using Place = std::array<float, 3>; // view coordinates; the depth is not used

// Whole numbers and fractions come from the generator's own bits, so that a seed means the same
// with every standard library.
int Choose(std::mt19937& random,
           int number);                // 0..number - 1; 0 when there is nothing to choose from
double Fraction(std::mt19937& random); // 0..1

Place Mix(const Place& a, const Place& b, double t); // on the way from a (0) to b (1)

Place AnywhereOnScreen(std::mt19937& random);
Place OnSomePoint(std::mt19937& random); // of a shape or a construction; there must be one
Place OnSomeSide(std::mt19937& random);  // there must be one
Place SomePlace(std::mt19937& random);   // mostly on a point, a stripe or a side
Place OnRecord(int activepoint);

void MoveTo(const Place& place);
void Press(const Place& place, unsigned button);
void Release(const Place& place, unsigned button);
void Click(const Place& place, unsigned button);
void Scroll(const Place& place, bool up);

void PressKey(unsigned key);
void LetGoOfSpace();
void FinishFlight(); // lets the camera arrive

} // namespace korvane::testing
