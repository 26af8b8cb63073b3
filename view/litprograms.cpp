#include "view/litprograms.h"

#include "scene/model.h"
#include "view/glsetup.h"

#include <GL/glew.h>

namespace korvane
{

void BeginLitPrograms()
{
    glEnable(GL_VERTEX_PROGRAM_ARB);
    glEnable(GL_FRAGMENT_PROGRAM_ARB);
    glBindProgramARB(GL_VERTEX_PROGRAM_ARB, arbid[LIT_VERTEX]);
    glBindProgramARB(GL_FRAGMENT_PROGRAM_ARB, arbid[LIT_FRAGMENT]);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHT1);
}

void EndLitPrograms()
{
    glDisable(GL_LIGHT1);
    glDisable(GL_LIGHT0);
    glDisable(GL_FRAGMENT_PROGRAM_ARB);
    glDisable(GL_VERTEX_PROGRAM_ARB);
}

static void LoadColor(GLenum light, GLenum place, const float* color, double fade)
{
    const float faded[4] = {color[0], color[1], color[2], float(color[3] * fade)};
    glLightfv(light, place, faded);
}

void LoadColors(const float* colors, double fade)
{
    LoadColor(GL_LIGHT0, GL_DIFFUSE, colors + FRONT_LIGHT, fade);
    LoadColor(GL_LIGHT0, GL_SPECULAR, colors + FRONT_SHADOW, fade);
    LoadColor(GL_LIGHT1, GL_DIFFUSE, colors + BACK_LIGHT, fade);
    LoadColor(GL_LIGHT1, GL_SPECULAR, colors + BACK_SHADOW, fade);
}

void LoadControl(const float* colors, bool front)
{
    const float control[4] = {colors[FRONT_ACUITY], colors[BACK_ACUITY], front ? 1.0F : -1.0F, 0};
    glLightfv(GL_LIGHT0, GL_AMBIENT, control);
}

} // namespace korvane
