#include "export/imageprogress.h"

#include "export/imagelists.h"
#include "export/imagetiles.h"
#include "geometry/rounding.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "view/mainview.h"

#include <GL/glew.h>
#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <utility>
#include <vector>

namespace korvane
{

GtkWidget* ciprogress = nullptr;
unsigned char* imagebuffer = nullptr;
GdkPixbuf* imagepixbuf = nullptr;

enum ImageState {
    COLLECT_PLAIN,
    COLLECT_ROUNDED,
    PREPARE_SORTING,
    SORT_TRIANGLES,
    COMPILE_LISTS,
    SET_UP_TILES,
    DRAW_TILES,
    FINISH_IMAGE,
    statenumber
};

// The image that is being made; it lives from the first step to the last or to a cancel.
static int state = COLLECT_PLAIN;          // the step that comes next
static int trianglenumber = 0;             // collected triangles
static int triangleroom = 0;               // length of the three arrays
static ImageTriangle* hszog = nullptr;     // owned; the triangles
static float* ztable = nullptr;            // owned; a depth key per triangle
static int* zindex = nullptr;              // owned; the drawing order
static std::vector<unsigned int> tilesets; // the tiles of each triangle
static Looks looks;                        // the light states of the triangles
static double halfdepth = 0;               // of what is drawn
static int snumber = 0;                    // tile column; before, the next shape to collect
static int tnumber = 0;                    // tile row
static int tnstart = 0;                    // triangles from plain shapes
static int accum = 0;                      // antialiasing pass
static std::size_t part = 0;               // the list that the pass draws next

// How far the bar stands, in percent, when that is done.
static constexpr double plaincollected = 1;
static constexpr double allcollected = 31;
static constexpr double allsorted = 33;
static constexpr double allcompiled = 40;
static constexpr double passdrawn = 0.75; // for each pass

static void SetProgress(double percent)
{
    if (ciprogress != nullptr) {
        gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(ciprogress), std::min(percent / 100, 1.0));
    }
}

static void ResizeTriangleArrays(int number)
{
    ResizeArray(hszog, number);
    ResizeArray(ztable, number);
    ResizeArray(zindex, number);
    triangleroom = number;
}

static void MakeTriangleArrays()
{
    const std::int64_t number = EstimateTriangles();
    if (number > INT_MAX) {
        StopForMemory("an image cannot have so many triangles");
    }
    ResizeTriangleArrays(int(number));
}

static void CollectPlainShapes()
{
    TransferAllShape();
    imagebuffer = NewArray<unsigned char>(imagewidth * imageheight * 4);
    MakeTriangleArrays();
    trianglenumber = 0;
    for (int i = 0; i < shapenumber; i++) {
        if (showtable[i] == SHOW_PLAIN) {
            trianglenumber = AddTrianglesOfShape(hszog, trianglenumber, round1t[i]);
        }
    }
    tnstart = trianglenumber;
    snumber = 0;
    SetProgress(plaincollected);
    state = COLLECT_ROUNDED;
}

// An image shows rounded shapes one subdivision finer than the screen.
static void CollectRoundedShape()
{
    while (snumber < shapenumber && showtable[snumber] != SHOW_ROUNDED) {
        snumber++;
    }
    if (snumber == shapenumber) {
        state = PREPARE_SORTING;
        return;
    }
    const OwnedShape finer(RoundShape(round1t[snumber]));
    trianglenumber = AddTrianglesOfShape(hszog, trianglenumber, finer.get());
    snumber++;
    const int rounded = triangleroom - tnstart;
    const double share = double(trianglenumber - tnstart) / std::max(rounded, 1);
    SetProgress(plaincollected + (allcollected - plaincollected) * share);
}

static void PrepareSorting()
{
    ResizeTriangleArrays(trianglenumber);
    SetTriangleKeys(hszog, trianglenumber, ztable, zindex);
    tilesets = GetTileSets(hszog, trianglenumber);
    halfdepth = GetHalfDepth(tilesets, hszog);
    looks = GetLooks(hszog, trianglenumber);
    SetProgress(allcollected);
    state = SORT_TRIANGLES;
}

static void SortTriangles()
{
    SetTriangleSequence(ztable, zindex, trianglenumber);
    StartLists(GetTileOrders(tilesets, zindex), {hszog, std::move(looks), halfdepth});
    SetProgress(allsorted);
    state = COMPILE_LISTS;
}

static void CompileLists()
{
    const double share = MakeLists();
    SetProgress(allsorted + (allcompiled - allsorted) * share);
    if (share == 1) {
        state = SET_UP_TILES;
    }
}

// Draws a part of the pass, or all of it when nothing would be left of it in the next step. Returns
// whether the pass is complete.
static bool DrawPass(int tile)
{
    const std::vector<unsigned int>& lists = GetLists(tile);
    do {
        DrawTilePart({tile, accum, halfdepth}, lists[part], part == 0, part + 1 == lists.size());
        part++;
    } while (part < lists.size() && !KeepsTile());
    return part == lists.size();
}

static void DrawTiles()
{
    const int tile = tnumber * tilecolumns + snumber;
    if (!DrawPass(tile)) {
        return;
    }
    part = 0;
    accum++;
    if (accum == tilepasses) {
        StoreTile(tile, imagebuffer);
        accum = 0;
        snumber++;
    }
    if (snumber == tilecolumns) {
        snumber = 0;
        tnumber++;
    }
    const int passes = (tnumber * tilecolumns + snumber) * tilepasses + accum;
    SetProgress(allcompiled + passes * passdrawn);
    if (tnumber == tilerows) {
        state = FINISH_IMAGE;
    }
}

static void SetUpTiles()
{
    MakeTileBuffer();
    snumber = 0;
    tnumber = 0;
    accum = 0;
    part = 0;
    state = DRAW_TILES;
    DrawTiles();
}

// Everything but the image. OpenGL's share is gone already when the context is.
static void FreeWork()
{
    FreeArray(hszog);
    FreeArray(ztable);
    FreeArray(zindex);
    tilesets = {};
    looks = {};
    FreeLists();
    if (gdk_gl_context_get_current() != nullptr) {
        FreeTileBuffer();
    }
}

static void DestroyProgress()
{
    if (ciprogress != nullptr) {
        gtk_widget_destroy(gtk_widget_get_toplevel(ciprogress));
        ciprogress = nullptr;
    }
}

// The tiles have left the view's viewport and projection as they were.
static void FinishImage()
{
    imagepixbuf = gdk_pixbuf_new_from_data(imagebuffer, GDK_COLORSPACE_RGB, TRUE, 8, imagewidth,
                                           imageheight, imagewidth * 4, nullptr, nullptr);
    FreeWork();
    state = COLLECT_PLAIN;
    cisign = 0;
    RefreshView(); // what the view shows is culled again
    DestroyProgress();
}

void CreateImageProgress()
{
    static constexpr void (*steps[statenumber])() = {
        CollectPlainShapes, CollectRoundedShape, PrepareSorting, SortTriangles,
        CompileLists,       SetUpTiles,          DrawTiles,      FinishImage};
    if (cisign != 0) {
        steps[state]();
        return;
    }
    if (state != COLLECT_PLAIN) {
        FreeWork();
        state = COLLECT_PLAIN;
    }
    FreeImage();
    RefreshView();
}

void FreeImage()
{
    if (imagepixbuf != nullptr) {
        g_object_unref(imagepixbuf);
        imagepixbuf = nullptr;
    }
    FreeArray(imagebuffer);
}

} // namespace korvane
