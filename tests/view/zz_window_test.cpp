#include "tests/support/glwindow.h"
#include "tests/support/paintedshapes.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/projection.h"
#include "geometry/shapegeometry.h"
#include <gtest/gtest.h>
#include <cmath>
namespace korvane {
using namespace korvane::testing;
static void Place(Shape* s, float scale, float x, float y, float z) {
    for (int i = 0; i < s->pointnumber; i++) { s->points[i][0] = s->points[i][0]*scale + x; s->points[i][1] = s->points[i][1]*scale+y; s->points[i][2] = s->points[i][2]*scale+z; }
    SetNormalsOfShape(s);
}
TEST(Look, All) {
    GlWindow w(900, 600);
    StartEmptyView();
    float from[3] = {0,0,1}, to[3] = {0.5F,-0.5F,0.7F}; float l = std::sqrt(to[0]*to[0]+to[1]*to[1]+to[2]*to[2]); for (auto& v : to) v/=l;
    VectorRotate(reinterpret_cast<float(*)[3]>(mainview.rotation), to, from);
    auto add = [](OwnedShape s, float sc, float x, float y, float z, int sel) { Place(s.get(), sc, x, y, z); AddShape(s.release()); selected[shapenumber-1] = (unsigned char)sel; };
    add(Cube(), 0.3F, -0.45F, 0, 0, 95);
    OwnedShape c = Cube(); SetVertexes(c.get(), {0,1,2,3,4,5,6,7}); CompleteShape(c.get());
    PaintPlain(c->sides[1], {1,0.4F,0.1F,0.5F}); Paint(c->sides[3], FRONT_LIGHT, {0.2F,0.9F,0.3F,1}, {0,0.2F,0.3F,1});
    add(std::move(c), 0.3F, 0.1F, 0, 0, 31);
    add(Star(), 0.2F, 0.1F, 0.3F, 0.1F, 31);
    OwnedShape p = Pyramid(); for (int i=0;i<4;i++) PaintPlain(p->sides[i+1], {0.3F,0.5F,1,0.4F}); p->sides[0].visibility=0;
    SetVertexes(p.get(), {0,1,2,3,4}); CompleteShape(p.get());
    add(std::move(p), 0.2F, 0.5F, -0.1F, 0.0F, 31);
    add(Tetrahedron(), 0.1F, -0.1F, -0.3F, 0.2F, 95);
    ProjectScene();
    w.DrawScene().Save("/tmp/gl1.png");
    activesides[4].fade = 15; activestripes[2].fade = 15; activepoints[6].fade = 15;
    activesides[6+1].fade = 15;
    w.DrawScene().Save("/tmp/gl2.png");
    forcefixed = 1;
    w.DrawScene().Save("/tmp/gl3.png");
    forcefixed = 0; mainview.sidesfade = 0;
    w.DrawScene().Save("/tmp/gl4.png");
    mainview.sidesfade = 15; antialiasingok = 0; w.DrawScene().Save("/tmp/gl5.png");
    StartEmptyView();
}
}
