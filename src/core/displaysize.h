// The two layouts of the main and setup screens: tall (displaytype 0) and wide (any other
// value, for displays of low height). Only places and sizes change.
#pragma once

class Form1;
class Form2;

// Lays out both screens for displaytype and centres them on the display.
void changedisplaysize();
// One screen's layout, without centring: the screens' constructors lay themselves out tall.
// Every picture, caption, list and Shape1 panel of the main screen gets its place, the
// button row included; ListFileBox(0) and Label2 keep the import icon's narrowing while the
// icon shows. The setup screen's frames keep their contents and never overlap.
void layoutmain(Form1& f, bool tall);
void layoutsetup(Form2& f, bool tall);
