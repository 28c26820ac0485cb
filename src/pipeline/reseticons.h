// The main screen's buttons brought in line with the program's flags, and its two lists
// emptied.
#pragma once

#include <string>

class Caption;
class PictureBox;

// Enables or greys Check and Settings by runmode, and the three action buttons by
// runmode, the used scanners and automatic download; puts the button backs to rest.
void reseticons();
// 1 empties List1 (outstanding files), any other value List2 (activity); last row first.
void clearlist(int whichlist);
// Kept in the interface; does nothing.
void addtolog(const std::string& addline);
// A button of the main screen lit and enabled, or dim and disabled, with its caption:
// image `image` of ColorIcons or of GreyIcons.
void enablebutton(PictureBox& picture, Caption& caption, int image, bool on);
