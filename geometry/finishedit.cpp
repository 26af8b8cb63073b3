#include "geometry/finishedit.h"

#include "geometry/normals.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

namespace korvane
{

void FinishEdit(int shapeindex)
{
    SetNormalsOfShape(shapes[shapeindex]);
    ChangeShape(shapeindex);
    TransferOneShape(shapeindex);
    SetActives();
    SetTypeOfShapeNode(shapeindex);
    rdstate |= redrawwanted;
}

} // namespace korvane
