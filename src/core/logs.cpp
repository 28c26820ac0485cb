#include "core/logs.h"

#include <QCoreApplication>

#include "core/globals.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "runtime/vb.h"

namespace {

std::string logsfolder()
{
    std::string home = g().homedir.empty() ? std::string(platform::installfolder) : g().homedir;
    return home + "LOGS";
}

// Today's file of one kind: "_LOG.TXT" or "_DAT.TXT".
std::string dayfile(const std::string& suffix)
{
    return logsfolder() + "\\" + Format(platform::clock::today().day(), "00") + suffix;
}

std::string weekdayfile(const std::string& suffix)
{
    static const char* names[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};
    return logsfolder() + "\\" + names[platform::clock::today().dayOfWeek() - 1] + suffix;
}

void addline(const std::string& suffix, const std::string& text)
{
    files::TextWriter out(dayfile(suffix), files::TextWriter::append);
    out.print(text);
    out.close();
    QCoreApplication::processEvents();
}

}  // namespace

void addtologfile(const std::string& text)
{
    try {
        addline("_LOG.TXT", text);
    } catch (const std::exception&) {
        MsgBox("An error occured attempting to write to today's log file!", vbExclamation, "Error Writing Log");
    }
}

void addtodatfile(const std::string& text)
{
    try {
        addline("_DAT.TXT", text);
    } catch (const std::exception&) {
        MsgBox("An error occured attempting to write to today's data log!", vbExclamation, "Error Writing Log");
    }
}

void flushdatfile()
{
    // The file's name in its folder is flushed once a run: the day's file is rewritten in
    // place when it comes round again, never made anew under the same name.
    static std::string named;
    try {
        const std::string file = dayfile("_DAT.TXT");
        files::flush(file, file != named);
        named = file;
    } catch (const std::exception&) {
    }
}

void checklogfiles()
{
    try {
        const QDateTime now = platform::clock::now();
        const std::string today = Format(now, "DD/MM/YYYY");
        const std::string started = "Program Started : " + Format(now, "HHMM") + " " + Format(now, "DDMMYY");
        // Once the program's log is rewritten the data log is rewritten too: the mark is
        // not cleared between the two.
        bool rewrite = false;
        for (const char* suffix : {"_LOG.TXT", "_DAT.TXT"}) {
            const std::string file = dayfile(suffix);
            if (!files::isfolder(logsfolder()))
                files::makefolder(logsfolder());
            if (files::exists(weekdayfile(suffix)))
                files::removefile(weekdayfile(suffix));

            if (files::exists(file)) {
                files::TextReader in(file);
                std::string first;
                while (!in.eof()) {
                    first = in.lineinput();
                    if (!first.empty()) break;
                }
                if (first.empty() || first != today) rewrite = true;
            } else {
                rewrite = true;
            }

            if (rewrite) {
                files::TextWriter out(file, files::TextWriter::output);
                out.print(today);
                out.print(started);
                out.close();
            } else {
                files::TextWriter out(file, files::TextWriter::append);
                out.print(started);
                out.close();
            }
            QCoreApplication::processEvents();
        }
    } catch (const std::exception&) {
        MsgBox("An error occured attempting to check today's log and data files!", vbExclamation, "Error Checking Log");
    }
}
