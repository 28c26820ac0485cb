#include "pipeline/form1.h"

#include "core/colorbox.h"
#include "core/imagelists.h"
#include "pipeline/mainactions.h"


Form1::Form1(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form1");
    // The tall layout; the display size routine moves things for the wide one.
    resize(twips(7380), twips(9690));

    PictureBox* pictures[] = {&Check, &Transfer, &Read, &Delete, &Settings};
    Caption* captions[] = {&CheckLabel, &TransferLabel, &ReadLabel, &DeleteLabel, &SettingsLabel};
    const char* picturenames[] = {"Check", "Transfer", "Read", "Delete", "Settings"};
    const char* captionnames[] = {"CheckLabel", "TransferLabel", "ReadLabel", "DeleteLabel", "SettingsLabel"};
    const char* texts[] = {"Check Scanner", "Transfer Data", "Read Only", "Delete Data", "Settings"};
    const int images[] = {6, 3, 4, 1, 8};
    for (int i = 0; i <= 4; ++i) {
        const int left = 120 + i * 1440;
        place(Shape1[i], this, "Shape1", i, left, 120, 1320, 1320);
        Shape1[i].setfillcolor(colorbox(i == 0 || i == 4 ? 6 : 5));
        place(*pictures[i], this, picturenames[i], left + 180, 180, 960, 840);
        pictures[i]->setpicture(ColorIcons(), images[i]);
        place(*captions[i], this, captionnames[i], left, 1080, 1320, 300);
        captions[i]->setcaption(texts[i]);
        captions[i]->setAlignment(Qt::AlignCenter);
    }
    place(CheckSubLabel, this, "CheckSubLabel", 120, 1500, 2880, 240);
    CheckSubLabel.setcaption("No Scanners Configured");
    CheckSubLabel.hide();

    place(Label3, this, "Label3", 120, 1800, 7020, 300);
    Label3.setcaption("ID: 000 Date: HHMM DDMMYY");
    place(List2, this, "List2", 120, 2160, 7020, 3360);

    place(ListFileBox[0], this, "ListFileBox", 0, 120, 5640, 3375, 300);
    place(Label2, this, "Label2", 180, 5670, 3375, 240);
    Label2.setcaption("Outstanding History");
    place(ImportIcon[0], this, "ImportIcon", 0, 3600, 5580, 480, 420);
    ImportIcon[0].setpicture(MiscIcons(), 1);
    ImportIcon[0].hide();
    place(List1, this, "List1", 120, 6000, 7020, 2040);

    place(Status, this, "Status", 120, 8160, 840, 840);
    Status.setpicture(Balls(), 13);
    place(Label1, this, "Label1", 1080, 8160, 3100, 300);
    Label1.setcaption("Battery");
    place(BatteryLevel, this, "BatteryLevel", 1080, 8520, 3100, 300);
    BatteryLevel.setfillcolor(colorbox(6));
    place(Help, this, "Help", 4440, 8160, 720, 720);
    Help.setpicture(MiscIcons(), 4);
    place(HelpLabel, this, "HelpLabel", 4440, 8900, 720, 240);
    HelpLabel.setcaption("Help");
    place(Support, this, "Support", 5400, 8160, 720, 720);
    Support.setpicture(MiscIcons(), 5);
    place(Close, this, "Close", 6360, 8160, 720, 720);
    Close.setpicture(MiscIcons(), 6);
    place(CloseLabel, this, "CloseLabel", 6360, 8900, 720, 240);
    CloseLabel.setcaption("Close");

    wireform1(*this);
}
