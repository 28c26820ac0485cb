// Form4: the engineer list screen ("Engineer IDs"): the engineers of the list that
// fittertype names, with add, and change by a double click on a local list.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form4 : public QWidget {
    Q_OBJECT
public:
    explicit Form4(QWidget* parent = nullptr);

    // Fills List1 from the list: "Invalid Entry" for a line that is not a record, headers
    // left out; a local record as its first number in six digits, a blank and the name, a
    // server or PC Copy record as the six digits, the name and " (" second number ")".
    // Add is offered for the Local and PC Copy lists.
    void setuplist();
    // Add: the details screen, empty, without its delete button.
    void addengineer();
    // A double click on row `index` of a local list: that engineer on the details screen.
    void changeengineer(int index);
    // Cancel: hides the list and goes back by callerof[4].
    void cancel();

    ListBox List1;
    Caption Label1;                      // heading of the list
    FixedArray<PictureBox, 1, 1> Add;
    FixedArray<Caption, 0, 1> Label4;    // 0 the add caption, 1 the cancel caption
    PictureBox Cancel;

signals:
    // Cancel when the list was opened from the scanner information screen (callerof[4] 10).
    void backtoscanner();
};

Form4& form4();

// FitterList on the setup screen: proves the list and opens it, unless its place is known
// to be unusable.
void openengineerlist();
