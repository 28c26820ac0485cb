// How the setup screen shows the settings in the shared block: the lit and dim switches,
// the automatic download and clock adjustment of each scanner row, the data location and
// engineer list groups, and the status frames in palette colours.
#pragma once

class PictureBox;
class Shape;

// Palette numbers of the status frames.
constexpr int boxneutral = 0, boxgood = 1, boxfault = 2, boxidle = 6;

// A switch picture lit (on) or dim (off).
void light(PictureBox& picture, bool on);
bool islit(const PictureBox& picture);
// A status frame in palette colour `index`.
void paint(Shape& frame, int index);

// LAuto(i) "Yes" or "No" and its SAuto(i) picture, from scannerauto[i].
void showauto(int i);
// TimeUpdateLabel(i) from scannerautotime[i]: "Time Adj : Adv" for 1, "Time Adj : On" for
// 2, both in the colour for on, and "Time Adj : Off" in the colour for off for any other.
void showautotime(int i);
// The File Download Location group for savetype: Local lights FileDown(1) and hides the
// server's controls and the server half of the engineer group; the server modes light
// FileDown(2) and name the sub-mode in FileDownLabel(3): "Direct", "Batch Update" or
// "Email" (which hides the terminal number and captions the address box "Email").
void showsavetype();
// The Engineer Information group for fittertype: Local lights FitterInfo(1) and hides
// FitterInfoLabel(3); otherwise FitterInfo(2) is lit and FitterInfoLabel(3) reads "Direct"
// or "PC Copy".
void showfittertype();
