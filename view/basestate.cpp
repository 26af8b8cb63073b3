#include "view/basestate.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace korvane
{

struct Capability {
    GLenum name;
    bool on;
    const char* fault; // a constant
};

static constexpr Capability capabilities[] = {
    {GL_DEPTH_TEST, true, "the depth test is off"},
    {GL_BLEND, true, "blending is off"},
    {GL_LINE_SMOOTH, true, "line smoothing is off"},
    {GL_POINT_SMOOTH, true, "point smoothing is off"},
    {GL_TEXTURE_2D, false, "texturing is on"},
    {GL_LIGHTING, false, "lighting is on"},
    {GL_LIGHT0, false, "light 0 is on"},
    {GL_LIGHT1, false, "light 1 is on"},
    {GL_VERTEX_ARRAY, false, "the vertex array is on"},
    {GL_NORMAL_ARRAY, false, "the normal array is on"},
    {GL_COLOR_ARRAY, false, "the colour array is on"},
    {GL_TEXTURE_COORD_ARRAY, false, "the texture coordinate array is on"},
};

void SetBaseState()
{
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_POINT_SMOOTH);
    glEnable(GL_BLEND);
}

static const char* FindCapabilityFault()
{
    for (const Capability& capability : capabilities) {
        if ((glIsEnabled(capability.name) == GL_TRUE) != capability.on) {
            return capability.fault;
        }
    }
    if (GLEW_ARB_vertex_program && glIsEnabled(GL_VERTEX_PROGRAM_ARB)) {
        return "a vertex program is on";
    }
    if (GLEW_ARB_fragment_program && glIsEnabled(GL_FRAGMENT_PROGRAM_ARB)) {
        return "a fragment program is on";
    }
    return nullptr;
}

static bool IsModelViewIdentity()
{
    static constexpr GLfloat identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    GLfloat matrix[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix);
    return std::equal(std::begin(matrix), std::end(matrix), identity);
}

static const char* FindValueFault()
{
    GLfloat linewidth = 0;
    glGetFloatv(GL_LINE_WIDTH, &linewidth);
    if (linewidth != 1) {
        return "the line width is not 1";
    }
    GLint mode = 0;
    glGetIntegerv(GL_DEPTH_FUNC, &mode);
    if (mode != GL_LESS) {
        return "the depth test does not ask for less";
    }
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    if (mode != GL_MODULATE) {
        return "textures are not modulated";
    }
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    if (mode != GL_MODELVIEW || !IsModelViewIdentity()) {
        return "the model-view matrix is not the identity";
    }
    return nullptr;
}

const char* FindStateFault()
{
    if (glGetError() != GL_NO_ERROR) {
        return "an OpenGL error is pending";
    }
    const char* fault = FindCapabilityFault();
    return fault != nullptr ? fault : FindValueFault();
}

void AssertBaseState([[maybe_unused]] const char* procedure)
{
#ifndef NDEBUG
    const char* fault = FindStateFault();
    if (fault != nullptr) {
        std::fprintf(stderr, "After %s %s.\n", procedure, fault);
        std::abort();
    }
#endif
}

} // namespace korvane
