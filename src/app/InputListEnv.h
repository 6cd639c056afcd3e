#pragma once
// The surroundings of a command on the data list as the window gives them: the
// program's prompt, the bar over the list, the totals and the sums label of the data
// area.

#include "list/modListEnv.h"

class InputDataPage;

ListEnv InputListEnv(InputDataPage* page, ListProgress* progress);
