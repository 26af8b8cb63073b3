// Stands in for the dialogs and the status bar in a test program without a window: what the user
// would be shown is kept, and file dialogs answer what the test says. It defines the functions of
// ui/dialogs.h, so a program includes it in one file at most, and never together with the window.
#pragma once

#include "ui/dialogs.h"

#include <cstring>
#include <string>
#include <vector>

namespace korvane::testing
{

inline std::vector<std::string> errors; // the texts of the error dialogs since ForgetDialogs
inline std::vector<int> filemodes;      // the modes of the file dialogs
inline std::string statustext;          // the last text of the status bar
inline std::string chosenfile;          // what a file dialog answers; cancelled when empty

inline void ForgetDialogs()
{
    errors.clear();
    filemodes.clear();
    statustext.clear();
    chosenfile.clear();
}

} // namespace korvane::testing

namespace korvane
{

GtkWidget* mainwindow = nullptr;
GtkWidget* statusbar = nullptr;

void ErrorDialog(const char* text)
{
    testing::errors.emplace_back(text);
}

int QuestionDialog(const char*)
{
    return 0;
}

Block<char[]> FileDialog(int mode)
{
    testing::filemodes.push_back(mode);
    const std::string& file = testing::chosenfile;
    return file.empty() ? nullptr : CopyText(file);
}

Block<char[]> GetName(const char*, const char*, const char*)
{
    return nullptr;
}

void PrintStatusBar(const char* text)
{
    testing::statustext = text;
}

} // namespace korvane
