#include "view/frameloop.h"

#include "export/imageprogress.h"
#include "scene/model.h"
#include "view/background.h"
#include "view/basestate.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/overlays.h"
#include "view/picking.h"
#include "view/scenedraw.h"

#include <GL/glew.h>
#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <algorithm>
#include <iterator>

namespace korvane
{

int32_t rdstate = 0;
int32_t runtime = 0;
static bool unanswered = false; // an expose has been asked for and has not come

static void DrawFrame()
{
    SetGradientMouse(); // the grid may have come, gone or moved under a resting pointer
    BgDrawBefore(&mainview);
    SceneDraw(&mainview);
    AssertBaseState("SceneDraw");
    BgDrawAfter(&mainview);
}

int ReDraw(GtkWidget* widget, GdkEventExpose* /*event*/)
{
    rdstate |= redrawing;
    unanswered = false;
    const bool exporting = cisign != 0;
    GdkGLDrawable* drawable = gtk_widget_get_gl_drawable(widget);
    if (gdk_gl_drawable_gl_begin(drawable, gtk_widget_get_gl_context(widget))) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        if (exporting) {
            CreateImageProgress();
        } else {
            DrawFrame();
            gdk_gl_drawable_swap_buffers(drawable);
        }
        gdk_gl_drawable_gl_end(drawable);
    }
    rdstate = exporting ? redrawwanted : 0; // the next tick asks for the next step at once
    return TRUE;
}

// Every step below says whether it changed the byte.

template <class Level> static bool StepLevel(Level& level, bool up)
{
    if (up ? level >= fadefull : level <= 0) {
        return false;
    }
    level = Level(level + (up ? 1 : -1));
    return true;
}

// A toggle-fade byte; the bits above its five are left alone.
template <class Byte> static bool StepToggle(Byte& byte)
{
    const int state = byte & fadedone;
    if (state == 0 || state == fadedone) {
        return false;
    }
    byte = Byte(byte + (state >= fadetarget ? 1 : -1));
    return true;
}

static bool StepBackground()
{
    bool changed = StepLevel(mainview.bgcubefade, mainview.bgshape == BACKGROUND_CUBE);
    changed |= StepLevel(mainview.bgplanefade, mainview.bgshape == BACKGROUND_PLANE);
    changed |= StepToggle(mainview.gradientfade);
    changed |= StepToggle(mainview.imagefade);
    changed |= StepToggle(mainview.smallcubefade);
    changed |= StepToggle(mainview.centerlinesfade);
    return changed;
}

static bool StepShapeDisplay()
{
    bool changed = StepLevel(mainview.sidesfade, mainview.showshape != SHAPE_LINES);
    changed |= StepLevel(mainview.linesfade, mainview.showshape != SHAPE_SIDES);
    return changed;
}

static bool StepHovers(ActiveElement* records, int number)
{
    bool changed = false;
    for (int i = 0; i < number; i++) {
        changed |= StepLevel(records[i].fade, records[i].hover != 0);
    }
    return changed;
}

static bool StepAllHovers()
{
    bool changed = StepHovers(activebgcube, int(std::size(activebgcube)));
    changed |= StepHovers(activepoints, activepointnumber);
    changed |= StepHovers(activestripes, activestripenumber);
    changed |= StepHovers(activesides, activesidenumber);
    return changed;
}

static bool StepSelected()
{
    bool changed = false;
    for (int i = 0; i < shapenumber; i++) {
        changed |= StepToggle(selected[i]);
    }
    return changed;
}

void PlayCamera()
{
    if (camposition == cameraframes) {
        return;
    }
    const CameraFrame& frame = camtable[camposition];
    std::copy_n(frame.rotation, std::size(frame.rotation), mainview.rotation);
    std::copy_n(frame.rotation, std::size(frame.rotation), mainview.freerotation);
    std::copy_n(frame.center, std::size(frame.center), mainview.center);
    mainview.scale = frame.scale;
    camposition++;
    RefreshView();
    rdstate |= redrawwanted;
}

// A window that is not on the screen gets no expose: an image is then made without one, a step in
// every other tick. After a step that took longer than a tick the next tick comes at once, before
// the toolkit can draw, and must be short, or the progress bar would stand still.
static void AskForFrame(GtkWidget* area)
{
    GdkWindow* window = gtk_widget_get_window(area);
    if (window == nullptr) {
        return;
    }
    if (cisign != 0 && unanswered) {
        ReDraw(area, nullptr);
        return;
    }
    gdk_window_invalidate_rect(window, nullptr, FALSE);
    unanswered = true;
}

// Moves everything that moves by itself.
static void StepView()
{
    bool changed = StepBackground();
    if (StepShapeDisplay()) {
        SearchActive(); // sides and lines can be picked while anything of them is shown
        changed = true;
    }
    bool projectionchanged = StepToggle(mainview.perspective);
    changed |= StepAllHovers();
    // A shape is left out of the projection while its byte is 0.
    projectionchanged |= StepSelected();
    if (projectionchanged) {
        RefreshView();
    }
    if (changed || projectionchanged) {
        rdstate |= redrawwanted;
    }
    PlayCamera();
}

int TimeLoop(void* area)
{
    runtime++;
    if (cisign == 0) { // an image is made of the view as it stood
        StepView();
    }
    if (rdstate == redrawwanted) {
        AskForFrame(GTK_WIDGET(area));
    }
    return TRUE;
}

} // namespace korvane
