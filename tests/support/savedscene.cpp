#include "tests/support/savedscene.h"

#include "scene/scenefile.h"

#include <cstdio>
#include <cstdlib>

namespace korvane::testing
{

std::string GetSceneText()
{
    char* bytes = nullptr;
    std::size_t length = 0;
    FILE* file = open_memstream(&bytes, &length);
    FolderSave(file, 0, 1);
    ShapeSave(file, 0);
    std::fclose(file);
    const std::string text(bytes, length);
    std::free(bytes);
    return text;
}

} // namespace korvane::testing
