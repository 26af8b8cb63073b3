// The steps of the image: their progress, their end and every way of breaking them off.
#include "export/image.h"

#include "export/imageorder.h"
#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/imagemaking.h"
#include "tests/support/paintedshapes.h"
#include "view/frameloop.h"
#include "view/glsetup.h"
#include "view/mainview.h"

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <malloc.h>
#include <memory>

namespace korvane
{

using namespace korvane::testing;

class ImageProgress : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyView();
        for (int i = 0; i < 3; i++) {
            AddShape(CheckeredSheet(4 + i).release());
            selected[i] = selectedfade;
        }
        ProjectScene();
        OpenWindow();
    }
    void TearDown() override
    {
        StartEmptyView();
    }

    // Steps are run by the tests alone, so the window's own exposes draw nothing.
    void OpenWindow()
    {
        window = std::make_unique<GlWindow>(300, 300);
        g_signal_handlers_block_by_func(window->GetArea(), reinterpret_cast<gpointer>(ReDraw),
                                        nullptr);
    }

    void Step()
    {
        ReDraw(window->GetArea(), nullptr);
    }

    // The bar after every step but the last, in hundredths.
    std::vector<double> GetProgress()
    {
        std::vector<double> progress;
        RunCreateImage(
            [&] {
                Step();
                if (ciprogress != nullptr) {
                    progress.push_back(100 *
                                       gtk_progress_bar_get_fraction(GTK_PROGRESS_BAR(ciprogress)));
                }
            },
            [](GtkDialog* dialog) { gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL); });
        return progress;
    }

    std::unique_ptr<GlWindow> window;
};

// Steps: 0 plain shapes; three times 1 and once more; 2; 3; 4; 5 with the first pass; 79 times 6.
TEST_F(ImageProgress, RunsFromOneToAHundred)
{
    const std::vector<double> progress = GetProgress();
    ASSERT_EQ(progress.size(), 1U + 4 + 1 + 1 + 1 + 80);
    EXPECT_NEAR(progress[0], 1, 1e-9);
    EXPECT_GT(progress[1], 1);
    EXPECT_NEAR(progress[3], 31, 1e-9); // every triangle that there can be is shown
    EXPECT_NEAR(progress[4], 31, 1e-9);
    EXPECT_NEAR(progress[5], 31, 1e-9);
    EXPECT_NEAR(progress[6], 33, 1e-9);
    for (int pass = 0; pass < 80; pass++) {
        EXPECT_NEAR(progress[std::size_t(8 + pass)], (pass + 1) * 0.75 + 40, 1e-9);
    }
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_NEAR(progress.back(), 100, 1e-9);
}

// Two triangles of each square, 81 of each of those: more than a step gathers and compiles.
TEST_F(ImageProgress, MovesOnWhileManyTrianglesAreCompiled)
{
    StartEmptyView();
    AddShape(CheckeredSheet(23).release());
    selected[0] = selectedfade;
    mainview.scale = 3; // large enough to be rounded
    RefreshView();
    ASSERT_EQ(showtable[0], SHOW_ROUNDED);
    const std::vector<double> progress = GetProgress();
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_GT(std::count_if(progress.begin(), progress.end(),
                            [](double percent) { return percent > 33.1 && percent < 39.9; }),
              0);
}

// In grey levels.
static int GetGreatestDifference(const Image& a, const Image& b)
{
    int greatest = 0;
    for (std::size_t i = 0; i < a.pixels.size(); i++) {
        greatest = std::max(greatest, std::abs(int(a.pixels[i]) - int(b.pixels.at(i))));
    }
    return greatest;
}

// Pixels on which something has been drawn: a corner of the image shows what is cleared.
static int CountDrawn(const Image& image)
{
    int number = 0;
    for (int y = 0; y < imageheight; y++) {
        for (int x = 0; x < imagewidth; x++) {
            number += image.At(x, y) == image.At(0, 0) ? 0 : 1;
        }
    }
    return number;
}

// 4900 squares in a single tile, two triangles of each, nine of each of those: more than a step can
// draw. The hidden buffer of a window may change between steps: it gets a whole pass in one step.
TEST_F(ImageProgress, TakesSeveralStepsForAPassOfManyTriangles)
{
    StartEmptyView();
    AddShape(CheckeredSheet(70).release());
    selected[0] = selectedfade;
    mainview.scale = 0.4F;
    mainview.center[1] = -0.3125; // 0.125 upwards in the view
    ProjectScene();
    const auto draws = [](double percent) { return percent > 39.9; };
    const auto steps = [&] {
        const std::vector<double> progress = GetProgress();
        return std::count_if(progress.begin(), progress.end(), draws);
    };
    EXPECT_EQ(steps(), 81 + 4); // and the last step of compiling; four passes have a second part
    const Image image = MakeImageIn(*window);
    EXPECT_GT(CountDrawn(image), 4900); // a square is three pixels wide, or two when it is rounded
    window.reset();
    OpenWindow();
    __GLEW_ARB_framebuffer_object = GL_FALSE;
    EXPECT_EQ(steps(), 81);
    EXPECT_LE(GetGreatestDifference(MakeImageIn(*window), image), 1);
    __GLEW_ARB_framebuffer_object = GL_TRUE;
}

TEST_F(ImageProgress, RunsWithoutShapesToo)
{
    StartEmptyView();
    EXPECT_NEAR(GetProgress().back(), 100, 1e-9);
}

TEST_F(ImageProgress, AsksForTheNextFrameAtOnce)
{
    RunCreateImage(
        [&] {
            Step();
            EXPECT_EQ(rdstate, redrawwanted);
        },
        [](GtkDialog* dialog) { gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL); });
}

// What the tests below may not find changed.
struct Traces {
    std::size_t heapbytes;
    int lists, buffers;
};

static Traces GetTraces(const GlWindow& window)
{
    const struct mallinfo2 heap = mallinfo2();
    Traces traces = {heap.uordblks + heap.hblkhd, 0, 0};
    window.Run([&] {
        for (unsigned int name = 1; name < 10000; name++) {
            traces.lists += glIsList(name);
            traces.buffers += glIsRenderbuffer(name) + glIsFramebuffer(name);
        }
    });
    return traces;
}

static void ExpectIdle()
{
    EXPECT_EQ(cisign, 0);
    EXPECT_EQ(ciprogress, nullptr);
    EXPECT_EQ(imagebuffer, nullptr);
    EXPECT_EQ(imagepixbuf, nullptr);
}

TEST_F(ImageProgress, LeavesNothingWhenItIsCancelledInAnyState)
{
    const Image image = MakeImageIn(*window);
    ExpectIdle();
    const std::size_t steps = GetProgress().size(); // without the last
    // before every state, in the middle of the tiles, and before the end
    for (const int before : {0, 1, 2, 5, 6, 7, 8, 9, 50, int(steps)}) {
        SCOPED_TRACE(before);
        CancelAfter(*window, before); // memory that is kept for the next time is kept now
        const Traces first = GetTraces(*window);
        for (int again = 0; again < 4; again++) {
            CancelAfter(*window, before);
            ExpectIdle();
        }
        const Traces second = GetTraces(*window);
        // four times the triangles would be 7 MB, the image 21 MB; OpenGL's own use goes up and
        // down
        EXPECT_LT(second.heapbytes, first.heapbytes + 2000000);
        EXPECT_EQ(second.lists, 0);
        EXPECT_EQ(second.buffers, 0);
        EXPECT_EQ(rdstate, redrawwanted); // the view is drawn again
        EXPECT_EQ(GetProgress().size(), steps) << "it does not start anew";
    }
    EXPECT_EQ(MakeImageIn(*window), image);
}

TEST_F(ImageProgress, IsCancelledByTheCloseButtonOfItsWindowToo)
{
    AnswerDialog([&](GtkDialog* dialog) {
        Step();
        GdkEvent* event = gdk_event_new(GDK_DELETE);
        event->any.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(GTK_WIDGET(dialog))));
        gtk_main_do_event(event);
        gdk_event_free(event);
        return true;
    });
    CreateImage();
    ExpectIdle();
}

// The dialog may be answered in the same round of events in which the image gets finished.
TEST_F(ImageProgress, IsCancelledByAnAnswerThatComesWithTheLastStep)
{
    AnswerDialog([&](GtkDialog* dialog) {
        gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        while (cisign != 0) {
            Step();
        }
        return true;
    });
    CreateImage();
    ExpectIdle();
}

static void ExpectViewProjection()
{
    int viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], width);
    EXPECT_EQ(viewport[3], height);
    float halfwidth, halfheight, matrix[16];
    GetHalfView(&halfwidth, &halfheight);
    glGetFloatv(GL_PROJECTION_MATRIX, matrix);
    EXPECT_FLOAT_EQ(matrix[0], 1 / halfwidth);
    EXPECT_FLOAT_EQ(matrix[5], 1 / halfheight);
    EXPECT_FLOAT_EQ(matrix[10], -0.5); // depth from -2 to 2
}

TEST_F(ImageProgress, PutsViewportAndProjectionBack)
{
    MakeImageIn(*window);
    window->Run(ExpectViewProjection);
    for (const int steps : {9, 40}) {
        CancelAfter(*window, steps);
        window->Run(ExpectViewProjection);
    }
}

TEST_F(ImageProgress, LeavesTheWindowsPictureAlone)
{
    gtk_window_move(GTK_WINDOW(gtk_widget_get_toplevel(window->GetArea())), 700, 600);
    Step();
    const Picture before = window->ReadWindow();
    const auto expectsame = [&] { EXPECT_EQ(window->ReadWindow().pixels, before.pixels); };
    RunCreateImage(
        [&] {
            Step();
            expectsame();
        },
        [](GtkDialog* dialog) { gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL); });
    Step(); // draws the view as it was
    expectsame();
}

TEST_F(ImageProgress, DoesNotMindAWindowThatIsResized)
{
    const Image image = MakeImageIn(*window);
    Image other;
    int step = 0;
    RunCreateImage(
        [&] {
            Step();
            if (step++ % 20 == 2) { // while shapes are collected, and between passes
                gtk_widget_set_size_request(window->GetArea(), 300 + step, 200 + 2 * step);
                ASSERT_TRUE(HandleEventsUntil([step] { return width == 299 + step + 1; }));
            }
        },
        [&](GtkDialog* dialog) {
            other = CopyImage();
            gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        });
    EXPECT_EQ(other, image);
    window->Run(ExpectViewProjection);
}

// The context goes with the window: what OpenGL held of the image has gone with it.
TEST_F(ImageProgress, IsCancelledWithoutAWindow)
{
    const Image image = MakeImageIn(*window);
    AnswerDialog([&](GtkDialog* dialog) {
        for (int i = 0; i < 20; i++) {
            Step();
        }
        window.reset();
        gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    CreateImage();
    ExpectIdle();
    OpenWindow();
    EXPECT_EQ(MakeImageIn(*window), image);
}

// A window that is not on the screen gets no exposes.
TEST_F(ImageProgress, IsMadeByTheTimerWithoutExposes)
{
    const Image image = MakeImageIn(*window);
    gtk_widget_hide(gtk_widget_get_toplevel(window->GetArea()));
    HandleEvents();
    Image other;
    int ticks = 0;
    RunCreateImage(
        [&] {
            TimeLoop(window->GetArea());
            ASSERT_LT(ticks++, 500);
        },
        [&](GtkDialog* dialog) {
            other = CopyImage();
            gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        });
    EXPECT_EQ(other, image);
}

// The toolkit draws the progress bar only while no tick is due.
TEST_F(ImageProgress, IsMadeByNoTwoTicksInARow)
{
    const int steps = int(GetProgress().size()) + 1;
    int ticks = 0;
    RunCreateImage(
        [&] {
            TimeLoop(window->GetArea());
            ticks++;
        },
        [](GtkDialog* dialog) { gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL); });
    EXPECT_GE(ticks, 2 * steps - 1); // the first may have been asked for before
}

TEST_F(ImageProgress, HoldsTheViewStill)
{
    const auto steps = [&] {
        const int8_t before = mainview.perspective;
        TimeLoop(window->GetArea());
        EXPECT_EQ(mainview.perspective, before);
        Step();
    };
    mainview.perspective = fadetarget + 3;
    RefreshView();
    RunCreateImage(steps,
                   [](GtkDialog* dialog) { gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL); });
    EXPECT_EQ(mainview.perspective, fadetarget + 3);
    TimeLoop(window->GetArea());
    EXPECT_EQ(mainview.perspective, fadetarget + 4);
}

} // namespace korvane
