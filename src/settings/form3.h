// Form3: the company information screen ("User Information"): company, user, telephone and
// head office e-mail, kept in section COMPANY of the settings file.
#pragma once

#include <QWidget>

#include "core/controls.h"

class Form3 : public QWidget {
    Q_OBJECT
public:
    explicit Form3(QWidget* parent = nullptr);

    // The screen's heights in layout units: with the welcome text of a first start, and
    // without.
    static constexpr int tallheight = 5700, normalheight = 4575;
    void setheight(int units);

    // Fills the four boxes from section COMPANY; a value without its "#" shows "N/A".
    void loadsettings();
    // Writes the boxes that are not empty, each with a trailing "#" (HOEMAIL takes the
    // telephone box's text), hides the screen at its normal height without the welcome
    // text, and raises leadon().
    void updatedata();

    TextBox Company, User, Telephone, HOEmail;
    Caption Label1, Label2, Label3, Label4;   // their captions
    Caption Label6;                           // welcome text of a first start
    PictureBox OK;
    Caption OKLabel;

signals:
    // The details are stored; the screen that opened this one goes on from here.
    void leadon();
};

Form3& form3();
