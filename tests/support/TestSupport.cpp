#include "TestPaths.h"
