#include "view/navigation.h"

namespace korvane
{

CameraFrame camtable[cameraframes];
int camposition = cameraframes; // idle: no transition plays at the start

} // namespace korvane
