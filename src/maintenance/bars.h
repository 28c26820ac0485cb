// Left edges and widths of bars in layout units. The value asked for is kept on the
// control, so it stays exact where the pixels round.
#pragma once

class QWidget;

void setbarwidth(QWidget& bar, double units);
double barwidth(const QWidget& bar);
void setbarleft(QWidget& bar, double units);
double barleft(const QWidget& bar);
