// The command that brings into view what is selected in the tree.
#pragma once

namespace korvane
{

// Flies to where the selected shapes fill the view; does nothing when no row is selected.
void SelectedFit();

void ZoomFit(); // the toolbar's name for it

} // namespace korvane
