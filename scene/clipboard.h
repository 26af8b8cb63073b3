// Copy and paste of folders and shapes. The clipboard keeps shapes as they stood on the screen when
// they were copied, and pasting carries them back through the camera of that moment: what is pasted
// appears where it was copied, even when the camera has moved in between. It survives a new scene,
// so that shapes can be carried from one into another.
#pragma once

namespace korvane
{

// Replaces the clipboard's content by the selected nodes with all that is below them, each once.
void CopySelected();

// Appends the copy of a node and of all that is below it to the clipboard.
void CopyTreeIter(int node);

// Puts what is on the clipboard into the tree, at the place that the selection names, and selects
// it there. Ends what the pointer has begun. Nothing, and no undo step, when the clipboard is
// empty.
void PasteSelected();

// Puts the copied node `copyindex` and all that is below it into the folder `parent`, with its
// rows. The scene is not projected. Returns the new node.
int PasteTreeIter(int parent, int copyindex);

} // namespace korvane
