// The keys of the main window, which act wherever in it the focus is. The buttons that keys press
// are filled by GetMainWindow and null before.
#pragma once

typedef struct _GtkWidget GtkWidget;
typedef struct _GdkEventKey GdkEventKey;
typedef struct _GdkEventFocus GdkEventFocus;

namespace korvane
{

extern GtkWidget* toolbutton_gradient;
extern GtkWidget* toolbutton_full;
extern GtkWidget* toolbutton_wire;

// Handlers of the main window, connected swapped. Keys that are bound are handled, others passed
// on.
int KeyPress(void* data, GdkEventKey* event);
int KeyRelease(void* data, GdkEventKey* event);

// Handlers of the main window's "focus_out_event" and "focus_in_event", connected swapped and
// always passed on: the release of a held key will go to another window, and a key that repeats now
// may have been pressed in another.
int KeysLost(void* data, GdkEventFocus* event);
int KeysGained(void* data, GdkEventFocus* event);

// Handler of the main window's "grab_notify", connected swapped: menus and drags in the tree take
// the keys without the focus.
void KeysGrabbed(void* data, int ended);

} // namespace korvane
