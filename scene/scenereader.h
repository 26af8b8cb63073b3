// From the bytes of a scene file to a draft of the scene. Nothing of what is read is trusted: a
// list ends with the file, whatever its count says, and a shape whose sides cannot be spanned
// between its points is left out and named. Of a file that ends too early what is there is kept and
// what is not is counted. The draft knows no tree and no window; OpenMrt puts it into the scene.
#pragma once

#include "scene/model.h"

#include <string>
#include <string_view>
#include <vector>

namespace korvane
{

constexpr int norootfolder = -1; // the place of what stands at the top level

struct FolderDraft {
    std::string name; // without the slashes of its depth
    int parent;       // an earlier index in SceneDraft::folders, or norootfolder
};

struct ShapeDraft {
    std::string name; // without its folders
    int folder;       // an index in SceneDraft::folders, or norootfolder
    OwnedShape shape;
};

struct DroppedShape {
    std::string path;   // as the file has it
    const char* reason; // a constant; a clause that follows "because"
};

struct SceneDraft {
    bool isscene = false; // the header is that of a scene file; without it nothing else is filled
    bool hasfolders = false; // the folders follow the shape count; without them there is no more
    bool mismatched = false; // some later keyword was another than expected; nothing hangs on it
    std::vector<FolderDraft> folders; // in file order
    std::vector<ShapeDraft> shapes;   // in file order
    std::vector<DroppedShape> dropped;
    int announced = 0; // how many shapes the file says it has; not negative
    int whole = 0;     // how many of `shapes` the file has to their end; the last may be cut off
};

// Reads a whole file. The shapes have points, vertexes, sides and room for their triangles; what is
// derived is missing (see DeriveLoadedShape).
SceneDraft ReadScene(std::string_view bytes);

// Cuts the triangles of a shape that was read and builds its stripes, normals and edges.
void DeriveLoadedShape(Shape* shape);

} // namespace korvane
