#include "tests/support/tracked.h"

long Tracked::s_live = 0;
