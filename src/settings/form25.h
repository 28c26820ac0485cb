// Form25: the server store check screen, opened by the setup screen's test button, with one
// light for each step of the check: the address, the share, and a write to the share.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"
#include "settings/lights.h"

class Form25 : public QWidget {
    Q_OBJECT
public:
    explicit Form25(QWidget* parent = nullptr);

    // The address of the setup screen's ServerIP into Label4(5), "IP Status" into Label1,
    // and the three lights to waiting.
    void resetscreen();
    // Light `row` (1 address, 2 share, 3 write): the picture Cancel(row) and the colour
    // box Label4(row + 1).
    void setlight(int row, Light light);
    // The test button's run: reset and show the screen, then check the store with
    // testmode set, which keeps the busy box away.
    void storetest();

    Caption Label1;                         // the address test's result
    FixedArray<Caption, 0, 5> Label4;       // 0 heading, 1 close caption, 2..4 light boxes, 5 address
    FixedArray<Caption, 1, 3> Label3;       // the rows: "Address Test", "Share Test", "Share Writablity"
    FixedArray<PictureBox, 1, 3> Cancel;    // the lights
    PictureBox Delete;                      // close button
};

Form25& form25();
