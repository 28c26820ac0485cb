// Form28: the file editor ("Tarn File Editor"), which mends the set of BAR files by hand.
// The left list holds the files of the set, the right list the rogue files on the server
// above the master file's count. Every entry begins with its file's name, "BARnnn".
#pragma once

#include <QWidget>
#include <string>

#include "core/controls.h"

class Form28 : public QWidget {
    Q_OBJECT
public:
    explicit Form28(QWidget* parent = nullptr);

    // Fills both lists from the files; a fault ends the filling with an error row.
    void listerrorfiles();
    // Double click on List1: asks for a new scanner ID and writes it into the file's
    // section line. Faults reach the caller.
    void list1dblclick();
    // Double click on List2: adds the rogue file to the set, or deletes it, after asking.
    // Faults reach the caller.
    void list2dblclick();
    // Cancel, Label4 and the window's close: back to the main screen with a fresh file list.
    void finished();

    ListBox List1;          // "Available Scanner Data"
    ListBox List2;          // "Rogue Files"
    Caption Label1, Label2; // the lists' captions
    PictureBox Cancel;
    Caption Label4;         // "Finished"

protected:
    void closeEvent(class QCloseEvent* event) override;
};

Form28& form28();

// Hides the main screen, shows the file editor and fills its lists.
void showfileeditor();
