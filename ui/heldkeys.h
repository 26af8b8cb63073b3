// The keys that are down at this moment, asked of the X server: events tell of a key only what
// happens while the window has the keys. A file of its own, since X has macros named like handlers.
#pragma once

namespace korvane
{

// Whether a key that gives this symbol is down, in whichever window it was pressed.
bool IsKeyDown(unsigned int keyval);

} // namespace korvane
