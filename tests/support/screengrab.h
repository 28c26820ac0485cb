// Pictures of the real X screen for docs/screens/: the whole display grabbed at one moment,
// cut to the windows on it (with the window manager's frames), and laid side by side.
#pragma once

#include <QImage>
#include <QRect>
#include <QString>
#include <QWidget>
#include <vector>

namespace screengrab {

// The folder named by VEXAL_SHOTS, empty when it is unset.
QString shotsdir();
// True when the program draws on a real X server (the xcb platform).
bool realdisplay();
// Lets pending paints and window manager replies reach the X server for about `ms`, then
// grabs the whole display.
QImage display(int ms = 60);
// A window's place on the display with its frame.
QRect framed(const QWidget& window);
// `parts` in one row, top-aligned, with a gap of the desktop's colour between them.
QImage row(const std::vector<QImage>& parts, int gap = 8);
// `image` enlarged `times` times with square pixels (for small tray pictures).
QImage enlarged(const QImage& image, int times);
// Saves `image` as <shotsdir>/<name>.png; false when that failed.
bool save(const QImage& image, const char* name);
// How many colours a picture has, sampled every second pixel: a blank grab has one or two.
int colours(const QImage& image);

}  // namespace screengrab
