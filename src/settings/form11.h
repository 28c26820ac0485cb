// Form11: the "System Check" busy box, a small window that says which check is running.
#pragma once

#include <QWidget>
#include <string>

#include "core/controls.h"

// Made on first use; it then shows the port check's progress as well.
class Form11 : public QWidget {
    Q_OBJECT
public:
    explicit Form11(QWidget* parent = nullptr);

    // Shows `text` in Label1 with an image of MiscIcons, shows and refreshes the box, lets
    // events run.
    void showbusy(const std::string& text, int image = 2);
    void hidebusy();

    Caption Label1;
    PictureBox Image1;
};

Form11& form11();
