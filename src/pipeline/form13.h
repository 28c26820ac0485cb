// Form13: the select scanner type screen ("Select Scanner Type"): with more than one
// scanner type in use, the user picks the one an action is for.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form13 : public QWidget {
    Q_OBJECT
public:
    explicit Form13(QWidget* parent = nullptr);

    FixedArray<Caption, 1, 3> STypeL;   // the three scanner types; only those in use enabled
    FixedArray<Shape, 1, 3> STypeB;     // the colour box beside each
    PictureBox Cancel;
    Caption Label4;                     // "Cancel"
    TextBox Text1;                      // hidden: what follows the choice, 1 check, 2 delete,
                                        // 3 transfer, 4 read

    // A scanner type chosen: the action of Text1 runs on it.
    void STypeL_Click(int index);
    // Cancel, its caption or the window's close: nothing runs and the buttons come back.
    void Cancel_Click();

protected:
    void closeEvent(class QCloseEvent* event) override;
};

Form13& form13();
