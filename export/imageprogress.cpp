#include "export/imageprogress.h"

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
static unsigned int gllist = 0;            // the first of the tiles' display lists
static Looks looks;                        // from which the lists are gathered
static std::vector<unsigned int> tilesets; // the tiles of each triangle
static TileOrders tileorders;              // from which the lists are compiled; empty afterwards
static double halfdepth = 0;               // of what is drawn
static int snumber = 0; // tile column; before, the next shape to collect, the next tile to gather
static int tnumber = 0; // tile row; before, the next tile to compile
static int tnstart = 0; // triangles from plain shapes
static int accum = 0;   // antialiasing pass

static constexpr int compilestep = 40000; // so many triangles are gathered or compiled in a step

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
    gllist = glGenLists(tilenumber);
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
    SetProgress(1);
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
    Shape* finer = RoundShape(round1t[snumber]);
    trianglenumber = AddTrianglesOfShape(hszog, trianglenumber, finer);
    DeleteShape(finer);
    snumber++;
    const int rounded = triangleroom - tnstart;
    SetProgress(1 + 30.0 * (trianglenumber - tnstart) / std::max(rounded, 1));
}

static void PrepareSorting()
{
    ResizeTriangleArrays(trianglenumber);
    SetTriangleKeys(hszog, trianglenumber, ztable, zindex);
    tilesets = GetTileSets(hszog, trianglenumber);
    halfdepth = GetHalfDepth(tilesets, hszog);
    looks = GetLooks(hszog, trianglenumber);
    SetProgress(31);
    state = SORT_TRIANGLES;
}

static void SortTriangles()
{
    SetTriangleSequence(ztable, zindex, trianglenumber);
    snumber = 0;
    tnumber = 0;
    SetProgress(33);
    state = COMPILE_LISTS;
}

// Does as much as one step can afford. The lists are compiled when all of them are gathered, so
// that a tile with most of the triangles is gathered and compiled in different steps.
static void CompileLists()
{
    if (snumber == 0) {
        tileorders = GetTileOrders(tilesets, zindex);
    }
    std::size_t handled = 0;
    for (; snumber < tilenumber && handled < compilestep; snumber++) {
        std::vector<int>& order = tileorders[std::size_t(snumber)];
        GatherLooks(order, snumber, hszog, looks);
        handled += order.size();
    }
    for (; tnumber < tilenumber && handled < compilestep; tnumber++) {
        std::vector<int>& order = tileorders[std::size_t(tnumber)];
        CompileTile(gllist + unsigned(tnumber), hszog, order);
        handled += order.size();
        order = {};
    }
    SetProgress(33 + 3.5 * (snumber + tnumber) / tilenumber);
    if (tnumber == tilenumber) {
        state = SET_UP_TILES;
    }
}

static void DrawTiles()
{
    const int tile = tnumber * tilecolumns + snumber;
    DrawTilePass(tile, accum, gllist + unsigned(tile), halfdepth);
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
    SetProgress(((tnumber * tilecolumns + snumber) * tilepasses + accum) * 0.75 + 40);
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
    tileorders = {};
    if (gdk_gl_context_get_current() != nullptr) {
        glDeleteLists(gllist, tilenumber);
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
