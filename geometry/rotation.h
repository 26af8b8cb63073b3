// Turns that carry one direction onto another, for frames of three vectors. A rotation is kept as a
// frame too: its three columns, the images of the x, y and z axes.
#pragma once

namespace korvane
{

// Turns the three vectors of `frame` by the rotation that carries the unit vector `from` onto the
// unit vector `to` (Rodrigues' formula). Nothing changes when the square of the distance between
// them is below 1e-6, or when one of them is zero.
void VectorRotate(float frame[][3], const float from[3], const float to[3]);

// The same turn without that cut-off: `from` arrives at `to` however near or opposite they are. A
// vector of the frame that is `from` itself becomes `to` to the bit. A zero vector changes nothing.
void VectorRotateExact(float frame[][3], const float from[3], const float to[3]);

// The columns of the inverse of a rotation.
void GetInverseRotation(const float rotation[9], double inverse[9]);

} // namespace korvane
