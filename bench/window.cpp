#include "bench/window.h"

#include "scene/arrays.h"
#include "tests/support/xserver.h"
#include "view/glsetup.h"

#include <GL/glew.h>
#include <benchmark/benchmark.h>
#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <cstdlib>

namespace korvane::bench
{

static void OpenWindow()
{
    static const int attributes[] = {GDK_GL_DOUBLEBUFFER,    GDK_GL_RGBA, GDK_GL_RED_SIZE,   1,
                                     GDK_GL_GREEN_SIZE,      1,           GDK_GL_BLUE_SIZE,  1,
                                     GDK_GL_ALPHA_SIZE,      1,           GDK_GL_DEPTH_SIZE, 24,
                                     GDK_GL_ATTRIB_LIST_NONE};
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWidget* area = gtk_drawing_area_new();
    gtk_widget_set_size_request(area, windowwidth, windowheight);
    gtk_widget_set_gl_capability(area, gdk_gl_config_new(attributes), nullptr, TRUE,
                                 GDK_GL_RGBA_TYPE);
    g_signal_connect_after(area, "realize", G_CALLBACK(InitGl), nullptr);
    g_signal_connect(area, "configure_event", G_CALLBACK(ConfigGl), nullptr);
    gtk_container_add(GTK_CONTAINER(window), area);
    gtk_widget_show_all(window);
    while (gtk_events_pending()) {
        gtk_main_iteration();
    }
    gdk_gl_drawable_gl_begin(gtk_widget_get_gl_drawable(area), gtk_widget_get_gl_context(area));
}

int RunInWindow(int argc, char** argv)
{
    KeepFreedMemory(); // as the program does
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    const korvane::testing::XServer server(1280, 1024);
    gtk_init(&argc, &argv);
    gtk_gl_init(&argc, &argv);
    OpenWindow();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace korvane::bench
