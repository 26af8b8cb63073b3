// The editing monkey: it clicks, drags, presses keys and chooses menu items at random, as a person
// could in the main window, and after each step asks for the first broken invariant. Now and then
// it undoes everything it has done, which must give back the first scene to the byte, and does it
// all again, which must give the last.
#pragma once

#include <string>
#include <vector>

namespace korvane::testing
{

struct Wandering {
    std::string broken;             // the first rule that did not hold; empty when all did
    std::vector<std::string> steps; // since the last fresh scene
};

// Lets the monkey of a seed take `number` steps in the main window, which must have been shown
// (ShowMainWindow). The same seed does the same. With `telling` each step is printed on the error
// stream when it has been taken, with a star when it changed the document.
Wandering Wander(unsigned seed, int number, bool telling = false);

} // namespace korvane::testing
