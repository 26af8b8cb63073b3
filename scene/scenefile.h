// The scene file: one plain text file with the folder tree and every shape. Real numbers carry a
// decimal comma whatever the user's locale; a token is a run of ASCII letters, digits, "/", "-" and
// ",". What is read is never trusted: counts are checked against the bytes that are left, indices
// against their arrays. Reading and writing are in one piece: a file that cannot be accepted leaves
// the scene alone.
#pragma once

#include <cstdio>

namespace korvane
{

// Length of a token buffer, with the terminating zero; a longer token is cut and its rest consumed.
constexpr int tokensize = 2048;

// Reads the next token into `buffer` (tokensize bytes). 0 a token was read, 1 the file has ended,
// which leaves the buffer as it was.
int ReadToken(FILE* file, char* buffer);

// Loads a scene in the place of the current one and asks for a redraw. 0 on success; 1 after the
// error dialog: the scene is as it was, or empty when a scene file breaks off before its folders.
int OpenMrt(const char* path);

// Writes the scene beside `path` and moves it over. 0 on success; 1 after the error dialog, and the
// old file is as it was.
int SaveMrt(const char* path);

void FolderSave(FILE* file, int node, int depth); // the folder lines below node
void ShapeSave(FILE* file, int node);             // the shape blocks below node

int NewMrt();    // empties the undo buffer and the scene; returns 0
void DelScene(); // deletes every shape and every node but the root

// The commands of the file toolbar.
void New();
void Open();
void Save();
void SaveAs();

} // namespace korvane
