#include "core/colorbox.h"

#include "runtime/fault.h"

QColor colorbox(int index)
{
    static const QColor palette[17] = {
        {255, 255, 192},  // 0 light yellow
        {192, 255, 192},  // 1 light green
        {255, 0, 0},      // 2 red
        {255, 255, 255},  // 3 white
        {0, 0, 0},        // 4 black
        {224, 224, 224},  // 5 light grey
        {192, 192, 192},  // 6 grey
        {64, 64, 64},     // 7 dark grey
        {192, 255, 255},  // 8 pale cyan
        {192, 192, 255},  // 9 pale blue
        {0, 0, 255},      // 10 blue
        {0, 192, 0},      // 11 green
        {255, 192, 128},  // 12 light orange
        {0, 128, 0},      // 13 dark green
        {255, 255, 0},    // 14 yellow
        {255, 192, 192},  // 15 pale red
        {255, 128, 0},    // 16 orange
    };
    if (index < 0 || index > 16) raisefault(fault::subscript);
    return palette[index];
}
