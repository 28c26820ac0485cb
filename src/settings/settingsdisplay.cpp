#include "settings/settingsdisplay.h"

SettingsDisplay& settingsdisplay()
{
    static SettingsDisplay d;
    return d;
}
