#include "maintenance/screens.h"

#include "maintenance/form10.h"
#include "maintenance/form24.h"

Form10& form10()
{
    static Form10* screen = new Form10;
    return *screen;
}

Form24& form24()
{
    static Form24* screen = new Form24;
    return *screen;
}
