// Deleting and pasting rows of the tree in the real window, at the top level of flat trees of
// growing numbers of small shapes. Whatever the toolkit looks for by counting rows from the top
// shows here: each row that is written to, inserted or selected. What the window does afterwards,
// when it is idle, is not measured.
#include "bench/meshes.h"
#include "scene/arrays.h"
#include "scene/clipboard.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/scenereader.h"
#include "scene/treeedit.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/support/xserver.h"
#include "ui/mainwindow.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>
#include <gtk/gtkgl.h>

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace korvane::bench
{

static GtkTreeSelection* GetSelection()
{
    return gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview));
}

// Lets the tree view lay out its rows. No frame may be pending, or the timer never lets it end.
static void HandleEvents()
{
    while (gtk_events_pending()) {
        gtk_main_iteration();
    }
}

// The window without its view, which would draw the scene after each change.
static void ShowTree()
{
    GtkWidget* window = GetMainWindow();
    gtk_widget_show_all(window);
    GtkWidget* pane = gtk_widget_get_parent(treeview);
    GList* beside = gtk_container_get_children(GTK_CONTAINER(gtk_widget_get_parent(pane)));
    gtk_widget_hide(GTK_WIDGET(g_list_last(beside)->data));
    g_list_free(beside);
    HandleEvents();
}

// Names of one length, so that rows stand in the order of their shapes.
static Block<char[]> GetRowName(int number)
{
    char name[16];
    std::snprintf(name, sizeof name, "s%06d", number);
    return CopyText(name);
}

static void MakeScene(int number)
{
    NewMrt();
    const OwnedShape shape = MakeTriangleTorus(18);
    DeriveLoadedShape(shape.get());
    for (int i = 0; i < number; i++) {
        AddShape(CopyShape(shape.get()));
        AppendTreeIter(0, NODE_SHAPE, i, GetRowName(i));
    }
    SortAndShowTree();
    SetActives();
    RefreshView();
    HandleEvents();
}

static void CountRows(::benchmark::State& state)
{
    state.counters["s/row"] = ::benchmark::Counter(double(state.range(0)),
                                                   ::benchmark::Counter::kIsIterationInvariantRate |
                                                       ::benchmark::Counter::kInvert);
    NewMrt();
}

static void SelectOne(int node)
{
    gtk_tree_selection_unselect_all(GetSelection());
    SelectRow(node);
}

// Deletes what `select` selects, and puts it back without being measured.
static void Delete(::benchmark::State& state, const std::function<void()>& select)
{
    MakeScene(int(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        select();
        HandleEvents();
        state.ResumeTiming();
        DelSelected();
        state.PauseTiming();
        PopUndo();
        DelPuffer();
        state.ResumeTiming();
    }
    CountRows(state);
}

static void DeleteTheFirst(::benchmark::State& state)
{
    Delete(state, [] { SelectOne(1); });
}

static void DeleteTheLast(::benchmark::State& state)
{
    Delete(state, [&] { SelectOne(int(state.range(0))); });
}

// The peer of deleting: what it begins with.
static void SaveForUndo(::benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    for (auto _ : state) {
        PushScene();
        state.PauseTiming();
        DelPuffer();
        state.ResumeTiming();
    }
    CountRows(state);
}

static void DeleteAll(::benchmark::State& state)
{
    Delete(state, [] { gtk_tree_selection_select_all(GetSelection()); });
}

// Pastes as many rows as there are, each among the others.
static void PasteAll(::benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    gtk_tree_selection_select_all(GetSelection());
    CopySelected();
    for (auto _ : state) {
        state.PauseTiming();
        gtk_tree_selection_unselect_all(GetSelection());
        HandleEvents();
        state.ResumeTiming();
        PasteSelected();
        state.PauseTiming();
        PopUndo();
        DelPuffer();
        state.ResumeTiming();
    }
    CountRows(state);
}

static void Sizes(::benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(100, 10000)->Unit(::benchmark::kMillisecond);
}

BENCHMARK(SaveForUndo)->Apply(Sizes);
BENCHMARK(DeleteTheFirst)->Apply(Sizes);
BENCHMARK(DeleteTheLast)->Apply(Sizes);
BENCHMARK(DeleteAll)->Apply(Sizes);
BENCHMARK(PasteAll)->Apply(Sizes);

} // namespace korvane::bench

int main(int argc, char** argv)
{
    korvane::KeepFreedMemory(); // as the program does
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    const korvane::testing::XServer server(1280, 1024);
    gtk_init(&argc, &argv);
    gtk_gl_init(&argc, &argv);
    korvane::bench::ShowTree();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
