// A window to draw in, on an X server of the benchmark's own, in software.
#pragma once

namespace korvane::bench
{

constexpr int windowwidth = 1200;
constexpr int windowheight = 900;

// The entry point of a benchmark that draws: opens the window, makes its context current for the
// whole run and runs the benchmarks.
int RunInWindow(int argc, char** argv);

} // namespace korvane::bench
