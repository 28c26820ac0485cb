// Form14: the select new scanner ID screen ("Select New Scanner ID"): an engineer of the
// list, or an ID typed in, becomes the scanner's new ID.
#pragma once

#include <QWidget>

#include "core/controls.h"

class Form14 : public QWidget {
    Q_OBJECT
public:
    explicit Form14(QWidget* parent = nullptr);

    // The screen's heights in layout units: with the list, and with the ID box alone.
    static constexpr int listheight = 7725, boxheight = 2325;

    // Fills List1 with the engineers (the first number in six digits, a blank, the name;
    // "Invalid Entry" for a line that is not a record) and lays the screen out: with rows,
    // the list and "Or Enter ID"; without, the box alone under "Enter ID". FitterID starts
    // empty.
    void setuplist();
    // Add: the ID typed must be given, digits only, at most 999 and not begin "000".
    void addfunc();
    // A double click on row `index`: its first six characters become the ID.
    void chooserow(int index);

    ListBox List1;
    Caption Label2;      // caption of the list
    Caption Label1;      // caption of the box: "Enter ID" or "Or Enter ID"
    TextBox FitterID;
    PictureBox Add;
    Caption AddLabel;

signals:
    // The screen has hidden with the new ID in FitterID (and the main screen is refreshed
    // when callerof[14] is 1); the scanner is given the ID from here.
    void idchosen();

private:
    void finish();
};

Form14& form14();
