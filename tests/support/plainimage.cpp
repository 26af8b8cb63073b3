#include "tests/support/plainimage.h"

#include "geometry/rounding.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/programs.h"

#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane::testing
{

static int CollectInto(std::vector<ImageTriangle>& triangles)
{
    int number = 0;
    for (int i = 0; i < shapenumber; i++) {
        if (showtable[i] == SHOW_PLAIN) {
            number = AddTrianglesOfShape(triangles.data(), number, round1t[i]);
        } else if (showtable[i] == SHOW_ROUNDED) {
            const OwnedShape finer(RoundShape(round1t[i]));
            number = AddTrianglesOfShape(triangles.data(), number, finer.get());
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

// A buffer of this method's own, as large as a tile.
struct Canvas {
    GLuint framebuffer = 0;
    GLuint buffers[2] = {}; // colour and depth
};

static Canvas MakeCanvas()
{
    Canvas canvas;
    glGenFramebuffers(1, &canvas.framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, canvas.framebuffer);
    glGenRenderbuffers(2, canvas.buffers);
    constexpr GLenum kinds[2][2] = {{GL_COLOR_ATTACHMENT0, GL_RGBA8},
                                    {GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24}};
    for (int i = 0; i < 2; i++) {
        glBindRenderbuffer(GL_RENDERBUFFER, canvas.buffers[i]);
        glRenderbufferStorage(GL_RENDERBUFFER, kinds[i][1], 256, 256);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, kinds[i][0], GL_RENDERBUFFER, canvas.buffers[i]);
    }
    return canvas;
}

static void FreeCanvas(const Canvas& canvas)
{
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glDeleteFramebuffers(1, &canvas.framebuffer);
    glDeleteRenderbuffers(2, canvas.buffers);
}

static void CallLit(unsigned int list)
{
    glEnable(GL_VERTEX_PROGRAM_ARB);
    glEnable(GL_FRAGMENT_PROGRAM_ARB);
    glBindProgramARB(GL_VERTEX_PROGRAM_ARB, arbid[LIT_VERTEX]);
    glBindProgramARB(GL_FRAGMENT_PROGRAM_ARB, arbid[LIT_FRAGMENT]);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHT1);
    glCallList(list);
    glDisable(GL_LIGHT1);
    glDisable(GL_LIGHT0);
    glDisable(GL_FRAGMENT_PROGRAM_ARB);
    glDisable(GL_VERTEX_PROGRAM_ARB);
}

// No corner lies farther before or behind the view's middle.
static double GetDepth(const std::vector<ImageTriangle>& triangles)
{
    double depth = 2; // where faces coincide, depths must round alike
    for (const ImageTriangle& triangle : triangles) {
        for (const float* corner : triangle.vertices) {
            depth = std::max(depth, 1.01 * std::abs(corner[2]));
        }
    }
    return depth;
}

static void SetProjection(double depth)
{
    glViewport(0, 0, 256, 256);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-0.125, 0.125, -0.125, 0.125, -depth, depth);
    glMatrixMode(GL_MODELVIEW);
}

using TilePixels = std::array<float, 256UL * 256 * 4>; // rows from the bottom

// Four passes that lie a part of a pixel, 0.25 / 256, apart.
static void AverageTile(int column, int row, unsigned int list, TilePixels& average)
{
    static constexpr double moves[4][2] = {{-0.000203269, 0.000345439},
                                           {0.000199071, -0.000345488},
                                           {-0.000285768, -0.000146431},
                                           {0.000289965, 0.000146479}};
    static std::array<unsigned char, 256UL * 256 * 4> pixels;
    average.fill(0);
    for (const double* move : moves) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glLoadIdentity();
        glTranslated((2 - column) * 0.25, (row - 1.5) * 0.25, 0);
        glTranslated(move[0], move[1], 0);
        CallLit(list);
        glReadPixels(0, 0, 256, 256, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        std::transform(average.begin(), average.end(), pixels.begin(), average.begin(),
                       [](float sum, unsigned char part) { return sum + 0.25F * float(part); });
    }
    glLoadIdentity();
}

static void PutTile(int column, int row, const TilePixels& tile, std::vector<float>& image)
{
    for (int y = 0; y < 256; y++) {
        const float* source = tile.data() + std::ptrdiff_t(255 - y) * 256 * 4;
        const std::ptrdiff_t place = std::ptrdiff_t(256 * row + y) * 1280 + 256 * column;
        std::copy_n(source, 256 * 4, image.begin() + place * 4);
    }
}

std::vector<float> DrawPlainly(const std::vector<ImageTriangle>& triangles, LightStates states)
{
    std::vector<float> image(1280UL * 1024 * 4);
    const unsigned int list = Compile(triangles, states);
    const Canvas canvas = MakeCanvas();
    SetProjection(GetDepth(triangles));
    static TilePixels tile;
    for (int row = 0; row < 4; row++) {
        for (int column = 0; column < 5; column++) {
            AverageTile(column, row, list, tile);
            PutTile(column, row, tile, image);
        }
    }
    FreeCanvas(canvas);
    SetViewProjection();
    glDeleteLists(list, 1);
    return image;
}

} // namespace korvane::testing
