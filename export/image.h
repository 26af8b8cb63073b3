// The command "Create image...": what the view shows, in 1280 x 1024 pixels, one subdivision finer
// than on the screen, in a PNG file. A progress dialog runs while the frame loop makes the image, a
// preview follows.
#pragma once

#include "export/imageprogress.h"

typedef struct _GdkEventExpose GdkEventExpose;

namespace korvane
{

// "clicked" handler of the toolbar button. Returns when the image is saved or given up.
void CreateImage();

// "expose_event" handler of the preview area: draws imagebuffer. Returns true.
int DrawImage(GtkWidget* widget, GdkEventExpose* event);

} // namespace korvane
