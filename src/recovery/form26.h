// Form26: the scanner data log screen ("Scanner Data Log"). Support finds a past download in
// the daily data logs and writes its lines back into a fresh BAR file, so that a download
// that Tarn lost can be loaded again. Reached from the help menu and returns to it.
#pragma once

#include <QWidget>
#include <string>

#include "core/controls.h"
#include "runtime/vb.h"

class Form26 : public QWidget {
    Q_OBJECT
public:
    explicit Form26(QWidget* parent = nullptr);

    // Fills the day list from LOGS\01_DAT.TXT to LOGS\31_DAT.TXT, oldest date first; a log
    // whose first line is not a date "dd/mm/yyyy" is left out.
    void setupscreen();
    // Double click on a day: its downloads (the ENTRY lines) into List2.
    void list1dblclick();
    // Double click on a weekday-named leftover log (MON for row 0 to SUN for row 6).
    void list1adblclick();
    // Double click on a download: its lines into restorelines and List3.
    void list2dblclick();
    // Writes the lines of the chosen download into a new BAR file of the set, after asking.
    void dodatarestore();
    // Cancel: back to the help menu.
    void leave();

    ListBox List1;        // the days
    ListBox List1a;       // weekday-named leftover logs; nothing fills it
    ListBox List2;        // the downloads of the day
    ListBox List3;        // the lines of the download
    Caption Label1, Label2, Label3;   // the lists' captions
    // Index 0 "Restore Data Lines", 1 "Cancel".
    FixedArray<PictureBox, 0, 1> Cancel;
    FixedArray<Caption, 0, 1> Label4;

    Int16 logcount;
    FixedArray<std::string, 1, 40> logkeys;    // YYYYMMDD
    FixedArray<std::string, 1, 40> logtexts;
    // The chosen download: 1 the section line, 2 the header line "000=NNNYYYYMMDD", then
    // "nnn=<canonical line>". Kept until another download is read.
    FixedArray<std::string, 1, 1000> restorelines;
    Int16 restorecount;

protected:
    void closeEvent(class QCloseEvent* event) override;

private:
    // Fills List2 with the ENTRY lines of a log file, or the given messages.
    void listentries(const std::string& file, const char* noentries, const char* nofile);
    void readdownload(const std::string& file, const std::string& entry);
    // The restore's fault: its box and its log line.
    static void restorefault(const std::exception& e);
};

Form26& form26();
