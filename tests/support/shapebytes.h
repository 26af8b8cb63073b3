// Shapes as strings of bytes, to compare them to the last bit.
#pragma once

#include <string>

namespace korvane
{
struct Shape;
}

namespace korvane::testing
{

// All fields of the record but its bounds, or with them: the centre and the radius.
std::string GetMeshBytes(const Shape& shape);
std::string GetBytes(const Shape& shape);

// What can be seen of the scene's shapes: the model, its rounded version, and of their view copies
// those that are drawn. The others are old ones.
std::string GetSceneBytes();

} // namespace korvane::testing
