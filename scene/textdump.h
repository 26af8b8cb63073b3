// Diagnostic output for those who work on the program; no command calls it.
#pragma once

namespace korvane
{

// Writes the model shape `index` with its stripes to the text file `path`. Nothing when there is no
// such shape or the file cannot be created. Returns 0.
int SaveShapeInTxt(int index, const char* path);

// Prints the next progress mark, counting from 0, and flushes standard output. Returns 0.
int PrintOk();

} // namespace korvane
