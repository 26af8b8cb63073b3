// The dialog of colours as its controls, and a small scene whose sides all have other colours.
#pragma once

#include "tests/support/shapes.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <array>
#include <functional>
#include <string>

namespace korvane::testing
{

// The controls of a page.
struct PageControls {
    GtkWidget* box;
    GtkWidget* check;
    GtkWidget* tabtext;
    GtkWidget* frames[2]; // of the light and the shadow
    GtkWidget* selections[2];
    GtkWidget* acuitytext;
    GtkWidget* slider;
};

struct ColorControls {
    GtkWidget* dialog;
    GtkWidget* notebook;
    PageControls pages[2];
};

using AllColors = std::array<float, colornumber>;

ColorControls FindColorControls(GtkDialog* dialog);

// Runs a command, does something with its dialog and answers it.
void EditColors(const std::function<void()>& command,
                const std::function<void(const ColorControls&)>& work, int response);

// Red, green, blue and alpha, 0 to 65535, as a colour selection shows them.
std::array<int, 4> GetChannels(GtkWidget* selection);

void SetColor(GtkWidget* selection, guint16 red, guint16 green, guint16 blue, guint16 alpha);

AllColors ColorsOf(const Side& side);

// Gives a side of the scene colours that grow from `first` by `step`, and a visibility.
void PaintSide(int shape, int side, float first, float step, int visibility);

// Every byte of what can be edited, of all sides in all versions.
std::string GetLooksOfScene();

// True when all versions of a side have this look.
bool HasLook(int shape, int side, const AllColors& colors, int visibility);

// Shapes 0 (a square), 1 (a pyramid of five sides) and 2 (a triangle), of which the rows are 1, 2
// and 3. Every side has other colours.
class ColorEdit : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    static void EditSide(int shape, int side, const std::function<void(const ColorControls&)>& work,
                         int response = GTK_RESPONSE_OK);
};

} // namespace korvane::testing
