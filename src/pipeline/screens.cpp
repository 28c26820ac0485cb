#include "pipeline/screens.h"

#include "pipeline/form1.h"
#include "pipeline/form12.h"

Form1& form1()
{
    static Form1* screen = new Form1;
    return *screen;
}

Form12& form12()
{
    static Form12* screen = new Form12;
    return *screen;
}
