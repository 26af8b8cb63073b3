// The dialogs of the transform tools, and a small scene for them.
#pragma once

#include "tests/support/pointer.h"

#include <functional>
#include <vector>

namespace korvane::testing
{

std::vector<GtkWidget*> GetSliders(GtkDialog* dialog);

// As when the user moves a slider of the dialog to a value.
void Slide(GtkDialog* dialog, std::size_t slider, double value);

// Opens a tool's dialog, looks at it and answers it.
void Open(int tool, int response, const std::function<void(GtkDialog*)>& look);

// Two boxes of half edge 0.1 in the middle and a square to the right of them, all projected: sides
// 0 to 5, 6 to 11 and 12.
class TransformScene : public PointerTest
{
protected:
    void SetUp() override;
    void TearDown() override;
};

} // namespace korvane::testing
