#include "support/form21.h"

#include <QCloseEvent>

#include "core/globals.h"
#include "core/imagelists.h"
#include "core/runtimeerror.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/mail.h"
#include "settings/form2.h"
#include "settings/form3.h"

namespace {

bool given(const std::string& value) { return !value.empty() && value != "N/A"; }

// The subject and note the company details give.
std::string subjectfromcompany()
{
    const std::string company = form3().Company.value();
    return given(company) ? company + ": Bench Clock Support Email" : "Bench Clock Support Email";
}

std::string notefromcompany()
{
    const std::string user = form3().User.value(), telephone = form3().Telephone.value();
    if (!given(user)) return "";
    return given(telephone) ? "From: " + user + " Tel: " + telephone : "From: " + user;
}

}  // namespace

Form21::Form21(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form21");
    setWindowTitle("Support Email Details");
    setFixedSize(twips(7560), twips(3900));

    place(Label3, this, "Label3", 240, 180, 7080, 300);
    place(Label1, this, "Label1", 240, 660, 1320, 300);
    Label1.setcaption("Subject:");
    place(EmailSubject, this, "EmailSubject", 1560, 600, 5760, 360);
    place(Label2, this, "Label2", 240, 1140, 1320, 300);
    Label2.setcaption("Details:");
    place(EmailText, this, "EmailText", 1560, 1080, 5760, 1320);
    EmailText.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    adopt(Att1, this, "Att1");
    adopt(Att2, this, "Att2");
    Att1.hide();
    Att2.hide();

    // The buttons in a row: Send, the two ticks, Copy Logs, Cancel.
    struct Button {
        PictureBox* picture;
        const char* name;
        int index;   // of the picture's array, -1 for none
        int caption;
    } buttons[] = {{&Send, "Send", -1, 0}, {&Attach[1], "Attach", 1, 2}, {&Attach[2], "Attach", 2, 3},
                   {&CopyLogs, "CopyLogs", -1, 4}, {&Delete, "Delete", -1, 1}};
    const char* captions[] = {"Send Email", "Cancel", "Attach Data", "Attach Logs", "Copy Logs"};
    for (int i = 0; i < 5; ++i) {
        const int left = 240 + i * 1440;
        place(*buttons[i].picture, this, buttons[i].name, buttons[i].index, left + 360, 2700, 600, 600);
        const int c = buttons[i].caption;
        place(Label4[c], this, "Label4", c, left, 3360, 1320, 300);
        Label4[c].setcaption(captions[c]);
        Label4[c].setAlignment(Qt::AlignCenter);
    }
    Send.setpicture(ColorIcons(), 7);
    Delete.setpicture(ColorIcons(), 1);
    CopyLogs.setpicture(ColorIcons(), 3);

    connect(&Send, &PictureBox::clicked, this, guard([this] { sendthemail(); }));
    connect(&Label4[0], &Caption::clicked, this, guard([this] { sendthemail(); }));
    connect(&Delete, &PictureBox::clicked, this, guard([this] { cancel(); }));
    connect(&Label4[1], &Caption::clicked, this, guard([this] { cancel(); }));
    for (int which = 1; which <= 2; ++which) {
        connect(&Attach[which], &PictureBox::clicked, this, guard([this, which] { flipattach(which); }));
        connect(&Label4[which + 1], &Caption::clicked, this, guard([this, which] { flipattach(which); }));
    }
    connect(&CopyLogs, &PictureBox::clicked, this, guard([this] { copythelogs(); }));
    connect(&Label4[4], &Caption::clicked, this, guard([this] { copythelogs(); }));
}

void Form21::showattach(int which)
{
    const TextBox& flag = which == 1 ? Att1 : Att2;
    if (flag.value() == "1") Attach[which].setpicture(ColorIcons(), 2);
    else Attach[which].setpicture(GreyIcons(), 2);
}

void Form21::preparemail()
{
    Att1.settext("1");
    Att2.settext("1");
    showattach(1);
    showattach(2);
    EmailSubject.settext(subjectfromcompany());
    EmailText.settext(notefromcompany());
    Label3.setcaption("Email To Be Sent To " + mail::supportaddress());
    const bool server = g().savetype != 0;
    Label4[4].setEnabled(server);
    CopyLogs.setEnabled(server);
    if (server) CopyLogs.setpicture(ColorIcons(), 3);
    else CopyLogs.setpicture(GreyIcons(), 3);
}

void Form21::flipattach(int which)
{
    TextBox& flag = which == 1 ? Att1 : Att2;
    flag.settext(flag.value() == "1" ? "0" : "1");
    showattach(which);
}

void Form21::sendthemail()
{
    if (EmailSubject.value().empty()) EmailSubject.settext(subjectfromcompany());
    if (EmailText.value().empty()) {
        const std::string note = notefromcompany();
        EmailText.settext(note.empty() ? "No Details Supplied!" : note);
    }
    sendsupportmail(mail::supportaddress(), EmailSubject.value(), EmailText.value());
    cancel();
}

void Form21::cancel()
{
    hide();
    if (mailreturn() == 1) {
        form1().show();
        g().pressedop = 0;
    } else if (mailreturn() == 2) {
        form2().show();
    }
}

void Form21::closeEvent(QCloseEvent* event)
{
    event->ignore();
    guarded([this] { cancel(); });
}

Form21& form21()
{
    static Form21* screen = new Form21;
    return *screen;
}

Int16& mailreturn() { return g().callerof[21]; }
