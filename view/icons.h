// Where the icon files are, and how they are read: from "icons" under the working directory if the
// file is there, else from the installed data folder. A missing or unreadable icon is never an
// error: the program shows something plain in its place and prints one line.
#pragma once

typedef struct _GdkPixbuf GdkPixbuf;

namespace korvane
{

// Where the icons and the examples are installed. Written by nobody but tests.
extern const char* datafolder;

// The full path of a file under "icons". The caller frees it (g_free).
char* GetIconPath(const char* name);

// The picture in a file under "icons", or null after one line on standard output. The caller unrefs
// it.
GdkPixbuf* GetIconPixbuf(const char* name);

} // namespace korvane
