// The end of the main window while an image is made, which needs a process to itself.
#include "export/image.h"

#include "tests/support/paintedshapes.h"
#include "tests/support/widgets.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

using namespace korvane;
using namespace korvane::testing;

TEST(CreateImage, IsGivenUpWhenTheMainWindowCloses)
{
    GtkWidget* window = ShowMainWindow();
    AddToScene(SquareAt(0, 0, 0), "square");
    int endings = 0;
    g_signal_handlers_disconnect_by_func(window, reinterpret_cast<gpointer>(gtk_main_quit),
                                         nullptr); // no main loop runs around this test
    AnswerDialog([&](GtkDialog* dialog) {
        g_signal_connect_swapped(dialog, "destroy", G_CALLBACK(+[](int* count) { ++*count; }),
                                 &endings);
        for (int i = 0; i < 20; i++) {
            ReDraw(FindWidget(window, GTK_TYPE_DRAWING_AREA), nullptr);
        }
        EXPECT_NE(imagebuffer, nullptr);
        gtk_widget_destroy(window);
        return true;
    });
    CreateImage();
    EXPECT_GT(endings, 0);
    EXPECT_EQ(cisign, 0);
    EXPECT_EQ(imagebuffer, nullptr);
    EXPECT_EQ(imagepixbuf, nullptr);
}
