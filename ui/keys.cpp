#include "ui/keys.h"

#include "geometry/construction.h"
#include "scene/clipboard.h"
#include "scene/scenefile.h"
#include "scene/treeedit.h"
#include "scene/undo.h"
#include "ui/heldkeys.h"
#include "view/frameloop.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

namespace korvane
{

GtkWidget* toolbutton_gradient = nullptr;
GtkWidget* toolbutton_full = nullptr;
GtkWidget* toolbutton_wire = nullptr;

// Escape was held when the keys came to the main window: it has closed a menu or a dialog or broken
// off a drag, and only the next one is meant for the window.
static bool foreignescape = false;

static constexpr float panstep = 0.5F;    // view units that an arrow key moves the scene
static constexpr float depthstep = 0.02F; // and the keys that move it forward and back

static void Pan(float x, float y, float z)
{
    ChangePosition(0, 0, 0, x, y, z);
}

static void Zoom(bool in)
{
    ChangeScaleFromOrigo(in);
    rdstate |= redrawwanted;
}

static void Toggle(GtkWidget* button)
{
    GtkToggleToolButton* toggle = GTK_TOGGLE_TOOL_BUTTON(button);
    gtk_toggle_tool_button_set_active(toggle, !gtk_toggle_tool_button_get_active(toggle));
}

static void Press(GtkWidget* button)
{
    gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(button), TRUE);
}

// Lets clicks reach sides and cube faces while something is under construction.
static void SetSpace(bool held)
{
    keyspace = held ? 1 : 0;
    if (IsUnderConstruction()) {
        SearchActive();
        rdstate |= redrawwanted;
    }
}

static void UndoIfPossible()
{
    if (pindex != 0) {
        Undo();
    }
}

// Keys that move the camera. False when the key is none of them.
static bool PressCameraKey(guint key)
{
    switch (key) {
    case GDK_KEY_plus:
    case GDK_KEY_KP_Add:
        Zoom(true);
        return true;
    case GDK_KEY_minus:
    case GDK_KEY_KP_Subtract:
        Zoom(false);
        return true;
    case GDK_KEY_Left:
        Pan(panstep, 0, 0);
        return true;
    case GDK_KEY_Right:
        Pan(-panstep, 0, 0);
        return true;
    case GDK_KEY_Up:
        Pan(0, -panstep, 0);
        return true;
    case GDK_KEY_Down:
        Pan(0, panstep, 0);
        return true;
    case GDK_KEY_f:
        Pan(0, 0, depthstep);
        return true;
    case GDK_KEY_b:
        Pan(0, 0, -depthstep);
        return true;
    default:
        return false;
    }
}

// Keys that change the scene: with Control, as in other programs, and without. False when the key
// is none of them.
static bool PressEditKey(guint key)
{
    switch (key) {
    case GDK_KEY_c:
        CopySelected();
        return true;
    case GDK_KEY_x:
        CopySelected();
        DelSelected();
        return true;
    case GDK_KEY_v:
        PasteSelected();
        return true;
    case GDK_KEY_Delete:
    case GDK_KEY_KP_Delete:
        DelSelected();
        return true;
    case GDK_KEY_z:
    case GDK_KEY_BackSpace:
        UndoIfPossible();
        return true;
    case GDK_KEY_y:
        Redo();
        return true;
    default:
        return false;
    }
}

static bool PressPlainKey(guint key)
{
    switch (key) {
    case GDK_KEY_n:
        Toggle(toolbutton_news);
        return true;
    case GDK_KEY_g:
        Toggle(toolbutton_gradient);
        return true;
    case GDK_KEY_s:
        Press(toolbutton_full);
        return true;
    case GDK_KEY_w:
        Press(toolbutton_wire);
        return true;
    case GDK_KEY_space:
        SetSpace(true);
        return true;
    case GDK_KEY_Escape:
        if (!foreignescape) {
            gtk_main_quit(); // Deliberate: without asking, even with unsaved changes
        }
        return true;
    default:
        return PressEditKey(key) || PressCameraKey(key);
    }
}

// With Control held a letter is a command or nothing: a reflex never switches the display.
static void PressControlLetter(guint key, bool shift)
{
    if (key == GDK_KEY_s && shift) {
        SaveAs();
    } else if (key == GDK_KEY_s) {
        Save();
    } else if (key == GDK_KEY_o) {
        Open();
    } else if (key == GDK_KEY_z && shift) {
        Redo();
    } else {
        PressEditKey(key);
    }
}

int KeyPress(void*, GdkEventKey* event)
{
    const guint key = gdk_keyval_to_lower(event->keyval);
    if ((event->state & GDK_CONTROL_MASK) != 0 && key >= GDK_KEY_a && key <= GDK_KEY_z) {
        PressControlLetter(key, (event->state & GDK_SHIFT_MASK) != 0);
        return TRUE;
    }
    return PressPlainKey(key) ? TRUE : FALSE;
}

int KeyRelease(void*, GdkEventKey* event)
{
    if (event->keyval == GDK_KEY_Escape) {
        foreignescape = false;
    }
    if (event->keyval != GDK_KEY_space) {
        return FALSE;
    }
    SetSpace(false);
    return TRUE;
}

int KeysLost(void*, GdkEventFocus*)
{
    SetSpace(false);
    return FALSE;
}

static void NoticeHeldEscape()
{
    foreignescape = IsKeyDown(GDK_KEY_Escape);
}

int KeysGained(void*, GdkEventFocus*)
{
    NoticeHeldEscape();
    return FALSE;
}

void KeysGrabbed(void*, int)
{
    NoticeHeldEscape();
}

} // namespace korvane
