// The scene as a file would hold it.
#pragma once

#include <string>

namespace korvane::testing
{

std::string GetSceneText(); // its folders and shapes

} // namespace korvane::testing
