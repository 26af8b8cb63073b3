#include "tests/monkey/fingerprint.h"

#include "scene/model.h"
#include "scene/treeview.h"

namespace korvane::testing
{

template <class T> static void Append(std::string& bytes, const T* values, int number)
{
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    bytes.append(reinterpret_cast<const char*>(values), std::size_t(number) * sizeof(T));
}

static void AppendShape(std::string& bytes, const Shape& shape)
{
    Append(bytes, &shape.points[0][0], 3 * shape.pointnumber);
    Append(bytes, shape.vertexes, shape.vertexnumber);
    for (int i = 0; i < shape.stripenumber; i++) {
        Append(bytes, shape.stripes[i].points, shape.stripes[i].pointnumber);
    }
    for (int i = 0; i < shape.trianglenumber; i++) {
        Append(bytes, shape.triangles[i].points, 3);
    }
    for (int i = 0; i < shape.sidenumber; i++) {
        const Side& side = shape.sides[i];
        Append(bytes, side.points, side.pointnumber);
        Append(bytes, side.triangles, side.trianglenumber);
        Append(bytes, side.colors, colornumber);
        Append(bytes, &side.visibility, 1);
    }
}

std::string GetFingerprint()
{
    std::string bytes;
    for (int i = 0; i < shapenumber; i++) {
        AppendShape(bytes, *shapes[i]);
    }
    for (int i = 0; i < treeiternumber; i++) {
        const TreeIter& node = treeiters[i];
        bytes += node.name;
        Append(bytes, &node.type, 1);
        Append(bytes, &node.shapeindex, 1);
        Append(bytes, &node.parent, 1);
        Append(bytes, node.children, node.childnumber);
    }
    return bytes;
}

} // namespace korvane::testing
