#include "scene/clipboard.h"

#include "geometry/normals.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "ui/input.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <cstring>

namespace korvane
{

static void EmptyClipboard()
{
    for (int i = 0; i < copyiternumber; i++) {
        FreeArray(copyiters[i].name);
        FreeArray(copyiters[i].children);
    }
    FreeArray(copyiters);
    copyiternumber = 0;
    for (int i = 0; i < copyshapenumber; i++) {
        DeleteShape(copyshapes[i]);
    }
    FreeArray(copyshapes);
    copyshapenumber = 0;
}

// Appends the shape as it stands on the screen; returns its place. Its view copy may be out of
// date: that of a shape that is not shown is not kept.
static int CopyShapeOfScene(int shapeindex)
{
    TransferPlainShape(shapeindex);
    Shape* copy = CopyShape(shapest[shapeindex]);
    // Deliberate: as many bytes, not normals. Nobody sees them: pasting derives them all again.
    std::memcpy(copy->normals, shapes[shapeindex]->normals, std::size_t(copy->normalnumber));
    GrowArray(copyshapes, copyshapenumber, copyshapenumber + 1);
    copyshapes[copyshapenumber] = copy;
    return copyshapenumber++;
}

void CopyTreeIter(int node)
{
    const TreeIter& source = treeiters[node];
    const int place = copyiternumber;
    GrowArray(copyiters, place, place + 1);
    copyiters[place] = CopyNode(source);
    copyiternumber++;
    if (source.type != NODE_FOLDER) {
        copyiters[place].shapeindex = CopyShapeOfScene(source.shapeindex);
    }
    for (int i = 0; i < source.childnumber; i++) {
        copyiters[place].children[i] = copyiternumber; // the one that comes next
        CopyTreeIter(source.children[i]);
    }
}

void CopySelected()
{
    EmptyClipboard();
    for (int node : GetTopSelectedNodes()) {
        CopyTreeIter(node);
    }
}

// Adds a copied shape to the scene, carried back from the screen.
static void PasteShape(const Shape* copy)
{
    Shape* shape = CopyShape(copy);
    ReTransferPoints(&mainview, shape->points, shape->pointnumber);
    ReTransferPoints(&mainview, &shape->center, 1);
    SetNormalsOfShape(shape);
    AddShape(shape);
}

// The nodes without their rows.
static int PasteNodes(int parent, int copyindex)
{
    const TreeIter& copy = copyiters[copyindex];
    int shapeindex = -1;
    if (copy.type != NODE_FOLDER) {
        shapeindex = shapenumber;
        PasteShape(copyshapes[copy.shapeindex]);
    }
    const int node = AppendTreeIter(parent, copy.type, shapeindex, CopyText(copy.name));
    PutAtSortedPlace(node, parent);
    for (int i = 0; i < copy.childnumber; i++) {
        PasteNodes(node, copy.children[i]);
    }
    return node;
}

int PasteTreeIter(int parent, int copyindex)
{
    const int node = PasteNodes(parent, copyindex);
    ShowRowsOfNode(node);
    return node;
}

// The next copied node that is not below this one.
static int SkipSubtree(int copyindex)
{
    while (copyiters[copyindex].childnumber > 0) {
        copyindex = copyiters[copyindex].children[copyiters[copyindex].childnumber - 1];
    }
    return copyindex + 1;
}

// Every node goes where the selection says, which grows by the nodes pasted before it. But after
// the first, further nodes beside it change that place no more: it is asked for once, and the rows
// of all the others are shown and selected together.
static void PasteCopies()
{
    const int first = PasteTreeIter(GetTreePutPlace(), 0);
    if (!IsInSelection(first)) {
        SelectRow(first);
    }
    const int place = GetTreePutPlace();
    const int firstother = treeiternumber;
    for (int i = SkipSubtree(0); i < copyiternumber; i = SkipSubtree(i)) {
        PasteNodes(place, i);
    }
    ShowNewRows(place, firstother);
    if (!IsInSelection(place)) {
        SelectNewRows(place, firstother);
    }
}

void PasteSelected()
{
    if (copyiternumber == 0) {
        return;
    }
    EndPointerActions();
    PushScene();
    PasteCopies();
    SetActives();
    RefreshView(); // only what has been projected can be picked
    rdstate |= redrawwanted;
}

} // namespace korvane
