// The shader programs, in the language of the ARB program extensions. The lit pair shades a surface
// by the light state: the diffuse and specular colours of lights 0 and 1 are the light and shadow
// colours of its front and its back, the ambient colour of light 0 is (front acuity, back acuity, 1
// for the front or -1 for the back). The fade pair lets alpha fall with the distance from the
// origin and puts everything at depth 0.99.
#pragma once

namespace korvane
{

// Places in arbid and in programtexts.
enum ProgramPlace { LIT_VERTEX = 0, LIT_FRAGMENT = 1, FADE_VERTEX = 2, FADE_FRAGMENT = 3 };
constexpr int programnumber = 4;

extern const char* const programtexts[programnumber];

// Generates the program names and loads the texts. Returns false when the driver refuses one of
// them, after a line on standard output. The program extensions must be there.
bool LoadPrograms(unsigned int names[programnumber]);

} // namespace korvane
