// Form5: the engineer details screen ("Engineer Details"): adds an engineer to the local
// list in order of number, or removes one.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form5 : public QWidget {
    Q_OBJECT
public:
    explicit Form5(QWidget* parent = nullptr);

    // Update, on a Local list only: checks the ID (given, digits only, up to 999, not the
    // second number of any record) and the name, then writes the record into the list
    // before the first record whose second number is not below the ID.
    void updatedata();
    // Delete, on a Local list only, after a question: removes every record whose second
    // number is the ID in Text1. The list is shown again and this screen hides.
    void deletedata();
    // The delete button and its caption: shown lit and enabled, or dim, disabled and hidden.
    void showdelete(bool on);

    TextBox FitterID, FitterName;
    TextBox Text1, Text2;               // hidden: ID and name of the engineer shown
    Caption Label1, Label2;             // captions of the two boxes
    PictureBox Update, Cancel;
    Caption UpdateLabel, CancelLabel;
    FixedArray<PictureBox, 1, 1> Delete;
    FixedArray<Caption, 1, 1> DeleteLabel;
};

Form5& form5();
