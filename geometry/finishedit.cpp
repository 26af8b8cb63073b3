#include "geometry/finishedit.h"

#include "geometry/normals.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

namespace korvane
{

void DeriveEditedShape(int shapeindex)
{
    ChangeShape(shapeindex);
    TransferOneShape(shapeindex);
    SetActives();
    SetTypeOfShapeNode(shapeindex);
}

void FinishEdit(int shapeindex)
{
    SetNormalsOfShape(shapes[shapeindex]);
    DeriveEditedShape(shapeindex);
    rdstate |= redrawwanted;
}

} // namespace korvane
