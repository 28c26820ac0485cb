// Form22: the exit option screen ("Select Exit Option"), opened by the main screen's Close
// picture: leave the program, keep it running in the tray, or go back.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form22 : public QWidget {
    Q_OBJECT
public:
    explicit Form22(QWidget* parent = nullptr);

    // Index 1 "EXIT COMPLETELY", 2 "RUN IN TASK BAR", with a picture beside each; index 0
    // of the pictures is Cancel, whose caption is Label4.
    FixedArray<Caption, 1, 2> Label1;
    FixedArray<PictureBox, 0, 2> Picture1;
    Caption Label4;

    // The clicks, as the screen's events run them.
    void cancelclick();            // Cancel picture or Label4
    void exitclick();              // caption or picture of EXIT COMPLETELY
    void taskbarcaptionclick();    // caption of RUN IN TASK BAR: Timer4 armed
    void taskbarpictureclick();    // picture of RUN IN TASK BAR: Timer4 left as it is
};

Form22& form22();
