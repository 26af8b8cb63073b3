#include "tests/support/shapebytes.h"

#include "scene/model.h"

namespace korvane::testing
{

template <class T> static void Append(std::string& bytes, const T* values, int number)
{
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    bytes.append(reinterpret_cast<const char*>(values), std::size_t(number) * sizeof(T));
}

std::string GetMeshBytes(const Shape& shape)
{
    std::string bytes;
    Append(bytes, shape.points, shape.pointnumber);
    Append(bytes, shape.normals, shape.normalnumber);
    Append(bytes, shape.vertexes, shape.vertexnumber);
    Append(bytes, shape.trianglenormals, shape.trianglenumber);
    Append(bytes, shape.edges, shape.edgenumber);
    for (int i = 0; i < shape.stripenumber; i++) {
        Append(bytes, shape.stripes[i].points, shape.stripes[i].pointnumber);
    }
    for (int i = 0; i < shape.trianglenumber; i++) {
        Append(bytes, shape.triangles[i].points, 3);
        Append(bytes, shape.triangles[i].normals, 3);
    }
    for (int i = 0; i < shape.sidenumber; i++) {
        const Side& side = shape.sides[i];
        Append(bytes, side.points, side.pointnumber);
        Append(bytes, side.triangles, side.trianglenumber);
        Append(bytes, side.colors, colornumber);
        Append(bytes, &side.visibility, 1);
    }
    return bytes;
}

static std::string GetBoundBytes(const Shape& shape)
{
    std::string bytes;
    Append(bytes, shape.center, 3);
    Append(bytes, &shape.radius, 1);
    return bytes;
}

std::string GetBytes(const Shape& shape)
{
    return GetMeshBytes(shape) + GetBoundBytes(shape);
}

std::string GetSceneBytes()
{
    std::string bytes;
    for (int i = 0; i < shapenumber; i++) {
        bytes += GetBytes(*shapes[i]) + GetBytes(*round1[i]);
        Append(bytes, &showtable[i], 1);
        bytes += GetBoundBytes(*shapest[i]); // by which a shape is left out
        bytes += showtable[i] != SHOW_NOTHING ? GetMeshBytes(*shapest[i]) : "";
        bytes += showtable[i] == SHOW_ROUNDED ? GetMeshBytes(*round1t[i]) : "";
    }
    return bytes;
}

} // namespace korvane::testing
