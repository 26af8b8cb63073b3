#include "view/selectedfit.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "view/cameraflight.h"

namespace korvane
{

void SelectedFit()
{
    if (treeselectednumber == 0) { // GetSelectedShapes would mean all shapes then
        return;
    }
    int count = 0;
    const Block<int[]> indices = GetSelectedShapes(&count);
    FitShapes(indices.get(), count);
}

void ZoomFit()
{
    SelectedFit();
}

} // namespace korvane
