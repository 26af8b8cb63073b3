#include "geometry/duplication.h"

namespace korvane
{

char duplicatesign = 0;
int duplicateshape = 0;
int duplicateside = 0;
float (*centerpoints)[3] = nullptr;
float (*rcenterpoints)[3] = nullptr;
int centernumber = 0;

} // namespace korvane
