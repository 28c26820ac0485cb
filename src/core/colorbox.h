// ColorBox: the status palette of the monitor form, 17 colours by index.
#pragma once

#include <QColor>

// The colour of box `index` (0 to 16); fault 9 outside.
QColor ColorBox(int index);
