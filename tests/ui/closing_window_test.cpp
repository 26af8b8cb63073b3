// The end of the window, which needs a process to itself.
#include "ui/mainwindow.h"

#include "tests/support/widgets.h"
#include "view/frameloop.h"

#include <gtest/gtest.h>

using namespace korvane;
using namespace korvane::testing;

static gboolean DestroyWindow(void* window)
{
    gtk_widget_destroy(GTK_WIDGET(window));
    return FALSE;
}

TEST(MainWindow, StartsWithNoRedrawWantedAndEndsTheMainLoopWhenItIsClosed)
{
    rdstate = redrawwanted;
    GtkWidget* window = GetMainWindow();
    EXPECT_EQ(rdstate, 0);
    EXPECT_FALSE(gtk_widget_get_visible(window)); // its caller shows it
    gtk_widget_show_all(window);
    g_timeout_add(100, DestroyWindow, window);
    gtk_main(); // does not return unless closing ends it

    const int ticks = runtime;
    g_usleep(3 * tickmilliseconds * 1000);
    HandleEvents();
    EXPECT_EQ(runtime, ticks); // no tick meets a window that is gone
}
