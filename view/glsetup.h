// The OpenGL context of the drawing area: base state, shader programs, textures, projection and
// pointer. ConfigGl's first event comes before InitGl: until then nothing may use GLEW's pointers.
#pragma once

#include "view/icons.h"
#include "view/programs.h"

typedef struct _GtkWidget GtkWidget;
typedef struct _GdkEventConfigure GdkEventConfigure;

namespace korvane
{

extern unsigned int arbid[programnumber]; // the program names, placed as ProgramPlace says
extern char shaderok;         // 0 when the programs cannot be had: the fixed-function path is drawn
extern char antialiasingok;   // 0 without OpenGL 1.4: no edge smoothing
extern char forcefixed;       // set by tests alone, at any time: 1 to draw the fixed-function path
extern unsigned int textidns; // texture of the new-shape indicator
extern unsigned int textidpont; // texture of the point markers, white, to be tinted

// True when drawing goes through the shader programs.
bool UsesPrograms();

// Realise handler of the drawing area. A failed GLEW start shows its error and ends the program.
void InitGl(GtkWidget* widget);

// Resize handler: viewport, projection, the scene projected anew, and the pointer's cursor. Returns
// true.
int ConfigGl(GtkWidget* widget, GdkEventConfigure* event);

// Viewport and projection of the view for the current width and height. A context must be current.
void SetViewProjection();

} // namespace korvane
