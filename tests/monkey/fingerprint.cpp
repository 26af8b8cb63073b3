#include "tests/monkey/fingerprint.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/shapebytes.h"

namespace korvane::testing
{

template <class T> static void Append(std::string& bytes, const T* values, int number)
{
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    bytes.append(reinterpret_cast<const char*>(values), std::size_t(number) * sizeof(T));
}

std::string GetFingerprint()
{
    std::string bytes;
    for (int i = 0; i < shapenumber; i++) {
        bytes += GetBytes(*shapes[i]);
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
