#include "maintenance/bars.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariant>
#include <QWidget>

#include "core/controls.h"

namespace {

// Pixels back to layout units, for a bar whose units were never set here.
double units(int pixels)
{
    double dpi = 96.0;
    if (auto screen = QGuiApplication::primaryScreen()) dpi = screen->logicalDotsPerInch();
    return pixels * 1440.0 / dpi;
}

int pixels(double units) { return twips((int)(units + (units >= 0 ? 0.5 : -0.5))); }

}  // namespace

void setbarwidth(QWidget& bar, double w)
{
    bar.setProperty("unitwidth", w);
    bar.resize(std::max(0, pixels(w)), bar.height());
}

double barwidth(const QWidget& bar)
{
    const QVariant v = bar.property("unitwidth");
    return v.isValid() ? v.toDouble() : units(bar.width());
}

void setbarleft(QWidget& bar, double left)
{
    bar.setProperty("unitleft", left);
    bar.move(pixels(left), bar.y());
}

double barleft(const QWidget& bar)
{
    const QVariant v = bar.property("unitleft");
    return v.isValid() ? v.toDouble() : units(bar.x());
}
