// The two layouts of the main and setup screens: tall (displaytype 0) and wide (any other
// value, for displays of low height). Only places and sizes change.
#pragma once

// Lays out both screens for displaytype and centres them on the display.
void changedisplaysize();
