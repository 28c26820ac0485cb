#include "core/screens.h"

#include "core/form16.h"
#include "core/form6.h"

Form6& form6()
{
    static Form6* screen = new Form6;
    return *screen;
}

Form16& form16()
{
    static Form16* screen = new Form16;
    return *screen;
}
