#include "settings/form5.h"

#include "core/globals.h"
#include "core/imagelists.h"
#include "core/logs.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "settings/englines.h"
#include "settings/form4.h"
#include "core/runtimeerror.h"

namespace {

constexpr int updatepicture = 11, deletepicture = 1, cancelpicture = 3;

bool digitsonly(const std::string& text)
{
    for (char c : text)
        if (c < '0' || c > '9') return false;
    return true;
}

// The first failing check of the two boxes, shown; false when one failed.
bool validentry(Form5& f)
{
    const std::string id = f.FitterID.value();
    auto refuse = [](TextBox& box, const char* text, const char* title) {
        MsgBox(text, vbExclamation, title);
        box.setFocus();
        return false;
    };
    if (id.empty())
        return refuse(f.FitterID, "You need to provide the engineers scanner ID in order to be able to save this record!",
                      "No Engineer ID");
    if (!digitsonly(id))
        return refuse(f.FitterID, "The engineer ID provided contains invalid characters! The ID may only be numeric!",
                      "Invalid ID");
    if (engnumber(id) > 999)
        return refuse(f.FitterID,
                      "The engineer ID provided is outside of the currently allowed range! The ID may only be between 0 "
                      "and 999!",
                      "Invalid ID");
    if (f.FitterName.value().empty())
        return refuse(f.FitterName, "You need to provide the engineers name in order to be able to save this record!",
                      "No Engineer Name");
    for (const std::string& line : readenglines(englocalfile())) {
        doenglinetest(line);
        if (g().englinestatus != 0) continue;
        const EngRecord r = engrecord(line);
        if (engnumber(r.field2) != engnumber(id)) continue;
        MsgBox("The engineer ID " + id + " is already in use on engineer '" + r.name + "'!", vbExclamation,
               "Duplicate Engineer ID");
        f.FitterID.setFocus();
        return false;
    }
    return true;
}

void reporterror(const std::exception& e, const std::string& what, const std::string& title, const std::string& routine)
{
    const Fault f = Fault::from(e);
    const std::string error = CStr((long long)f.number) + " " + f.description;
    MsgBox("An unexpected error occured while trying to " + what + " the engineer data! Error: " + error, vbExclamation,
           title);
    addtologfile("form5, " + routine + ": Unexpected error. Error: " + error);
}

}  // namespace

Form5::Form5(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form5");
    setWindowTitle("Engineer Details");
    resize(twips(5400), twips(2760));
    place(Label1, this, "Label1", 120, 160, 1440, 280);
    Label1.setcaption("Engineer ID");
    place(FitterID, this, "FitterID", 1680, 120, 1200, 315);
    place(Label2, this, "Label2", 120, 640, 1440, 280);
    Label2.setcaption("Name");
    place(FitterName, this, "FitterName", 1680, 600, 3480, 315);
    place(Text1, this, "Text1", 0, 0, 600, 300);
    place(Text2, this, "Text2", 0, 0, 600, 300);
    Text1.hide();
    Text2.hide();

    struct Button { PictureBox* picture; Caption* label; const char* name; const char* lname; int index; const char* text; int image; };
    Button buttons[] = {{&Update, &UpdateLabel, "Update", "UpdateLabel", -1, "Update", updatepicture},
                        {&Delete[1], &DeleteLabel[1], "Delete", "DeleteLabel", 1, "Delete", deletepicture},
                        {&Cancel, &CancelLabel, "Cancel", "CancelLabel", -1, "Cancel", cancelpicture}};
    int left = 120;
    for (const Button& b : buttons) {
        place(*b.picture, this, b.name, b.index, left + 480, 1200, 720, 720);
        b.picture->setpicture(ColorIcons(), b.image);
        place(*b.label, this, b.lname, b.index, left, 1980, 1680, 280);
        b.label->setcaption(b.text);
        b.label->setAlignment(Qt::AlignCenter);
        left += 1740;
    }

    connect(&Update, &PictureBox::clicked, this, guard(std::bind_front(&Form5::updatedata, this)));
    connect(&UpdateLabel, &Caption::clicked, this, guard(std::bind_front(&Form5::updatedata, this)));
    connect(&Delete[1], &PictureBox::clicked, this, guard([this] { if (Delete[1].isEnabled()) deletedata(); }));
    connect(&DeleteLabel[1], &Caption::clicked, this, guard(std::bind_front(&Form5::deletedata, this)));
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&QWidget::hide, this)));
    connect(&CancelLabel, &Caption::clicked, this, guard(std::bind_front(&QWidget::hide, this)));
}

void Form5::showdelete(bool on)
{
    Delete[1].setpicture(on ? ColorIcons() : GreyIcons(), deletepicture);
    Delete[1].setEnabled(on);
    DeleteLabel[1].setVisible(on);
}

void Form5::updatedata()
{
    if (g().fittertype != 0) return;
    try {
        if (!validentry(*this)) return;
        if (!files::exists(englocalfile())) return;
        const long long id = engnumber(FitterID.value());
        const std::string record = englistline(id, FitterName.value());
        std::vector<std::string> records;
        bool out = false;
        for (const std::string& line : englistrecords()) {
            if (!out && engnumber(engrecord(line).field2) >= id) {
                records.push_back(record);
                out = true;
            }
            records.push_back(line);
        }
        if (!out) records.push_back(record);
        rewriteenglist(records);
        form4().setuplist();
        hide();
    } catch (const std::exception& e) {
        reporterror(e, "update", "Error Updating Data", "updatedata");
    }
}

void Form5::deletedata()
{
    if (g().fittertype != 0) return;
    try {
        const std::string text = "Are you sure that you want to remove engineer '" + Text2.value() + "' (ID:" +
                                 Text1.value() + ") from your stored data?";
        if (MsgBox(text, vbYesNo + vbQuestion, "Confirm Engineer Deletion") == vbYes && files::exists(englocalfile())) {
            const long long id = engnumber(Text1.value());
            std::vector<std::string> records;
            for (const std::string& line : englistrecords())
                if (engnumber(engrecord(line).field2) != id) records.push_back(line);
            rewriteenglist(records);
        }
        form4().setuplist();
        hide();
    } catch (const std::exception& e) {
        reporterror(e, "delete", "Error Deleting Data", "deletedata");
    }
}

Form5& form5()
{
    static Form5* screen = new Form5;
    return *screen;
}
