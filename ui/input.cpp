#include "ui/input.h"

namespace korvane
{

int mstate = 0;
char keyspace = 0;

} // namespace korvane
