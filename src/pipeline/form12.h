// Form12: the corrupt data screen, where the lines of a scanner whose clock was wrong are
// shown and shifted before they are saved.
#pragma once

#include <QWidget>

#include "core/controls.h"

class Form12 : public QWidget {
    Q_OBJECT
public:
    explicit Form12(QWidget* parent = nullptr);

    ListBox List1;   // the lines under repair
    Caption Label2;  // "Corrupt Data List - Scanner " and the ID
    Caption Label3;  // the scanner's clock, "HHMM DDMMYY"
};
