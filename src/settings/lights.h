// The lights of the check screens and the setup screen's status boxes: waiting, good or
// fault, each with its ColorBox colour and its picture.
#pragma once

#include <QColor>

class PictureBox;

enum class Light { waiting, good, fault };

// ColorBox 4, 1 and 2.
QColor lightcolour(Light light);
// Image 1 of Balls (empty), image 2 of ColorIcons (good), image 1 of ColorIcons (fault).
void showlight(PictureBox& picture, Light light);
