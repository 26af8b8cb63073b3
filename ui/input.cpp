#include "ui/input.h"

namespace korvane
{

int mstate = 0;
char keyspace = 0;

GtkWidget* toolbutton_gradient = nullptr;
GtkWidget* toolbutton_full = nullptr;
GtkWidget* toolbutton_wire = nullptr;
GtkWidget* sidemenu = nullptr;
GtkWidget* menuborder = nullptr;
GtkWidget* menuduplicate = nullptr;
GtkWidget* pointmenu = nullptr;
GtkWidget* menuvertex = nullptr;
GtkWidget* menupointdel = nullptr;
GtkWidget* stripemenu = nullptr;
GtkWidget* menuedge = nullptr;
GtkWidget* menustripedel = nullptr;
GtkWidget* bgmenu = nullptr;
GtkWidget* bgmenu2 = nullptr;

} // namespace korvane
