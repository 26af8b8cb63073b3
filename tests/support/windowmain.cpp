// The entry point of the window tests: an X server of their own, and the toolkit started on it.

#include "tests/support/xserver.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <clocale>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1); // the same pixels on every machine
    const korvane::testing::XServer server(1280, 1024);
    gtk_init(&argc, &argv);
    gtk_gl_init(&argc, &argv);
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
