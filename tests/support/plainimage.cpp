#include "tests/support/plainimage.h"

#include "export/imagetiles.h"
#include "geometry/rounding.h"
#include "view/mainview.h"

#include <GL/glew.h>

namespace korvane::testing
{

static int CollectInto(std::vector<ImageTriangle>& triangles)
{
    int number = 0;
    for (int i = 0; i < shapenumber; i++) {
        if (showtable[i] == SHOW_PLAIN) {
            number = AddTrianglesOfShape(triangles.data(), number, round1t[i]);
        } else if (showtable[i] == SHOW_ROUNDED) {
            Shape* finer = RoundShape(round1t[i]);
            number = AddTrianglesOfShape(triangles.data(), number, finer);
            DeleteShape(finer);
        }
    }
    return number;
}

std::vector<ImageTriangle> CollectTriangles()
{
    cisign = 1;
    TransferAllShape();
    std::vector<ImageTriangle> triangles;
    triangles.resize(std::size_t(EstimateTriangles()));
    triangles.resize(std::size_t(CollectInto(triangles)));
    std::vector<float> keys(triangles.size());
    std::vector<int> order(triangles.size());
    SetTriangleKeys(triangles.data(), int(triangles.size()), keys.data(), order.data());
    SetTriangleSequence(keys.data(), order.data(), int(triangles.size()));
    cisign = 0;
    std::vector<ImageTriangle> sorted;
    for (const int index : order) {
        sorted.push_back(triangles[std::size_t(index)]);
    }
    return sorted;
}

static void LoadLight(const ImageTriangle& triangle)
{
    const float* colors = triangle.colors;
    const float control[4] = {colors[FRONT_ACUITY], colors[BACK_ACUITY],
                              triangle.front != 0 ? 1.0F : -1.0F, 0};
    glLightfv(GL_LIGHT0, GL_DIFFUSE, colors + FRONT_LIGHT);
    glLightfv(GL_LIGHT0, GL_SPECULAR, colors + FRONT_SHADOW);
    glLightfv(GL_LIGHT1, GL_DIFFUSE, colors + BACK_LIGHT);
    glLightfv(GL_LIGHT1, GL_SPECULAR, colors + BACK_SHADOW);
    glLightfv(GL_LIGHT0, GL_AMBIENT, control);
}

static void AddCorners(const ImageTriangle& triangle)
{
    for (int i = 0; i < 3; i++) {
        glNormal3fv(triangle.normals[i]);
        glVertex3fv(triangle.vertices[i]);
    }
}

static void AddWithLight(const ImageTriangle& triangle)
{
    glEnable(GL_LIGHTING);
    LoadLight(triangle);
    glBegin(GL_TRIANGLES);
    AddCorners(triangle);
    glEnd();
    glDisable(GL_LIGHTING);
}

static void AddAllInOneLight(const std::vector<ImageTriangle>& triangles)
{
    LoadLight(triangles.front());
    glBegin(GL_TRIANGLES);
    for (const ImageTriangle& triangle : triangles) {
        AddCorners(triangle);
    }
    glEnd();
}

static unsigned int Compile(const std::vector<ImageTriangle>& triangles, LightStates states)
{
    const unsigned int list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    if (states == LIGHT_ONCE) {
        AddAllInOneLight(triangles);
    } else {
        for (const ImageTriangle& triangle : triangles) {
            AddWithLight(triangle);
        }
    }
    glEndList();
    return list;
}

std::vector<unsigned char> DrawPlainly(const std::vector<ImageTriangle>& triangles,
                                       LightStates states)
{
    std::vector<unsigned char> image(std::size_t(imagewidth) * imageheight * 4);
    const unsigned int list = Compile(triangles, states);
    const ImageTriangle* first = triangles.data();
    const double halfdepth = GetHalfDepth(GetTileSets(first, int(triangles.size())), first);
    MakeTileBuffer();
    for (int tile = 0; tile < tilenumber; tile++) {
        for (int pass = 0; pass < tilepasses; pass++) {
            DrawTilePart({tile, pass, halfdepth}, list, true, true);
        }
        StoreTile(tile, image.data());
    }
    FreeTileBuffer();
    glDeleteLists(list, 1);
    return image;
}

} // namespace korvane::testing
