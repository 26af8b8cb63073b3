#include "ui/heldkeys.h"

#include <gdk/gdkx.h>

#include <algorithm>

namespace korvane
{

bool IsKeyDown(unsigned int keyval)
{
    char down[32]; // a bit for each key of the keyboard
    XQueryKeymap(GDK_DISPLAY_XDISPLAY(gdk_display_get_default()), down);
    GdkKeymapKey* keys = nullptr;
    int number = 0;
    gdk_keymap_get_entries_for_keyval(nullptr, keyval, &keys, &number);
    const bool found = std::any_of(keys, keys + number, [&down](const GdkKeymapKey& key) {
        return (down[key.keycode / 8] >> key.keycode % 8 & 1) != 0;
    });
    g_free(keys);
    return found;
}

} // namespace korvane
