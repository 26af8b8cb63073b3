// The records of what can be picked: one for every point, stripe and side of every shape, shape
// after shape in scene order, and one for every face of the background cube. Behind the shapes'
// points activepoints holds those of a construction, which its own module appends: first the
// duplication centres, then the new points. Which of them lies under the pointer is told by
// view/picking.h.
#pragma once

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

// What the last press met: an index into activepoints, activestripes or activesides; -1 for none.
extern int buttonpresspointactive;
extern int buttonpressstripeactive;
extern int buttonpresssideactive;

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

// Where the records of a shape begin in the three lists, and for how many elements they were made.
struct RecordRun {
    int firstpoint, firststripe, firstside;
    int pointnumber, stripenumber, sidenumber;
};

// The records of a shape; null when it has another number of elements than when they were made, as
// between an edit and its SetActives. Valid until then.
const RecordRun* GetRecordRun(int shapeindex);

// How many records at the end of activepoints belong to a construction.
int CountConstructionRecords();

// True when a shape is drawn in full and no tool mode is in force: all its elements can be picked
// then, unless a construction chooses among them.
bool IsPickable(int shapeindex);

// Whether the element of one record belongs to that of the other; never across shapes.
bool IsPointOfStripe(const ActiveElement* point, const ActiveElement* stripe);
bool IsPointOfSide(const ActiveElement* point, const ActiveElement* side);
bool IsStripeOfSide(const ActiveElement* stripe, const ActiveElement* side); // all points are

} // namespace korvane
