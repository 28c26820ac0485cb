// The checks of the setup screen's address and terminal number boxes.
#pragma once

// Colours Shape1(1) by the terminal number in TarnTNO: "999" (no terminal) neutral; a
// whole number from 1 to 998 good, rewritten as three digits; anything else, "000" and an
// empty box included, the fault colour.
void checktno();
// Colours Shape1(7) by the e-mail test of the text in ServerIP; true when it passes.
bool checkemailbox();
