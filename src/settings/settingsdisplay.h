// Where the settings and engineer list routines report beyond the setup screen: the
// "System Check" busy box (Form11) and the engineer row of the system check screen
// (Form17). Those screens fill in their parts when they are made; a part left empty is not
// shown.
#pragma once

#include <functional>
#include <string>

struct SettingsDisplay {
    // Form11: Label1 caption and the MiscIcons image of its picture; show and refresh.
    std::function<void(const std::string& caption, int image)> showbusy;
    std::function<void()> hidebusy;
    // Form17: the FitterStatus caption and the Status(2) picture, good or fault.
    std::function<void(const std::string& status, bool good)> fitterstatus;
    // Form17: Label5 in palette colour `index`.
    std::function<void(int index)> fitterlabel;
};
SettingsDisplay& settingsdisplay();
