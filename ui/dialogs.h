// The modal dialogs with which commands talk to the user, and the status bar. Every dialog is
// transient for the main window, runs until it is answered and is gone before the routine returns.
#pragma once

#include "scene/arrays.h"

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

extern GtkWidget* mainwindow; // the window of the program; null before GetMainWindow
extern GtkWidget* statusbar;  // the status bar; null before GetMainWindow

enum FileMode {
    FILE_OPENSCENE = 0,
    FILE_OPENIMAGE = 1,
    FILE_SAVESCENE = 2, // under the remembered name, without asking when there is one
    FILE_SAVESCENEAS = 3,
    FILE_EXPORTOBJ = 4,
    FILE_SAVEIMAGE = 5
};

// A caller that has begun a GL drawable ends it first: the dialog runs a main loop of its own.
void ErrorDialog(const char* text);

int QuestionDialog(const char* text); // 1 exactly when the answer is Yes

// Asks for a file name by a FileMode; null when cancelled. Each kind of file remembers its last
// name while the program runs and starts there again. Leaves the pointer's button state idle.
Block<char[]> FileDialog(int mode);

// Asks for a name, starting from `text`; null when cancelled or empty. Counts characters and copies
// bytes; what it hands over is valid UTF-8.
Block<char[]> GetName(const char* title, const char* prompt, const char* text);

// Makes `text` the one message of the status bar. Nothing before the window exists.
void PrintStatusBar(const char* text);

} // namespace korvane
