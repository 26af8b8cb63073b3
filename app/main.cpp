// The entry point: starts the toolkit, shows the main window, loads the scene named on the command
// line.

#include "app/trackedmemory.h"
#include "scene/arrays.h"
#include "scene/scenefile.h"
#include "ui/mainwindow.h"

#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

// Ends the program unless the name is longer than its extension and ends in ".mrt", case and all.
static void CheckName(const char* name)
{
    const std::size_t length = std::strlen(name);
    if (length <= 4 || std::strcmp(name + length - 4, ".mrt") != 0) {
        std::printf("Usage: korvane [path/]filename\n");
        std::exit(0);
    }
}

static void CheckFile(const char* name)
{
    // opening a pipe would wait for its other end
    const int descriptor = open(name, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        std::printf("Can't open the file\n");
        std::exit(1);
    }
    close(descriptor);
}

int main(int argc, char** argv)
{
    korvane::KeepFreedMemory();
    korvane::SetUpTrackedMemory();
    gtk_init(&argc, &argv);
    gtk_gl_init(&argc, &argv);
    std::setlocale(LC_NUMERIC, "C"); // meshes and read-outs carry points for every user

    GtkWidget* window = korvane::GetMainWindow();
    gtk_window_maximize(GTK_WINDOW(window));
    gtk_widget_show_all(window); // before the command line is looked at

    if (argc > 1) { // further arguments are ignored
        CheckName(argv[1]);
        CheckFile(argv[1]);
        korvane::OpenMrt(argv[1]);
    }
    gtk_main();
    return 0;
}
