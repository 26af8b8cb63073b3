// Renaming, removing and adding nodes of the tree. Removing is one undo step and ends what the
// pointer has begun; renaming and a new folder are no step.
#pragma once

namespace korvane
{

// Asks for the name of a new folder and puts it where the selection says.
void NewFolder();

// Asks for another name of the one selected node and moves it to its sorted place. Nothing when
// none or several are selected.
void RenameSelected();

// Removes the selected nodes and all that is below them. Nothing, and no undo step, when none is
// selected.
void DelSelected();

// Removes the shape to which a side belongs, an index into activesides, and shows every other shape
// that is at all visible. Nothing, and no undo step, when there is no such side.
void RemoveShape(int activeside);

} // namespace korvane
