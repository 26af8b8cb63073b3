// What follows every edit of a shape of the scene, once its triangles and stripes are right.
#pragma once

namespace korvane
{

// Rebuilds normals, edges and the derived versions, projects the shape, rebuilds the active
// elements, brings the node's type and icon up to date and asks for a redraw.
void FinishEdit(int shapeindex);

// The same but for the normals, the edges and the redraw: for a shape that came with its normals.
void DeriveEditedShape(int shapeindex);

} // namespace korvane
