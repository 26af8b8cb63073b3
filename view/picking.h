// The element under the pointer. One record is kept for every point, stripe and side of every
// shape, shape after shape in scene order, and one for every face of the background cube; after
// each pointer or camera move SearchActive decides which of them is hit. All of it works in view
// coordinates, on shapest. Behind the shapes' points activepoints holds those of a construction,
// which its own module appends: first the duplication centres, then the new points.
#pragma once

#include "view/nearness.h"

namespace korvane
{

struct Stripe;
struct Side;

enum ElementType { ELEMENT_CUBEFACE = 0, ELEMENT_POINT = 2, ELEMENT_STRIPE = 3, ELEMENT_SIDE = 4 };

struct ActiveElement {
    unsigned char active;   // 1 when the element can be picked
    unsigned char hover;    // 1 while it is the element under the pointer
    unsigned char fade;     // hover fade level, moved by the timer
    unsigned char reserved; // reserved
    int type;               // an ElementType
    float position[3];      // view coordinates of the last hit on the element
    void* element;          // borrowed; a point's float triple, a Stripe or a Side of shapest
};

// The records, owned: of the shapes' points and behind them those of a construction, of the shapes'
// stripes and of their sides. Each number is the length of the array before it.
extern ActiveElement* activepoints;
extern int activepointnumber;
extern ActiveElement* activestripes;
extern int activestripenumber;
extern ActiveElement* activesides;
extern int activesidenumber;
extern ActiveElement activebgcube[6]; // the faces of the background cube
extern ActiveElement* activepointer;  // borrowed; the record under the pointer, or null
extern float cubepoints[24][3];       // screen corners of the background cube, four per face
extern float mouse[3];  // the pointer in view coordinates; z the depth of what it hits
extern float gmouse[3]; // where a click places a point: mouse, or snapped to the grid

// What the last press met: an index into activepoints, activestripes or activesides; -1 for none.
extern int buttonpresspointactive;
extern int buttonpressstripeactive;
extern int buttonpresssideactive;

extern char keyspace; // 1 while the space bar is held: sides can be picked during a construction

inline float* GetPointOfElement(const ActiveElement* record)
{
    return static_cast<float*>(record->element);
}
inline Stripe* GetStripeOfElement(const ActiveElement* record)
{
    return static_cast<Stripe*>(record->element);
}
inline Side* GetSideOfElement(const ActiveElement* record)
{
    return static_cast<Side*>(record->element);
}

// Rebuilds the record arrays from the current shapes, keeping the records of a construction at the
// end of activepoints; clears activepointer. A construction that is going on keeps what it lets be
// picked, as long as the shapes have as many elements as before. Call it after every change of the
// scene's structure.
void SetActives();

// Computes anew which elements can be picked and finds the one under the pointer; nothing while a
// shape or a duplicate is under construction or a tool mode is in force.
void ChangeActives();

void SetActivesOff(); // makes every point, stripe and side unpickable

// The elements under the last press are no longer those of the lists.
void ForgetPressedElements();

// Finds the element under `mouse` and makes it activepointer; sets mouse's depth to that of the
// hit. It is the only writer of the hover flags. Reads mainview, showtable, selected, shapest,
// cubepoints, newsign, duplicatesign, keyspace.
void SearchActive();

// To be called when the coordinates of shapest[shapeindex] have changed; the projection does.
void ForgetScreenBoxes(int shapeindex);

// Whether the element of one record belongs to that of the other; never across shapes.
bool IsPointOfStripe(const ActiveElement* point, const ActiveElement* stripe);
bool IsPointOfSide(const ActiveElement* point, const ActiveElement* side);
bool IsStripeOfSide(const ActiveElement* stripe, const ActiveElement* side); // all points are

} // namespace korvane
