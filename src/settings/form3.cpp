#include "settings/form3.h"

#include "core/imagelists.h"
#include "core/logs.h"
#include "platform/dialogs.h"
#include "platform/profile.h"
#include "runtime/vb.h"
#include "settings/settingsread.h"
#include "core/runtimeerror.h"

Form3::Form3(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form3");
    setWindowTitle("User Information");
    resize(twips(6000), twips(normalheight));

    struct Row { TextBox* box; Caption* label; const char* name; const char* lname; const char* caption; };
    Row rows[] = {{&Company, &Label1, "Company", "Label1", "Company Name"},
                  {&User, &Label2, "User", "Label2", "User Name"},
                  {&Telephone, &Label3, "Telephone", "Label3", "Telephone"},
                  {&HOEmail, &Label4, "HOEmail", "Label4", "Head Office Email"}};
    int top = 240;
    for (const Row& r : rows) {
        place(*r.label, this, r.lname, 240, top + 40, 1800, 280);
        r.label->setcaption(r.caption);
        place(*r.box, this, r.name, 2160, top, 3600, 315);
        top += 600;
    }
    place(OK, this, "OK", 2640, 2760, 720, 720);
    OK.setpicture(ColorIcons(), 2);
    place(OKLabel, this, "OKLabel", 2040, 3540, 1920, 280);
    OKLabel.setcaption("OK");
    OKLabel.setAlignment(Qt::AlignCenter);
    place(Label6, this, "Label6", 240, 4080, 5520, 1320);
    Label6.setcaption("Welcome to the Vexal Barcode Interface Program! Please take a moment to enter your company "
                      "details (which may later assist with support) and then click OK to proceed to the setup "
                      "screen!");
    Label6.setWordWrap(true);
    Label6.hide();

    connect(&OK, &PictureBox::clicked, this, guard(std::bind_front(&Form3::updatedata, this)));
    connect(&OKLabel, &Caption::clicked, this, guard(std::bind_front(&Form3::updatedata, this)));
}

void Form3::setheight(int units) { resize(width(), twips(units)); }

void Form3::loadsettings()
{
    int section = 0;
    try {
        SettingsReader reader;
        TextBox* boxes[] = {&Company, &User, &Telephone, &HOEmail};
        const char* keys[] = {"NAME", "USER", "TEL", "HOEMAIL"};
        for (section = 0; section < 4; ++section) {
            reader.read("COMPANY", keys[section]);
            boxes[section]->settext(reader.hashash() ? reader.cut() : "N/A");
        }
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string error = CStr((long long)f.number) + " " + f.description;
        MsgBox("An error occured loading the settings from file at section " + CStr((long long)section) +
                   "! Error: " + error + ".",
               vbExclamation, "Error Loading Settings");
        addtologfile("form3.loadsettings: Unexpected Error. Error: " + error);
    }
}

void Form3::updatedata()
{
    const std::string file = settingsfile();
    if (!Company.value().empty()) WritePrivateProfileStringA("COMPANY", "NAME", Company.value() + "#", file);
    if (!User.value().empty()) WritePrivateProfileStringA("COMPANY", "USER", User.value() + "#", file);
    if (!Telephone.value().empty()) WritePrivateProfileStringA("COMPANY", "TEL", Telephone.value() + "#", file);
    if (!HOEmail.value().empty()) WritePrivateProfileStringA("COMPANY", "HOEMAIL", Telephone.value() + "#", file);
    hide();
    setheight(normalheight);
    Label6.hide();
    emit leadon();
}

Form3& form3()
{
    static Form3* screen = new Form3;
    return *screen;
}
