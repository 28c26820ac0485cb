// Form21: the support e-mail screen ("Support Email Details"): a note with the program's
// settings, data files and logs to the support mailbox, and a copy of the logs to the
// server for support to read.
#pragma once

#include <QWidget>
#include <string>

#include "core/controls.h"
#include "runtime/vb.h"

class Form21 : public QWidget {
    Q_OBJECT
public:
    explicit Form21(QWidget* parent = nullptr);

    // Both attachments ticked, subject and note from the company details, Copy Logs only
    // when the data goes to a server (savetype above 0).
    void preparemail();
    // Flips "Attach Data" (1) or "Attach Logs" (2).
    void flipattach(int which);
    // Fills what was left empty, sends, and goes back by mailreturn. A send that fails
    // reaches the caller; the screen then stays as it is.
    void sendthemail();
    // Copies the weekday-named logs to the store folder (the data goes to a server).
    void copythelogs();
    // Hides the screen and goes back by mailreturn, with nothing sent.
    void cancel();

    TextBox EmailSubject;
    TextBox EmailText;
    TextBox Att1, Att2;                        // hidden: "1" when that attachment is wanted
    FixedArray<PictureBox, 1, 2> Attach;       // their ticks
    PictureBox Send, Delete, CopyLogs;         // send, cancel, copy the logs
    // 0 "Send Email", 1 "Cancel", 2 "Attach Data", 3 "Attach Logs", 4 "Copy Logs".
    FixedArray<Caption, 0, 4> Label4;
    Caption Label1, Label2;                    // captions of subject and text
    Caption Label3;                            // "Email To Be Sent To " and the address

protected:
    void closeEvent(class QCloseEvent* event) override;

private:
    void showattach(int which);
};

Form21& form21();

// Where the support e-mail screen goes back to: callerof[21], 1 the main screen, 2 the
// setup screen.
Int16& mailreturn();

// The support mail: TAGSTORE.INI at index 0 (the index stays empty without it), then from
// index 1 the data files when Att1 reads 1 (the PC's set, then the store's while the store
// is up and the data goes there) and the weekday-named logs when Att2 reads 1. Faults of the
// mail reach the caller, with the session closed.
void sendsupportmail(const std::string& recipient, const std::string& subject, const std::string& note);
