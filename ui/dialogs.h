// The modal dialogs with which commands talk to the user, and the status bar. Every dialog is transient
// for the main window, runs until it is answered and is gone before the routine returns.
#pragma once

#include "scene/arrays.h"

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

extern GtkWidget* statusbar; // the status bar; filled by GetMainWindow

enum FileMode {
    FILE_OPENSCENE = 0,
    FILE_OPENIMAGE = 1,
    FILE_SAVESCENE = 2, // under the remembered name, without asking when there is one
    FILE_SAVESCENEAS = 3,
    FILE_EXPORTOBJ = 4,
    FILE_SAVEIMAGE = 5
};

void ErrorDialog(const char* text);

int QuestionDialog(const char* text); // 1 exactly when the answer is Yes

// Asks for a file name; null when cancelled. The names of each kind are remembered while the program runs.
Block<char[]> FileDialog(int mode);

// Asks for a name; null when cancelled or empty. Counts characters and copies bytes.
Block<char[]> GetName(const char* title, const char* prompt, const char* text);

void PrintStatusBar(const char* text); // the status bar shows this one message

} // namespace korvane
