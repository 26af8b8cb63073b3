// The entry point of the window tests: an X server of their own, and the toolkit started on it.

#include "tests/support/xserver.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <clocale>
#include <filesystem>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1); // the same pixels on every machine
    char settings[] =
        "/tmp/korvane-settings-XXXXXX"; // the user's own are neither heard nor changed
    setenv("XDG_CONFIG_HOME", mkdtemp(settings), 1);
    const korvane::testing::XServer server(1280, 1024);
    gtk_init(&argc, &argv);
    gtk_gl_init(&argc, &argv);
    std::setlocale(LC_NUMERIC, "C");
    const int result = RUN_ALL_TESTS();
    std::filesystem::remove_all(settings);
    return result;
}
