// The making of an image, cut into steps so small that the window answers between them. While
// cisign is set the frame loop runs one step per frame. Everything that the steps allocate is freed
// by the last of them or by the call that follows a cancel, but for the finished image.
#pragma once

typedef struct _GdkPixbuf GdkPixbuf;
typedef struct _GtkWidget GtkWidget;

namespace korvane
{

extern GtkWidget* ciprogress;      // the progress bar, whose window the last step destroys, or null
extern unsigned char* imagebuffer; // owned; 1280 x 1024 pixels of red, green, blue and alpha, rows
                                   // from the top; null while there is no image
extern GdkPixbuf* imagepixbuf;     // owned; the finished image around imagebuffer, or null

// Runs one step; the last one clears cisign. With cisign clear it frees whatever an unfinished
// image has left. The view's context must be current, or none when it is gone.
void CreateImageProgress();

// Frees imagebuffer and imagepixbuf.
void FreeImage();

} // namespace korvane
