// Form18: the help menu ("Select Help Required"): ten entries that lead to the recovery and
// support tools, each a HelpLabel and HelpIcon pair with one index.
#pragma once

#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form18 : public QWidget {
    Q_OBJECT
public:
    explicit Form18(QWidget* parent = nullptr);

    // The entry of `index` (0 to 9); a fault shows its own box naming the entry.
    void helptype(int index);
    // Cancel and closing the window: hides the menu and goes back by helpreturn.
    void cancel();

    FixedArray<Caption, 0, 9> HelpLabel;
    FixedArray<PictureBox, 0, 9> HelpIcon;
    PictureBox Cancel;
    Caption Label4;   // "Cancel"

protected:
    void closeEvent(class QCloseEvent* event) override;
};

Form18& form18();

// Where the help menu goes back to: callerof[18], 1 the main screen, 2 the setup screen.
Int16& helpreturn();

// Opens the help menu from the main screen (1) or the setup screen (2): that screen hides
// and the menu shows.
void openhelpmenu(int from);
// Goes back to the screen the menu was opened from, without the menu: the main screen
// with its button state cleared, or the setup screen.
void returnfromhelp();
