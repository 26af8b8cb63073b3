#include "ui/coloredit.h"

#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/coloredits.h"
#include "tests/support/invariants.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "view/frameloop.h"
#include "view/picking.h"

#include <array>
#include <string>

namespace korvane
{

using namespace korvane::testing;

static Side& SideOf(int shape, int side)
{
    return shapes[shape]->sides[side];
}

TEST_F(ColorEdit, ChangesNothingByShowing)
{
    PaintSide(0, 0, 1.0F / 3, 0.011F, VISIBLE_FRONT); // between the steps of the controls
    const std::string before = GetLooksOfScene();
    EditSide(0, 0, [&](const ColorControls&) { EXPECT_EQ(GetLooksOfScene(), before); });
    EXPECT_EQ(GetLooksOfScene(), before);
}

TEST_F(ColorEdit, HoldsEachSideInItsFourVersions)
{
    EditColors([] { GetColor("Color of shape", 1, -1); },
               [](const ColorControls&) {
                   ASSERT_EQ(csidenumber, 4 * 5);
                   for (int k = 0; k < 5; k++) {
                       EXPECT_EQ(csides[4 * k], &shapes[1]->sides[k]);
                       EXPECT_EQ(csides[4 * k + 1], &round1[1]->sides[k]);
                       EXPECT_EQ(csides[4 * k + 2], &shapest[1]->sides[k]);
                       EXPECT_EQ(csides[4 * k + 3], &round1t[1]->sides[k]);
                   }
               },
               GTK_RESPONSE_CANCEL);
}

TEST_F(ColorEdit, AppliesTheMeanOfAllSidesAtOnce)
{
    for (int k = 0; k < 5; k++) {
        PaintSide(1, k, 0.125F * float(k), 0, k == 0 ? VISIBLE_BACK : VISIBLE_BOTH);
    }
    PaintSide(1, 4, 1, 0, VISIBLE_BOTH); // 0, 1/8, 2/8, 3/8 and 1: their mean is 0.35
    AllColors mean;
    mean.fill(0.35F);
    const AllColors other = ColorsOf(SideOf(0, 0));
    rdstate = 0;
    EditColors([] { GetColor("Color of shape", 1, -1); },
               [&](const ColorControls& controls) {
                   for (int k = 0; k < 5; k++) {
                       EXPECT_TRUE(
                           HasLook(1, k, mean, VISIBLE_BACK)); // the first side's visibility
                   }
                   EXPECT_EQ(ColorsOf(SideOf(0, 0)), other); // not one of them
                   EXPECT_EQ(GetChannels(controls.pages[0].selections[0]),
                             (std::array{22937, 22937, 22937, 22937})); // 22937.25 + 0.5
                   EXPECT_FALSE(gtk_widget_get_sensitive(controls.pages[0].box));
               },
               GTK_RESPONSE_OK);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    for (int k = 0; k < 5; k++) {
        EXPECT_TRUE(HasLook(1, k, mean, VISIBLE_BACK));
    }
}

// Changes everything that can be changed.
static void ChangeAll(const ColorControls& controls)
{
    for (const PageControls& page : controls.pages) {
        SetColor(page.selections[0], 65535, 0, 13107, 26214);
        SetColor(page.selections[1], 0, 39321, 52428, 65535);
        MoveSlider(page.slider, 0.625);
        gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(page.check), FALSE);
    }
}

// 13107 is a fifth of 65535.
static const AllColors changed = {1, 0, 0.2F, 0.4F, 0, 0.6F, 0.8F, 1, 0.625F,
                                  1, 0, 0.2F, 0.4F, 0, 0.6F, 0.8F, 1, 0.625F};

TEST_F(ColorEdit, ShowsEveryChangeAtOnce)
{
    EditSide(1, 2, [](const ColorControls& controls) {
        ChangeAll(controls);
        EXPECT_TRUE(HasLook(1, 2, changed, VISIBLE_NOT));
    });
    EXPECT_TRUE(HasLook(1, 2, changed, VISIBLE_NOT));
    EXPECT_NE(ColorsOf(SideOf(1, 1)), changed); // beside it
}

TEST_F(ColorEdit, PutsEachColourInItsPlace)
{
    const int places[2][2] = {{FRONT_LIGHT, FRONT_SHADOW}, {BACK_LIGHT, BACK_SHADOW}};
    for (int face = 0; face < 2; face++) {
        for (int kind = 0; kind < 2; kind++) {
            PaintSide(0, 0, 0.5F, 0, VISIBLE_BOTH);
            AllColors expected = ColorsOf(SideOf(0, 0));
            const int place = places[face][kind];
            expected[std::size_t(place)] = 1;
            expected[std::size_t(place) + 1] = 0;
            expected[std::size_t(place) + 2] = 0.2F;
            expected[std::size_t(place) + 3] = 0.4F;
            EditSide(0, 0, [&](const ColorControls& controls) {
                rdstate = 0;
                SetColor(controls.pages[face].selections[kind], 65535, 0, 13107, 26214);
                EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
                EXPECT_TRUE(HasLook(0, 0, expected, VISIBLE_BOTH));
            });
        }
    }
}

TEST_F(ColorEdit, KeepsAcuityInItsRange)
{
    struct {
        double value;
        float front;
    } const rows[] = {{0.25, 0.25F}, {-0.5, 0}, {1.75, 1}, {0, 0}, {1, 1}};
    EditSide(0, 0, [&](const ColorControls& controls) {
        for (const auto& row : rows) {
            rdstate = 0;
            MoveSlider(controls.pages[0].slider, row.value);
            EXPECT_EQ(SideOf(0, 0).colors[FRONT_ACUITY], row.front);
            EXPECT_EQ(round1t[0]->sides[0].colors[FRONT_ACUITY], row.front);
            EXPECT_EQ(gtk_range_get_value(GTK_RANGE(controls.pages[0].slider)), double(row.front));
            EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
        }
        MoveSlider(controls.pages[1].slider, 0.125);
        EXPECT_EQ(SideOf(0, 0).colors[BACK_ACUITY], 0.125F);
        EXPECT_EQ(SideOf(0, 0).colors[FRONT_ACUITY], 1);
    });
}

TEST_F(ColorEdit, GreysOutThePageOfAFaceThatIsNotVisible)
{
    EditSide(1, 0, [](const ColorControls& controls) {
        for (int i = 0; i < 2; i++) {
            GtkToggleButton* check = GTK_TOGGLE_BUTTON(controls.pages[i].check);
            rdstate = 0;
            gtk_toggle_button_set_active(check, FALSE);
            EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
            EXPECT_FALSE(gtk_widget_get_sensitive(controls.pages[i].box));
            EXPECT_TRUE(gtk_widget_get_sensitive(controls.pages[1 - i].box));
            const int left = i == 0 ? VISIBLE_BACK : VISIBLE_FRONT;
            EXPECT_TRUE(HasLook(1, 0, ColorsOf(SideOf(1, 0)), left));
            gtk_toggle_button_set_active(check, TRUE);
            EXPECT_TRUE(gtk_widget_get_sensitive(controls.pages[i].box));
            EXPECT_TRUE(HasLook(1, 0, ColorsOf(SideOf(1, 0)), VISIBLE_BOTH));
        }
    });
}

TEST_F(ColorEdit, ComesBackToTheBitWhenItIsNotAccepted)
{
    const std::string before = GetLooksOfScene();
    for (int response : {GTK_RESPONSE_CANCEL, GTK_RESPONSE_DELETE_EVENT}) {
        rdstate = 0;
        EditColors([] { GetColor("Color of selected", -1, -1); }, ChangeAll, response);
        EXPECT_EQ(GetLooksOfScene(), before);
        EXPECT_EQ(pnumber, 0);
        EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    }
}

TEST_F(ColorEdit, ComesBackWhenTheDialogIsTakenAway)
{
    const std::string before = GetLooksOfScene();
    AnswerDialog([](GtkDialog* dialog) {
        ChangeAll(FindColorControls(dialog));
        gtk_widget_destroy(GTK_WIDGET(dialog)); // as when the main window goes
        return true;
    });
    GetColor("Color of side", 0, 0);
    EXPECT_EQ(GetLooksOfScene(), before);
    EXPECT_EQ(csidenumber, 0);
}

TEST_F(ColorEdit, IsOneUndoStepOfItsShape)
{
    const std::string before = GetLooksOfScene();
    EditColors([] { GetColor("Color of shape", 1, -1); }, ChangeAll, GTK_RESPONSE_OK);
    const std::string after = GetLooksOfScene();
    EXPECT_NE(after, before);
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].kind, 0);
    Undo();
    EXPECT_EQ(GetLooksOfScene(), before);
    EXPECT_EQ(pindex, 0);
    Redo();
    EXPECT_EQ(GetLooksOfScene(), after);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(ColorEdit, IsOneUndoStepOfTheSceneForTheSelection)
{
    const std::string before = GetLooksOfScene();
    SelectRows({1, 3});
    EditColors(ColorSelected, ChangeAll, GTK_RESPONSE_OK);
    const std::string after = GetLooksOfScene();
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].kind, 1);
    EXPECT_TRUE(HasLook(0, 0, changed, VISIBLE_NOT));
    EXPECT_TRUE(HasLook(2, 0, changed, VISIBLE_NOT));
    EXPECT_NE(ColorsOf(SideOf(1, 0)), changed); // not selected
    Undo();
    EXPECT_EQ(GetLooksOfScene(), before);
    Redo();
    EXPECT_EQ(GetLooksOfScene(), after);
    EXPECT_EQ(FindBrokenRule(), "");
}

static std::string title; // of the dialog that was cancelled
static int editedsides = 0;

static void Remember(const ColorControls& controls)
{
    title = gtk_window_get_title(GTK_WINDOW(controls.dialog));
    editedsides = csidenumber / 4;
}

TEST_F(ColorEdit, EditsTheSideThatWasPressed)
{
    buttonpresssideactive = 3; // the square's side is 0, the pyramid's are 1 to 5
    EditColors(
        ColorSide,
        [](const ColorControls& controls) {
            Remember(controls);
            EXPECT_EQ(csides[0], &shapes[1]->sides[2]);
        },
        GTK_RESPONSE_CANCEL);
    EXPECT_EQ(title, "Color of side");
    EXPECT_EQ(editedsides, 1);
}

TEST_F(ColorEdit, EditsTheFirstSideWhenThePressedOneIsGone)
{
    buttonpresssideactive = 7; // of seven
    EditColors(
        ColorSide,
        [](const ColorControls& controls) {
            Remember(controls);
            EXPECT_EQ(csides[0], &shapes[0]->sides[0]);
        },
        GTK_RESPONSE_CANCEL);
    EXPECT_EQ(editedsides, 1);
}

TEST_F(ColorEdit, IsNotOfferedWithoutASide)
{
    ColorSide(); // no side was pressed; a dialog would wait for ever
    GetColor("Color of side", 1, 5);
    StartEmptyScene();
    buttonpresssideactive = 7;
    ColorSide();
    ColorShape();
    ColorSelected();
    GetColor("Color of shape", 0, -1);
    EXPECT_EQ(pnumber, 0);
}

TEST_F(ColorEdit, EditsTheShapeOfWhatWasPressed)
{
    const auto getshape = [] {
        const Side* master = nullptr;
        EditColors(
            ColorShape,
            [&](const ColorControls& controls) {
                Remember(controls);
                master = csides[0];
            },
            GTK_RESPONSE_CANCEL);
        EXPECT_EQ(title, "Color of shape");
        for (int i = 0; i < shapenumber; i++) {
            if (master->shape == shapes[i] && editedsides == shapes[i]->sidenumber) {
                return i;
            }
        }
        return -1;
    };
    buttonpresspointactive = 4; // the square has points 0 to 3, the pyramid 4 to 8
    EXPECT_EQ(getshape(), 1);
    buttonpressstripeactive = 0; // a stripe comes before a point
    EXPECT_EQ(getshape(), 0);
    buttonpresssideactive = 6; // and a side before both
    EXPECT_EQ(getshape(), 2);
}

TEST_F(ColorEdit, EditsTheSelectionWhenNothingWasPressed)
{
    SelectRows({1, 2});
    EditColors(ColorShape, Remember, GTK_RESPONSE_CANCEL);
    EXPECT_EQ(title, "Color of shape");
    EXPECT_EQ(editedsides, 6); // of the square and the pyramid
}

TEST_F(ColorEdit, EditsAllShapesWhenNoneIsSelected)
{
    EditColors(ColorSelected, Remember, GTK_RESPONSE_CANCEL);
    EXPECT_EQ(title, "Color of selected");
    EXPECT_EQ(editedsides, 7);
}

TEST_F(ColorEdit, EditsEachSideOnceWhenAFolderAndItsContentAreSelected)
{
    const int folder = AddFolder("folder");
    const int inner = AddFolder("inner", folder);
    AddToScene(Cube(), "cube", folder);
    SelectRows({folder, inner, inner + 1}); // the cube's entry stays beside the folder's
    ASSERT_EQ(GetSelection(), "folder cube");
    EditColors(ColorSelected, Remember, GTK_RESPONSE_CANCEL);
    EXPECT_EQ(editedsides, 6);
}

} // namespace korvane
