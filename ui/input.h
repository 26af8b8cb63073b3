// Pointer and key state.
#pragma once

namespace korvane
{

extern int mstate;    // the button state machine; 0 idle
extern char keyspace; // 1 while the space bar is held

} // namespace korvane
