// The OpenGL context of the drawing area: base state, lighting programs, textures, projection. The base
// state that InitGl leaves, and that every drawing procedure expects and leaves: depth test and blending
// on; textures, lighting and programs off; line width 1; model-view identity.
#pragma once

typedef struct _GtkWidget GtkWidget;
typedef struct _GdkEventConfigure GdkEventConfigure;

namespace korvane
{

// Program names: lit-surface vertex and fragment program, distance-fade vertex and fragment program.
enum ProgramPlace { LIT_VERTEX = 0, LIT_FRAGMENT = 1, FADE_VERTEX = 2, FADE_FRAGMENT = 3 };
extern unsigned int arbid[4];
extern char shaderok;       // 0 when the programs cannot be had: the fixed-function path is drawn
extern char antialiasingok; // 0 without OpenGL 1.4: no edge smoothing
extern unsigned int textidns;   // texture of the new-shape indicator
extern unsigned int textidpont; // texture of the point markers, white, to be tinted

// Realise handler of the drawing area. A failed GLEW start shows its error and ends the program.
void InitGl(GtkWidget* widget);

// Resize handler: viewport, projection and cursor. May run before InitGl. Returns true.
int ConfigGl(GtkWidget* widget, GdkEventConfigure* event);

// Viewport and projection of the view for the current width and height. A context must be current.
void SetViewProjection();

// The full path of a file under "icons": in the working directory if it is there, else in the
// installed data folder. The caller frees it (g_free).
char* GetIconPath(const char* name);

// In a debug build, names the drawing procedure that left the base state or a pending OpenGL error
// behind, and ends the program; nothing otherwise.
void AssertBaseState(const char* procedure);

} // namespace korvane
