// ColorBox: the status palette of the monitor form, 17 colours by index. Status shapes and
// captions take their colours from it by number: neutral 0, good 1, fault 2, waiting 4.
#pragma once

#include <QColor>

// The colour of box `index` (0..16); any other index raises 9.
QColor colorbox(int index);
