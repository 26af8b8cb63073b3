// The base state, which InitGl leaves and every drawing procedure expects and leaves: depth test,
// blending and smoothing on; textures, lighting, lights, programs and vertex arrays off; what is
// nearer passes the depth test; line width 1; textures modulated; model-view identity; no OpenGL
// error pending.
#pragma once

namespace korvane
{

// Brings a new context into the base state, as far as it does not start in it.
void SetBaseState();

// What differs from the base state, in words; null when nothing does. A context must be current.
const char* FindStateFault();

// In a debug build, names the drawing procedure that left something else than the base state and
// ends the program; nothing otherwise.
void AssertBaseState(const char* procedure);

} // namespace korvane
