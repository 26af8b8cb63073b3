// A polygon or path under construction: the points clicked so far, shared by the drawing of shapes
// and the sweeping of sides. Every point has a record at the end of activepoints, behind those of
// the centres to which a sweep may lead, so that it is drawn and can be picked.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

struct ActiveElement;
struct MainView;

extern GtkWidget* toolbutton_news; // the new-shape button; null before the window

extern float (*newpoints)[3]; // owned; the clicked points in world coordinates
extern float (*rotated)[3];   // owned; the same points in view coordinates
extern int newpointnumber;    // length of both
extern char newsign;          // 1 while the new-shape tool is on

// What the input layer hands to PutNewPoints and PutDPoints.
enum ClickAction { CLICK_ADD = 0, CLICK_TAKEBACK = 1, CLICK_FINISH = 2 };

// True while either tool is on.
bool IsUnderConstruction();

// Projects newpoints into rotated and centerpoints into rcenterpoints. The projection of the scene
// calls it, so that what is picked is where it is drawn.
void TransferConstruction(const MainView* view);

// Appends a point, given in view coordinates, and its record, which cannot be picked. activepointer
// stays on its element.
void AddNewPoint(const float place[3]);

// Makes the centres and their records, which cannot be picked. Call it before the first point.
void AddCenterPoints(const float places[][3], int number); // world coordinates

// Removes the last point and its record. activepointer is stale until SearchActive has run.
void DropNewPoint();

// Closes the line on the point under the pointer, which is added to it. The points behind `zindex`
// get depths between those of the two (InterpolateDepths), and all of them their final places.
void CloseLine(int zindex);

// The records of the points and of the centres; valid until activepoints changes.
ActiveElement* GetNewPointRecords();
ActiveElement* GetCenterRecords();

// The new point under the pointer, and the centre: an index, or -1. Valid as long as activepointer.
int GetPickedNewPoint();
int GetPickedCenter();

// Ends the construction, whatever its state: frees the points and the centres, drops their records,
// clears newsign and duplicatesign and makes the elements of the shapes pickable again.
void DelNewPoints();

} // namespace korvane
