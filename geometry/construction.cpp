#include "geometry/construction.h"

namespace korvane
{

float (*newpoints)[3] = nullptr;
float (*rotated)[3] = nullptr;
int newpointnumber = 0;
char newsign = 0;

GtkWidget* toolbutton_news = nullptr;

} // namespace korvane
