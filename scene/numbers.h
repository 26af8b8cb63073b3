// Numbers as a scene file carries them: with a decimal comma, whatever the locale of the user.
// Writing gives the digits of formatted output exactly; reading takes the decimal number that
// atof or atoi would take from the front of the text, and answers every text with a number that can
// be stored.
#pragma once

#include <string_view>

namespace korvane
{

// No number that is written takes more bytes: a sign, 39 digits of the greatest float, a comma and
// six decimals fit well.
constexpr int numbersize = 64;

// The number at the front of `text`, whose first comma is the decimal point. 0 when there is none,
// and when it is not finite or too large for a float.
float ParseReal(std::string_view text);

// The decimal integer at the front of `text`, the nearest int when it is out of range; 0 when there
// is none.
int ParseInteger(std::string_view text);

// Each writes at `out`, where numbersize bytes are free, and returns the end of what it wrote.
char* WriteReal(char* out, float value);  // as "%.20lg"
char* WriteColor(char* out, float value); // as "%f"
char* WriteInteger(char* out, int value); // as "%d"

} // namespace korvane
