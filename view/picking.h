// The element under the pointer: after each pointer or camera move SearchActive decides which of
// the records is hit. All of it works in view coordinates, on shapest.
#pragma once

#include "view/activeelements.h" // part of what is told of picking here
#include "view/nearness.h"

namespace korvane
{

extern float cubepoints[24][3]; // screen corners of the background cube, four per face
extern float mouse[3];          // the pointer in view coordinates; z the depth of what it hits
extern float gmouse[3];         // where a click places a point: mouse, or snapped to the grid

extern char keyspace; // 1 while the space bar is held: sides can be picked during a construction

// Finds the element under `mouse` and makes it activepointer; sets mouse's depth to that of the
// hit. It is the only writer of the hover flags. Reads mainview, showtable, selected, shapest,
// cubepoints, newsign, duplicatesign, keyspace.
void SearchActive();

// To be called when the coordinates of shapest[shapeindex] have changed; the projection does.
void ForgetScreenBoxes(int shapeindex);

// To be called when the shapes may have other elements; SetActives does.
void ForgetScreenGroups();

} // namespace korvane
