// What an edit may change in the document, as a string of bytes: two scenes with the same
// fingerprint are the same to the last bit.
#pragma once

#include <string>

namespace korvane::testing
{

std::string GetFingerprint();

} // namespace korvane::testing
