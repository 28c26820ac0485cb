#include "maintenance/form10.h"

#include <QCloseEvent>
#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/logs.h"
#include "core/runtimeerror.h"
#include "maintenance/form19.h"
#include "maintenance/form24.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/opl.h"
#include "settings/form14.h"
#include "settings/form2.h"
#include "core/runtimeerror.h"

namespace {

constexpr int rowtop = 1080, rowstep = 480;

// A title box with its caption, and a value box with its caption, on one row.
void placerow(QWidget* screen, int row, Shape& titlebox, Caption& title, const char* titlebox_name,
              const char* title_name, const char* text, Shape& box, Caption& value, const char* box_name,
              const char* value_name, int valueindex)
{
    const int top = rowtop + row * rowstep;
    place(titlebox, screen, titlebox_name, 120, top, 1500, 375);
    titlebox.setfillcolor(colorbox(6));
    place(title, screen, title_name, 180, top + 40, 1380, 300);
    title.setcaption(text);
    place(box, screen, box_name, 1740, top, 2955, 375);
    place(value, screen, value_name, valueindex, 1800, top + 40, 2835, 300);
}

// A routine of this screen that has no handler of its own, run by a click: a fault ends
// it with the message and log line that every handler gives.
template <typename Routine>
void guarded(const char* name, Routine routine)
{
    try {
        routine();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string error = std::to_string(f.number) + " " + f.description;
        addtologfile(std::string(name) + ": Unexpected error. Error: " + error);
        MsgBox(std::string("An unexpected error occurred in ") + name + "! Error: " + error, vbExclamation,
               std::string("Error In Function: ") + name);
    }
}

void placebutton(QWidget* screen, PictureBox& picture, const char* picturename, int image, Caption& caption,
                 const char* captionname, const char* text, int left)
{
    place(picture, screen, picturename, left + 240, 3180, 720, 720);
    picture.setpicture(ColorIcons(), image);
    place(caption, screen, captionname, left, 3960, 1200, 300);
    caption.setcaption(text);
    caption.setAlignment(Qt::AlignCenter);
}

}  // namespace

Form10::Form10(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form10");
    setWindowTitle("Scanner Information");
    setFixedSize(twips(4815), twips(4920));

    place(STypeB, this, "STypeB", 120, 120, 4575, 420);
    place(STypeL, this, "STypeL", 240, 180, 4335, 300);
    STypeL.setAlignment(Qt::AlignCenter);
    STypeL.setbold(true);

    place(BatLabel[0], this, "BatLabel", 0, 120, 660, 1500, 300);
    BatLabel[0].setcaption("Batt: ---%");
    place(BatteryLevel, this, "BatteryLevel", 1740, 690, barfull, 240);
    BatteryLevel.setfillcolor(colorbox(6));
    place(BatLabel[1], this, "BatLabel", 1, 1740, 660, barfull, 300);

    placerow(this, 0, DateTitleBox, DateTitleLabel, "DateTitleBox", "DateTitleLabel", "Scanner Date", DateBox,
             DateLabel, "DateBox", "DateLabel", -1);
    placerow(this, 1, TimeTitleBox, TimeTitleLabel, "TimeTitleBox", "TimeTitleLabel", "Scanner Time", TimeBox,
             TimeLabel, "TimeBox", "TimeLabel", -1);
    placerow(this, 2, IDTitleBox, IDTitleLabel, "IDTitleBox", "IDTitleLabel", "Scanner ID", IDBox, IDLabel[1],
             "IDBox", "IDLabel", 1);
    placerow(this, 3, FitterTitleBox, FitterTitleLabel, "FitterTitleBox", "FitterTitleLabel", "Engineer", FitterBox,
             FitterLabel[1], "FitterBox", "FitterLabel", 1);

    place(UploadBox, this, "UploadBox", 2460, 3120, 1200, 1200);
    placebutton(this, UpdateTime, "UpdateTime", 12, TimeUpdate, "TimeUpdate", "Update Time", 60);
    placebutton(this, UpdateID, "UpdateID", 11, IDUpdate, "IDUpdate", "Update ID", 1260);
    placebutton(this, UploadSW, "UploadSW", 13, SWUpload, "SWUpload", "Upload Software", 2460);
    SWUpload.setWordWrap(true);
    SWUpload.resize(SWUpload.width(), twips(340));

    place(Image2, this, "Image2", 3900, 3180, 720, 720);
    Image2.setpicture(MiscIcons(), 6);
    place(Label4[1], this, "Label4", 1, 3780, 3960, 960, 300);
    Label4[1].setcaption("Finish");
    Label4[1].setAlignment(Qt::AlignCenter);
    place(Label4[0], this, "Label4", 0, 120, 4440, 4575, 300);
    Label4[0].setcaption("Click here to refresh the scanner details");
    Label4[0].setAlignment(Qt::AlignCenter);

    adopt(Text2, this, "Text2");
    Text2.hide();

    connect(&Timer2, &QTimer::timeout, this, guard([this] { ++tickcount; }));
    for (int i = 0; i <= 1; ++i) connect(&BatLabel[i], &Caption::clicked, this, guard(std::bind_front(&Form10::BatLabel_Click, this)));
    for (int i = 0; i <= 1; ++i) connect(&Label4[i], &Caption::clicked, this, guard([this, i] { Label4_Click(i); }));
    connect(&UpdateTime, &PictureBox::clicked, this, guard(std::bind_front(&Form10::UpdateTime_Click, this)));
    connect(&TimeUpdate, &Caption::clicked, this, guard(std::bind_front(&Form10::TimeUpdate_Click, this)));
    connect(&UpdateID, &PictureBox::clicked, this, guard(std::bind_front(&Form10::UpdateID_Click, this)));
    connect(&IDUpdate, &Caption::clicked, this, guard(std::bind_front(&Form10::UpdateID_Click, this)));
    connect(&form14(), &Form14::idchosen, this, guard([this] { guarded("updatescannerID", [this] { idchosen(); }); }));
    connect(&UploadSW, &PictureBox::clicked, this, guard([this] { uploadsoftware(); }));
    connect(&SWUpload, &Caption::clicked, this, guard([this] { uploadsoftware(); }));
    connect(&Image2, &PictureBox::clicked, this, guard(std::bind_front(&Form10::cancelclose, this)));
}

Form10::~Form10() = default;

QList<QWidget*> Form10::verdictcontrols()
{
    return {&DateTitleLabel, &DateTitleBox, &DateLabel,   &DateBox,        &TimeTitleLabel, &TimeTitleBox,
            &TimeLabel,      &TimeBox,      &IDTitleLabel, &IDTitleBox,    &IDLabel[1],     &IDBox,
            &FitterTitleLabel, &FitterTitleBox, &FitterLabel[1], &FitterBox};
}

void Form10::setupscreen()
{
    const int type = g().scannertype;
    switch (type) {
    case 1: STypeL.setcaption("Opticon OPL 972x"); break;
    case 2: STypeL.setcaption("Opticon OPN 2001"); break;
    case 3: STypeL.setcaption("Symbol CS1504"); break;
    default: break;
    }
    const bool opl972x = type == 1;
    UploadSW.setEnabled(opl972x);
    SWUpload.setEnabled(opl972x);
    UploadBox.setfillcolor(colorbox(opl972x ? 15 : 5));
    STypeB.setfillcolor(colorbox(2));

    for (QWidget* w : std::initializer_list<QWidget*>{&UpdateID, &IDUpdate, &UpdateTime, &TimeUpdate})
        w->setEnabled(false);
    for (QWidget* w : verdictcontrols()) w->hide();
    for (Shape* box : {&IDBox, &FitterBox, &DateBox, &TimeBox}) box->setfillcolor(colorbox(5));

    if (opl972x) form24().checkbattery(0);
}

void Form10::uploadsoftware()
{
    if (!files::exists(g().homedir + "OS\\vexal.S32")) {
        MsgBox("There is no OS available to upload! Please contact Vexal for assistance!", vbCritical,
               "No Scanner OS Available");
        return;
    }
    if (MsgBox("Please insert the scanner to be updated to the craddle! NOTE: This WILL erase ALL outstanding data "
               "on the scanner! Click CANCEL to abort!",
               vbCritical + vbOKCancel, "Place Scanner In Craddle") != vbOK)
        return;
    Timer1.stop();
    hide();
    Form19& update = form19();
    update.standalone = false;
    update.setupscreen();
    update.show();
    update.uploadsoftware();
}

void Form10::cancelclose()
{
    Globals& s = g();
    Timer1.stop();
    closing = true;
    if (s.scannertype == 2 || s.scannertype == 3) csp2Restore();
    s.pressedop = 0;
    s.runmode = 0;
    hide();
    const bool fault = s.timestatus == 1 || s.idstatus == 1 || s.datestatus == 1;
    form1().Label3.setforecolor(colorbox(fault ? 2 : 13));
    if (s.callerof[10] == 2) form2().show();
    else form1().show();
}

void Form10::closeEvent(QCloseEvent* event)
{
    cancelclose();
    event->accept();
}

// ---- clicks ----------------------------------------------------------------------------

void Form10::refresh(bool secondprobe)
{
    if (updaterunning) return;
    setupscreen();
    startfunction();
    if (g().oplerror == 0) {
        Timer1.stop();
        gettingscannerdata();
    } else if (secondprobe) {
        startfunction();
    }
}

void Form10::BatLabel_Click()
{
    guarded("gettingscannerdata", [this] { refresh(true); });
}

void Form10::Label4_Click(int index)
{
    if (index == 1) cancelclose();
    else guarded("gettingscannerdata", [this] { refresh(false); });
}

void Form10::UpdateTime_Click()
{
    QCoreApplication::processEvents();
    updaterunning = true;
    updatethetime();
    updaterunning = false;
}

void Form10::TimeUpdate_Click() { updatethetime(); }

void Form10::opl_Error(const QString&)
{
    g().oplerror = 1;
    setupscreen();
}
