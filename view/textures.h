// Textures made from icon files.
#pragma once

namespace korvane
{

// A new texture of `size` by `size` pixels with linear filters, made from an icon file and scaled
// to that size; plain white when the file cannot be read. A context must be current; the caller
// owns the name.
unsigned int CreateIconTexture(const char* name, int size);

} // namespace korvane
