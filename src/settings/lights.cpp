#include "settings/lights.h"

#include "core/colorbox.h"
#include "core/controls.h"
#include "core/imagelists.h"

QColor lightcolour(Light light)
{
    switch (light) {
    case Light::good: return colorbox(1);
    case Light::fault: return colorbox(2);
    default: return colorbox(4);
    }
}

void showlight(PictureBox& picture, Light light)
{
    switch (light) {
    case Light::good: picture.setpicture(ColorIcons(), 2); break;
    case Light::fault: picture.setpicture(ColorIcons(), 1); break;
    default: picture.setpicture(Balls(), 1); break;
    }
}
