#include "view/glsetup.h"

#include "ui/dialogs.h"
#include "view/basestate.h"
#include "view/mainview.h"
#include "view/textures.h"

#include <GL/glew.h>
#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <cstdio>
#include <cstdlib>

namespace korvane
{

unsigned int arbid[programnumber] = {};
char shaderok = 1;
char antialiasingok = 1;
char forcefixed = 0;
unsigned int textidns = 0;
unsigned int textidpont = 0;

static constexpr float background = 0.3F;   // the grey of a cleared frame
static constexpr float pointsize = 5.0F;    // pixels
static constexpr int indicatorsize = 32;    // pixels of the new-shape indicator's texture
static constexpr int markersize = 16;       // pixels of the point markers' texture
static constexpr int crosshairhotspot = 21; // its middle, from the left and from the top
static constexpr double neardepth = 2.0;    // half the depth that is drawn, in view units

bool UsesPrograms()
{
    return shaderok != 0 && forcefixed == 0;
}

// GLEW finds OpenGL's later functions. Without it nothing can be drawn.
static void StartGlew(GdkGLDrawable* drawable)
{
    const GLenum error = glewInit();
    if (error != GLEW_OK) {
        if (drawable != nullptr) {
            gdk_gl_drawable_gl_end(drawable); // the dialog runs a main loop of its own
        }
        ErrorDialog(reinterpret_cast<const char*>(glewGetErrorString(error)));
        std::exit(1);
    }
}

static void SetClearing()
{
    glClearColor(background, background, background, 0);
    glClearDepth(1.0);
}

// Colours blend as usual; the squares of the alphas add up apart. Without OpenGL 1.4 both blend
// alike.
static void SetBlending()
{
    if (GLEW_VERSION_1_4) {
        glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_SRC_ALPHA, GL_DST_ALPHA);
    } else {
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        antialiasingok = 0;
    }
}

static void SetPrograms()
{
    const bool available = GLEW_ARB_vertex_program && GLEW_ARB_fragment_program;
    if (!available || !LoadPrograms(arbid)) {
        shaderok = 0;
    }
}

void InitGl(GtkWidget* widget)
{
    GdkGLDrawable* drawable = gtk_widget_get_gl_drawable(widget);
    if (drawable != nullptr) {
        gdk_gl_drawable_gl_begin(drawable, gtk_widget_get_gl_context(widget));
    }
    StartGlew(drawable); // fails when no context has become current
    SetClearing();
    SetBaseState();
    SetBlending();
    glPointSize(pointsize);
    SetPrograms();
    textidns = CreateIconTexture("new.png", indicatorsize);
    textidpont = CreateIconTexture("pont.png", markersize);
    AssertBaseState("InitGl");
    gdk_gl_drawable_gl_end(drawable);
}

void SetViewProjection()
{
    float halfwidth = 0;
    float halfheight = 0;
    GetHalfView(&halfwidth, &halfheight);
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-halfwidth, halfwidth, -halfheight, halfheight, -neardepth, neardepth);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

// The cross-hair, made once; null when its file cannot be read or is too small for its hot spot,
// which gives the window the default pointer.
static GdkCursor* GetCrosshair()
{
    static GdkCursor* crosshair = nullptr; // kept for the whole run
    static bool tried = false;
    if (tried) {
        return crosshair;
    }
    tried = true;
    GdkPixbuf* icon = GetIconPixbuf("crosshair.png");
    if (icon == nullptr) {
        return nullptr;
    }
    if (gdk_pixbuf_get_width(icon) > crosshairhotspot &&
        gdk_pixbuf_get_height(icon) > crosshairhotspot) {
        crosshair = gdk_cursor_new_from_pixbuf(gdk_display_get_default(), icon, crosshairhotspot,
                                               crosshairhotspot);
    } else {
        std::printf("The icon crosshair.png is too small\n");
    }
    g_object_unref(icon);
    return crosshair;
}

int ConfigGl(GtkWidget* widget, GdkEventConfigure* /*event*/)
{
    GtkAllocation allocation;
    gtk_widget_get_allocation(widget, &allocation);
    width = allocation.width;
    height = allocation.height;
    GdkGLDrawable* drawable = gtk_widget_get_gl_drawable(widget);
    if (gdk_gl_drawable_gl_begin(drawable, gtk_widget_get_gl_context(widget))) {
        SetViewProjection();
        gdk_gl_drawable_gl_end(drawable);
    }
    RefreshView(); // what is culled and what can be picked depend on the view's shape
    gdk_window_set_cursor(gtk_widget_get_window(widget), GetCrosshair());
    return TRUE;
}

} // namespace korvane
