// Form6: the download progress screen, a row of nine balls that fill as a download goes on.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form6 : public QWidget {
    Q_OBJECT
public:
    explicit Form6(QWidget* parent = nullptr);

    // Brings the balls in line with TimeCount: image 3 of Balls into balls 1 to n, n being
    // TimeCount at most 9.
    void fillballs();
    // All nine balls back to image 1 of Balls.
    void resetballs();

    FixedArray<PictureBox, 1, 9> Image1;
    TextBox TimeCount;    // hidden: how many balls to fill
    TextBox ScanSource;   // hidden: which kind of download drives the balls
};
