#include "recovery/form26.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDate>
#include <QLocale>

#include "core/globals.h"
#include "core/imagelists.h"
#include "core/runtimeerror.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "support/form18.h"

namespace {

std::string logfile(const std::string& name) { return g().homedir + "LOGS\\" + name + "_DAT.TXT"; }

// The weekday of a log's date "dd/mm/yyyy" in capitals, "" when the text is no date.
std::string weekday(const std::string& date)
{
    const QDate day = QDate::fromString(QString::fromLatin1(date.c_str()), "dd/MM/yyyy");
    return day.isValid() ? UCase(QLocale::c().dayName(day.dayOfWeek(), QLocale::ShortFormat).toStdString()) : "";
}

}  // namespace

Form26::Form26(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form26");
    setWindowTitle("Scanner Data Log");
    setFixedSize(twips(12360), twips(6240));

    place(Label1, this, "Label1", 120, 120, 3480, 300);
    Label1.setcaption("Available Logs");
    place(List1, this, "List1", 120, 420, 3480, 4680);
    place(List1a, this, "List1a", 120, 420, 3480, 4680);
    List1a.hide();
    place(Label2, this, "Label2", 3720, 120, 3960, 300);
    Label2.setcaption("Available Scanner Data");
    place(List2, this, "List2", 3720, 420, 3960, 4680);
    place(Label3, this, "Label3", 7800, 120, 4440, 300);
    Label3.setcaption("Data Lines Added To Tarn");
    place(List3, this, "List3", 7800, 420, 4440, 4680);

    const char* captions[] = {"Restore Data Lines", "Cancel"};
    const int images[] = {3, 1};
    for (int i = 0; i <= 1; ++i) {
        const int left = i == 0 ? 8400 : 10800;
        place(Cancel[i], this, "Cancel", i, left + 360, 5220, 720, 540);
        Cancel[i].setpicture(ColorIcons(), images[i]);
        place(Label4[i], this, "Label4", i, left, 5790, 1440 + (i == 0 ? 480 : 0), 300);
        Label4[i].setcaption(captions[i]);
        Label4[i].setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    }
    Label4[0].setGeometry(twips(8040), twips(5790), twips(2160), twips(300));

    connect(&List1, &ListBox::doubleclicked, this, guard([this] { list1dblclick(); }));
    connect(&List1a, &ListBox::doubleclicked, this, guard([this] { list1adblclick(); }));
    connect(&List2, &ListBox::doubleclicked, this, guard([this] { list2dblclick(); }));
    // A click on a line restores, as the button does.
    connect(&List3, &QListWidget::itemClicked, this, guard([this] { dodatarestore(); }));
    connect(&Cancel[0], &PictureBox::clicked, this, guard([this] { dodatarestore(); }));
    connect(&Label4[0], &Caption::clicked, this, guard([this] { dodatarestore(); }));
    connect(&Cancel[1], &PictureBox::clicked, this, guard([this] { leave(); }));
    connect(&Label4[1], &Caption::clicked, this, guard([this] { leave(); }));
}

void Form26::setupscreen()
{
    List1.clear();
    List2.clear();
    List3.clear();
    logcount = 0;
    for (int day = 1; day <= 31; ++day) {
        const std::string file = logfile(Format(day, "00"));
        if (!files::exists(file)) continue;
        files::TextReader in(file);
        std::string date;
        if (!in.eof()) date = in.lineinput();
        long entries = 0;
        while (!in.eof())
            if (Left(in.lineinput(), 5) == "ENTRY") ++entries;
        // The log's first line is its date. A line that only looks like one (slashes in
        // their places, no real day) is left out too: it has no weekday.
        if (date.empty() || Mid(date, 3, 1) != "/" || Mid(date, 6, 1) != "/") continue;
        const std::string name = weekday(date);
        if (name.empty()) continue;
        ++logcount;
        logkeys[logcount] = Mid(date, 7, 4) + Mid(date, 4, 2) + Mid(date, 1, 2);
        logtexts[logcount] = date + "   " + name +
                             (entries == 0 ? "   (No data entries)" : "   (" + CStr((long long)entries) + " data entries)");
    }
    // Oldest first; the texts move with their keys.
    for (int i = 1; i < logcount; ++i)
        for (int j = i + 1; j <= logcount; ++j)
            if (logkeys[j] < logkeys[i]) {
                std::swap(logkeys[i], logkeys[j]);
                std::swap(logtexts[i], logtexts[j]);
            }
    for (int i = 1; i <= logcount; ++i) List1.additem(logtexts[i]);
    List2.additem("please select day");
    List3.additem("Please select from downloads");
}

void Form26::listentries(const std::string& file, const char* noentries, const char* nofile)
{
    List2.clear();
    List3.clear();
    List3.additem("Please select from downloads");
    if (!files::exists(file)) {
        List2.additem(nofile);
        return;
    }
    files::TextReader in(file);
    bool any = false;
    while (!in.eof()) {
        const std::string line = in.lineinput();
        if (Like(line, "ENTRY*")) {
            List2.additem(line);
            any = true;
        }
    }
    if (!any) List2.additem(noentries);
}

void Form26::list1dblclick()
{
    const std::string item = List1.list(List1.listindex());
    listentries(logfile(Left(item, 2)), "No data entries in this file", "No log file for this day");
}

void Form26::list1adblclick()
{
    static const char* names[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};
    const int index = List1a.listindex();
    if (index < 0 || index > 6) return;
    listentries(logfile(names[index]), "No entries in this log file", "No log file for this day");
    if (index < List1.listcount()) List1.setlistindex(index);
}

void Form26::list2dblclick()
{
    List3.clear();
    const std::string entry = List2.list(List2.listindex());
    if (entry == "No log file for this day" || entry == "No entries in this log file") return;
    const std::string file = logfile(Left(List1.list(List1.listindex()), 2));
    if (files::exists(file)) readdownload(file, entry);
    if (List3.listcount() == 0) List3.additem("No data lines found");
}

void Form26::readdownload(const std::string& file, const std::string& entry)
{
    restorecount = 0;
    try {
        files::TextReader in(file);
        bool taking = false;
        while (!in.eof()) {
            const std::string line = in.lineinput();
            if (line == entry) taking = true;
            if (line == "END") taking = false;
            if (taking && line != entry) {
                ++restorecount;
                restorelines[restorecount] = line;   // past 1000 lines: fault 9
                List3.additem(line);
            }
        }
    } catch (const std::exception& e) {
        // A download too long to hold (or a log that cannot be read) is not offered for
        // restore in part: nothing of it stays chosen.
        restorecount = 0;
        List3.clear();
        List3.additem("Please select from downloads");
        restorefault(e);
    }
}

void Form26::leave()
{
    hide();
    QCoreApplication::processEvents();
    form18().show();
}

void Form26::closeEvent(QCloseEvent* event)
{
    event->ignore();
    guarded([this] { leave(); });
}

Form26& form26()
{
    static Form26* screen = new Form26;
    return *screen;
}
