// Form16: the current status screen, which stands in for the main screen during an
// automatic download and shows the stage and the line counts.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form16 : public QWidget {
    Q_OBJECT
public:
    explicit Form16(QWidget* parent = nullptr);

    // Back to the first stage, "Getting Data", and into the bottom right corner.
    void setupstatus();
    // Makes `label` the current stage (bold, the others plain) and shows `data` beside it
    // with `counter` in colour box 10.
    void showstage(Caption& label, Caption& data, const std::string& counter);

    Caption ScanLabel, DownLabel, ProcLabel, SaveLabel;   // the stage captions
    Caption ScanData, DownData, ProcData, SaveData;       // their values, "000 / 000"
    FixedArray<Shape, 0, 1> BatteryLevel;                 // the level bar and its frame
};
