#include "pipeline/form1.h"

#include "core/colorbox.h"
#include "core/displaysize.h"
#include "core/imagelists.h"
#include "pipeline/mainactions.h"


Form1::Form1(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form1");
    // Places and sizes come from the layout at the end (tall until the display size says
    // otherwise).
    PictureBox* pictures[] = {&Check, &Transfer, &Read, &Delete, &Settings};
    Caption* captions[] = {&CheckLabel, &TransferLabel, &ReadLabel, &DeleteLabel, &SettingsLabel};
    const char* picturenames[] = {"Check", "Transfer", "Read", "Delete", "Settings"};
    const char* captionnames[] = {"CheckLabel", "TransferLabel", "ReadLabel", "DeleteLabel", "SettingsLabel"};
    const char* texts[] = {"Check Scanner", "Transfer Data", "Read Only", "Delete Data", "Settings"};
    const int images[] = {6, 3, 4, 1, 8};
    for (int i = 0; i <= 4; ++i) {
        adopt(Shape1[i], this, "Shape1", i);
        Shape1[i].setfillcolor(colorbox(i == 0 || i == 4 ? 6 : 5));
        adopt(*pictures[i], this, picturenames[i]);
        pictures[i]->setpicture(ColorIcons(), images[i]);
        adopt(*captions[i], this, captionnames[i]);
        captions[i]->setcaption(texts[i]);
        captions[i]->setAlignment(Qt::AlignCenter);
    }
    adopt(CheckSubLabel, this, "CheckSubLabel");
    CheckSubLabel.setcaption("No Scanners Configured");
    CheckSubLabel.hide();

    adopt(Label3, this, "Label3");
    Label3.setcaption("ID: 000 Date: HHMM DDMMYY");
    adopt(List2, this, "List2");

    adopt(ListFileBox[0], this, "ListFileBox", 0);
    adopt(Label2, this, "Label2");
    Label2.setcaption("Outstanding History");
    adopt(ImportIcon[0], this, "ImportIcon", 0);
    ImportIcon[0].setpicture(MiscIcons(), 1);
    ImportIcon[0].hide();
    adopt(List1, this, "List1");

    adopt(Status, this, "Status");
    Status.setpicture(Balls(), 13);
    adopt(Label1, this, "Label1");
    Label1.setcaption("Battery");
    adopt(BatteryLevel, this, "BatteryLevel");
    BatteryLevel.setfillcolor(colorbox(6));
    adopt(Help, this, "Help");
    Help.setpicture(MiscIcons(), 4);
    adopt(HelpLabel, this, "HelpLabel");
    HelpLabel.setcaption("Help");
    adopt(Support, this, "Support");
    Support.setpicture(MiscIcons(), 5);
    adopt(Close, this, "Close");
    Close.setpicture(MiscIcons(), 6);
    adopt(CloseLabel, this, "CloseLabel");
    CloseLabel.setcaption("Close");

    layoutmain(*this, true);
    wireform1(*this);
}
