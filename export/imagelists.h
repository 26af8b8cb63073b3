// The display lists of an image: for each tile those of the parts in which it is drawn. They are
// made in steps, so that a progress bar can move between them.
#pragma once

#include "export/drawntriangles.h"
#include "export/imageorder.h"

#include <vector>

namespace korvane
{

// The triangles have to live until FreeLists.
void StartLists(TileOrders orders, DrawnTriangles drawn);

// Does as much as one step can afford. Returns the share that is done then; 1 when all is. A
// context must be current.
double MakeLists();

// Those of a tile in drawing order, at least one. All lists must have been made.
const std::vector<unsigned int>& GetLists(int tile);

// All of it. Without a current context the lists are gone with theirs.
void FreeLists();

} // namespace korvane
