#include "view/programs.h"

#include <GL/glew.h>

#include <cstdio>
#include <cstring>

namespace korvane
{

static const char litvertextext[] = R"(!!ARBvp1.0
PARAM mvp[4] = {state.matrix.mvp};
PARAM imv[4] = {state.matrix.modelview.invtrans};
TEMP normal;
DP3 normal.x, imv[0], vertex.normal;
DP3 normal.y, imv[1], vertex.normal;
DP3 normal.z, imv[2], vertex.normal;
MOV result.texcoord[0], normal;
DP4 result.position.x, mvp[0], vertex.position;
DP4 result.position.y, mvp[1], vertex.position;
DP4 result.position.z, mvp[2], vertex.position;
DP4 result.position.w, mvp[3], vertex.position;
END)";

// With n the unit normal, turned over for the back, and l the unit light direction (1.5, -1, -1):
// the squared half distance of n and l is 0 where they agree and 1 where they are opposite. Raised
// to the power 1 / acuity it blends from the shadow colour to the light colour.
static const char litfragmenttext[] = R"(!!ARBfp1.0
PARAM light1 = state.light[0].diffuse;
PARAM light2 = state.light[0].specular;
PARAM light3 = state.light[1].diffuse;
PARAM light4 = state.light[1].specular;
PARAM light5 = state.light[0].ambient;
TEMP normal, feny, fenyero, temp, lightf, lightb;
MOV feny, {1.5, -1.0, -1.0};
MOV normal, fragment.texcoord[0];
DP3 temp, normal, normal;
RSQ temp, temp.r;
MUL normal, normal, temp;
MOV temp, {0.0, 0.0, 0.0};
SUB temp, temp, normal;
CMP normal, light5.z, temp, normal;
DP3 temp, feny, feny;
RSQ temp, temp.r;
MUL feny, feny, temp;
SUB temp, feny, normal;
MUL temp, temp, 0.5;
DP3 fenyero, temp, temp;
MOV temp, light5;
CMP lightf, temp.z, light3, light1;
CMP lightb, temp.z, light4, light2;
CMP temp.x, temp.z, temp.y, temp.x;
RCP temp.x, temp.x;
POW fenyero.x, fenyero.x, temp.x;
POW fenyero.y, fenyero.y, temp.x;
POW fenyero.z, fenyero.z, temp.x;
POW fenyero.w, fenyero.w, temp.x;
LRP result.color, fenyero, lightf, lightb;
END)";

static const char fadevertextext[] = R"(!!ARBvp1.0
PARAM mvp[4] = {state.matrix.mvp};
DP4 result.position.x, mvp[0], vertex.position;
DP4 result.position.y, mvp[1], vertex.position;
DP4 result.position.z, mvp[2], vertex.position;
DP4 result.position.w, mvp[3], vertex.position;
MOV result.color, vertex.color;
MOV result.texcoord, vertex.position;
END)";

static const char fadefragmenttext[] = R"(!!ARBfp1.0
TEMP distance;
MOV distance, fragment.texcoord;
MUL distance, distance, distance;
ADD distance.x, distance.x, distance.z;
ADD distance.x, distance.x, distance.y;
RSQ distance.x, distance.x;
RCP distance.x, distance.x;
MOV result.color, fragment.color;
SUB result.color.a, fragment.color.a, distance.x;
MOV result.depth, {0.0, 0.0, 0.99};
END)";

const char* const programtexts[programnumber] = {litvertextext, litfragmenttext, fadevertextext,
                                                 fadefragmenttext};

static GLenum GetTarget(int place)
{
    const bool vertex = place == LIT_VERTEX || place == FADE_VERTEX;
    return vertex ? GL_VERTEX_PROGRAM_ARB : GL_FRAGMENT_PROGRAM_ARB;
}

static bool LoadProgram(int place, unsigned int name)
{
    const GLenum target = GetTarget(place);
    const char* text = programtexts[place];
    glBindProgramARB(target, name);
    glProgramStringARB(target, GL_PROGRAM_FORMAT_ASCII_ARB, GLsizei(std::strlen(text)), text);
    GLint fault = -1;
    glGetIntegerv(GL_PROGRAM_ERROR_POSITION_ARB, &fault);
    if (fault != -1) {
        glGetError(); // the refusal is told below and must not look like a fault of a later call
        std::printf("Shader program %d is refused: %s\n", place,
                    reinterpret_cast<const char*>(glGetString(GL_PROGRAM_ERROR_STRING_ARB)));
    }
    return fault == -1;
}

bool LoadPrograms(unsigned int names[programnumber])
{
    bool loaded = true;
    glEnable(GL_VERTEX_PROGRAM_ARB);
    glEnable(GL_FRAGMENT_PROGRAM_ARB);
    glGenProgramsARB(programnumber, names);
    for (int place = 0; place < programnumber; place++) {
        loaded = LoadProgram(place, names[place]) && loaded;
    }
    glDisable(GL_FRAGMENT_PROGRAM_ARB);
    glDisable(GL_VERTEX_PROGRAM_ARB);
    return loaded;
}

} // namespace korvane
