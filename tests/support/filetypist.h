// A user who types the path of a file into a file dialog.
#pragma once

#include <gtk/gtk.h>

#include <string>

namespace korvane::testing
{

GtkFileChooser* GetChooser(GtkDialog* dialog);

std::string TakeText(char* text); // frees what GLib allocated

void Press(GtkDialog* dialog, int response); // the dialog's button

// The chooser empties the entry, or moves on to its list, when it has read a folder: the path is
// typed again until it has been the answer for a while.
class Typist
{
public:
    explicit Typist(std::string wanted);

    bool Type(GtkDialog* dialog); // true when it is done

private:
    std::string path;
    int steady = 0;
};

} // namespace korvane::testing
