// Form1: the main screen, with the four scanner actions (check, transfer, read only,
// delete), the activity list, the outstanding files list and the status picture.
#pragma once

#include <QWidget>
#include <string>

#include "core/controls.h"
#include "runtime/vb.h"

class Form1 : public QWidget {
    Q_OBJECT
public:
    explicit Form1(QWidget* parent = nullptr);

    // ---- the actions: a picture and its caption each, on a back panel of Shape1 ----
    PictureBox Check, Transfer, Read, Delete, Settings;
    Caption CheckLabel, TransferLabel, ReadLabel, DeleteLabel, SettingsLabel;
    Caption CheckSubLabel;                // shown when no scanner is used
    FixedArray<Shape, 0, 4> Shape1;       // backs: 0 check, 1 transfer, 2 read, 3 delete, 4 settings

    // ---- lists ----
    ListBox List1;                        // outstanding files
    ListBox List2;                        // activity
    Caption Label2;                       // caption of List1, "Outstanding History"
    FixedArray<Shape, 0, 0> ListFileBox;  // frame of List1
    FixedArray<PictureBox, 0, 0> ImportIcon;   // mailed-in files waiting, beside Label2

    // ---- scanner and program state ----
    Caption Label3;                       // "ID: 000 Date: HHMM DDMMYY"
    PictureBox Status;                    // automatic download state; a click switches it
    Caption Label1;                       // battery: opens the battery timer
    Shape BatteryLevel;                   // level bar, 3100 units at full
    PictureBox Help, Support, Close;
    Caption HelpLabel, CloseLabel;

    // Result field of getbin and bintodate, overwritten by each call.
    std::string binresult;
};
