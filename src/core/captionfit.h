// Captions that shrink rather than clip: a one-line caption whose text is wider than its
// place is drawn in a smaller font, down to two thirds of its own size, and in its own size
// again once the text fits. Layout units follow the display's logical DPI and the fonts
// follow it too, so what fits at one desktop scale fits at all of them.
#pragma once

#include <QFont>
#include <QLabel>

// Makes `caption` keep its own font and fit from now on: on every resize and every font
// given from outside; fitcaption() after a new text.
void watchcaption(QLabel& caption);
void fitcaption(QLabel& caption);
// The caption's own font, before any shrinking (the drawn one is font()).
QFont captionfont(const QLabel& caption);
