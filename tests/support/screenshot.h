// Drawings of screens as a user sees them, for the screen tests and docs/screens/.
#pragma once

#include <QWidget>

// Shows the screen, draws it offscreen into <build>/screens/<name>.png, hides it again, and
// checks that the drawing has the screen's size. Returns the number of colours in it (a
// blank face has one or two).
int drawscreen(QWidget& screen, const char* name);
