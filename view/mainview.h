// The camera, and the way of points between the world and the screen. View coordinates: the shorter
// side of the drawing area spans -0.5 to 0.5 and the longer proportionally more, depth runs from -1
// to 1 and grows towards the viewer. The projected copies of the shapes are always computed anew,
// never updated: whoever changes center, rotation, scale or perspective calls RefreshView.
#pragma once

#include "view/projection.h"

#include <cstdint>

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

enum BackgroundMode { BACKGROUND_CUBE = 0, BACKGROUND_PLANE = 1, BACKGROUND_NONE = 2 };
enum ShapeMode { SHAPE_SIDES = 0, SHAPE_LINES = 1, SHAPE_BOTH = 2 };

// A fade level runs from 0 to fadefull. A toggle-fade byte keeps its target in bit fadetarget and
// its level below; it counts up to fadedone while the bit is set and down to 0 while it is not.
constexpr int fadefull = 15;
constexpr int fadetarget = 16;
constexpr int fadedone = 31;

struct MainView {
    int32_t bgshape;          // a BackgroundMode
    int8_t bgcubefade;        // fade level of the background cube
    int8_t bgplanefade;       // fade level of the background plane
    int8_t gradientfade;      // toggle-fade byte of the gradient grid
    int8_t imagefade;         // toggle-fade byte of the background picture
    GtkWidget* bgimage;       // owned; the image widget that holds the background picture, or null
    int8_t smallcubefade;     // toggle-fade byte of the small orientation cube
    int8_t centerlinesfade;   // toggle-fade byte of the centre lines
    int8_t reservedbytes[2];  // reserved
    int32_t showshape;        // a ShapeMode
    int8_t sidesfade;         // fade level of the solid sides
    int8_t linesfade;         // fade level of the edge lines
    int8_t onlyselected;      // 1 while only the shapes selected in the tree are shown
    int8_t perspective;       // toggle-fade byte; the low four bits are the perspective level
    int32_t action;           // the tool mode in force, 0 when none
    int32_t reservedwords[4]; // reserved
    float center[3];          // the world point shown at the screen's origin
    float rotation[9];        // three columns: the screen images of the world's x, y and z axes
    float freerotation[9];    // the rotation before it was snapped to the axes
    float scale;              // from world units to screen units; positive and finite
};

extern MainView mainview;     // the one view; written by navigation, toolbar handlers and the timer
extern int32_t width, height; // the drawing area's size in pixels; written by ConfigGl
extern char cisign;           // not 0 while an image export renders

// The scale stays in this range, far outside what anyone uses.
constexpr float smallestscale = 1e-9F;
constexpr float greatestscale = 1e9F;

// The easing curve of all fades: 0 at level 0, 1 at level 15; only the low four bits count.
float GetCosRate(int8_t level);

// Sets mainview's scale, kept between smallestscale and greatestscale. What is no positive finite
// number changes nothing: this is the only way in which a computed scale comes into the view.
void SetScale(float scale);

// Applies the perspective of a level to n screen points in place, then projects the scene again and
// refreshes what can be picked. Level 0 does nothing at all.
void SetPerspective(float points[][3], int32_t n, int8_t level);

// Half the width and half the height of the view, in view coordinates; a square while the drawing
// area has no size yet.
void GetHalfView(float* halfwidth, float* halfheight);

// For whoever has changed the camera: projects every shape, then finds out what can be picked.
void RefreshView();

// Projects every shape and what is under construction for the current camera, then finds the
// element under the pointer again. Reads shapes, round1, selected, mainview, cisign; writes
// shapest, round1t, showtable, rotated, rcenterpoints.
void TransferAllShape();

// Projects one shape; the element under the pointer is the caller's to find.
void TransferOneShape(int32_t shapeindex);

// Projects the plain version of a shape whether it is shown or not; showtable stays as it is.
void TransferPlainShape(int32_t shapeindex);

} // namespace korvane
