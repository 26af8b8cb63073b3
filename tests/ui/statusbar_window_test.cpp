#include "ui/dialogs.h"

#include "tests/support/widgets.h"

#include <gtest/gtest.h>

using namespace korvane;
using namespace korvane::testing;

static std::string GetShownMessage()
{
    GtkWidget* area = gtk_statusbar_get_message_area(GTK_STATUSBAR(statusbar));
    return gtk_label_get_text(GTK_LABEL(FindWidget(area, GTK_TYPE_LABEL)));
}

TEST(PrintStatusBar, ShowsTheLastTextAlone)
{
    ShowMainWindow();
    PrintStatusBar("first");
    EXPECT_EQ(GetShownMessage(), "first");
    PrintStatusBar(" X:   0.5000\t Y:  -1.2500\t Z:   0.0000");
    EXPECT_EQ(GetShownMessage(), " X:   0.5000\t Y:  -1.2500\t Z:   0.0000");
    GtkStatusbar* bar = GTK_STATUSBAR(statusbar);
    gtk_statusbar_pop(bar, gtk_statusbar_get_context_id(bar, "Statusbar"));
    EXPECT_EQ(GetShownMessage(), ""); // nothing lay below
}

TEST(PrintStatusBar, LeavesTheMessagesOfOthersAlone)
{
    ShowMainWindow();
    GtkStatusbar* bar = GTK_STATUSBAR(statusbar);
    const guint other = gtk_statusbar_get_context_id(bar, "another context");
    PrintStatusBar("before");
    gtk_statusbar_push(bar, other, "from another");
    PrintStatusBar("after");
    EXPECT_EQ(GetShownMessage(), "after");
    gtk_statusbar_pop(bar, gtk_statusbar_get_context_id(bar, "Statusbar"));
    EXPECT_EQ(GetShownMessage(), "from another");
    gtk_statusbar_pop(bar, other);
}

TEST(PrintStatusBar, NeedsNoWindow)
{
    GtkWidget* bar = statusbar;
    statusbar = nullptr;
    PrintStatusBar("nobody sees this");
    statusbar = bar;
    ShowMainWindow();
    EXPECT_NE(GetShownMessage(), "nobody sees this");
}
