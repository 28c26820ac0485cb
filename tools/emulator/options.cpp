#include "options.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <QStringList>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void bad(const std::string& text)
{
    std::fprintf(stderr, "scanner-emulator: %s (see --help)\n", text.c_str());
    std::exit(2);
}

long number(const QCommandLineParser& p, const char* name, long lo, long hi)
{
    bool ok = false;
    long v = p.value(name).toLong(&ok);
    if (!ok || v < lo || v > hi)
        bad(std::string("--") + name + " wants a whole number from " + std::to_string(lo) + " to " + std::to_string(hi));
    return v;
}

const char* helptail =
    "\n"
    "Plays one scanner on a pseudo-terminal and prints \"ready PATH\" once the port can be\n"
    "opened. SIGTERM ends it and removes the link; SIGUSR1 wakes a scanner that was powered\n"
    "down. A pseudo-terminal has no modem lines: the driver lowers DTR there by setting the\n"
    "line's speed to 0, and that is what --wake dtr watches.\n"
    "\n"
    "Records file (--records):\n"
    "  opl          one line a record, as the scanner stores it\n"
    "  opn, cs1504  one record a line: barcode,code type,YYYY-MM-DD HH:MM:SS\n"
    "               or hex: and the record's raw bytes, length byte first\n"
    "\n"
    "Command names for --garbage, --bad-crc and --refuse (or \"all\"):\n"
    "  opl          readclock writeclock readid writeid count battery download clear\n"
    "               versions erase load\n"
    "  opn, cs1504  interrogate clear setparam setdefaults powerdown upload getparam settime\n"
    "               gettime\n";

}  // namespace

const char* commandnames(Options::Type type)
{
    return type == Options::opl ? "readclock writeclock readid writeid count battery download clear versions erase load"
                                : "interrogate clear setparam setdefaults powerdown upload getparam settime gettime";
}

Options parseoptions(int argc, char** argv)
{
    QStringList args;
    for (int i = 0; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);
    QCommandLineParser p;
    p.setApplicationDescription("scanner-emulator: an OPL 972x, OPN 2001 or CS 1504 on a pseudo-terminal");
    p.addOptions({
        {"type", "Scanner type: opl, opn or cs1504.", "TYPE", "opn"},
        {"link", "Link the port's device path here (replaces an old link).", "PATH"},
        {"id", "Scanner ID (opl: 16-bit; opn, cs1504: 0 to 999999).", "N"},
        {"clock-offset", "Scanner clock minus the PC's, in minutes.", "MINUTES", "0"},
        {"battery", "Battery level in percent (opl).", "PERCENT", "100"},
        {"records", "Stored records, from this file.", "FILE"},
        {"baud", "Line rate for pacing (default: 9600 for opn and cs1504, 19200 for opl).", "N"},
        {"state", "Keep the scanner's memory in this file: read at start if it exists, "
                  "written after every change.", "FILE"},
        {"sw-version", "Software version (opn, cs1504; 8 characters).", "TEXT"},
        {"os-version", "Operating system version (opl).", "TEXT", "OS1.20"},
        {"app-version", "Application version (opl).", "TEXT", "VX2.05"},
        {"reply-head", "First byte of a CSP reply: status (06 when done) or echo (the command).",
         "HEAD", "status"},
        {"extended-length", "CSP: 1, a string's length byte counts all 8 bits; 0, only its low 5 "
                            "(strings of at most 31 bytes, the scratch pad cut).", "0|1", "1"},
        {"sleep-after", "CSP: sleep after this many ms without input or output; what reaches a "
                        "sleeping scanner is lost.", "MS", "0"},
        {"wake", "CSP: what wakes a sleeping scanner: dtr (DTR lowered and raised again) or "
                 "bytes (any input).", "dtr|bytes", "dtr"},
        {"system-status", "CSP: system status in the interrogate reply (0 OK, 22 low battery).", "N", "0"},
        {"no-answer", "Fault: answer nothing."},
        {"vanish-after-records", "Fault: disappear after sending N records of a download.", "N"},
        {"vanish-after-bytes", "Fault: disappear after sending N bytes.", "N"},
        {"refuse-clock", "Fault: keep the clock when it is set."},
        {"refuse-id", "Fault: keep the ID when it is set."},
        {"refuse-load", "Fault: refuse every software load (opl)."},
        {"garbage", "Fault: answer this command with bytes that make no frame.", "COMMAND"},
        {"bad-crc", "Fault: answer this command with a bad CRC.", "COMMAND"},
        {"battery-text", "Fault: answer the battery read with this text (opl).", "TEXT"},
        {"refuse", "Fault (CSP): answer this command with an error status: 5 unsupported, "
                   "7 CRC error, 8 character error, 9 general error.", "COMMAND:STATUS"},
    });
    p.addHelpOption();
    if (!p.parse(args)) bad(p.errorText().toStdString());
    if (p.isSet("help")) {
        QString text = p.helpText();
        text.replace("<executable_name>", "scanner-emulator");
        text.remove(QRegularExpression("  --help-all[^\n]*\n"));
        std::printf("%s%s", text.toLocal8Bit().constData(), helptail);
        std::exit(0);
    }
    Options o;
    std::string type = p.value("type").toStdString();
    if (type == "opl") o.type = Options::opl;
    else if (type == "opn") o.type = Options::opn;
    else if (type == "cs1504") o.type = Options::cs1504;
    else bad("--type must be opl, opn or cs1504");
    if (!p.isSet("link")) bad("--link PATH is needed");
    o.link = p.value("link").toStdString();
    if (p.isSet("id")) {
        o.id = o.type == Options::opl ? number(p, "id", -32768, 32767) : number(p, "id", 0, 999999);
        o.idgiven = true;
    }
    bool ok = false;
    o.clockoffset = p.value("clock-offset").toDouble(&ok);
    if (!ok) bad("--clock-offset wants a number of minutes");
    o.battery = (int)number(p, "battery", 0, 999);
    o.records = p.value("records").toStdString();
    if (p.isSet("baud")) o.baud = number(p, "baud", 50, 100000000);
    o.state = p.value("state").toStdString();
    o.swversion = p.isSet("sw-version") ? p.value("sw-version").toStdString()
                                        : (o.type == Options::cs1504 ? "RBBV0104" : "NBRGAB02");
    if (o.swversion.size() > 8) bad("--sw-version takes at most 8 characters");
    o.osversion = p.value("os-version").toStdString();
    o.appversion = p.value("app-version").toStdString();
    for (const auto& v : {o.osversion, o.appversion})
        if (v.find(' ') != std::string::npos || v.empty()) bad("versions are one word");
    o.replyhead = p.value("reply-head").toStdString();
    if (o.replyhead != "echo" && o.replyhead != "status") bad("--reply-head must be echo or status");
    o.extendedlength = number(p, "extended-length", 0, 1) == 1;
    o.sleepafter = number(p, "sleep-after", 0, 3600000);
    o.wake = p.value("wake").toStdString();
    if (o.wake != "dtr" && o.wake != "bytes") bad("--wake must be dtr or bytes");
    o.systemstatus = (int)number(p, "system-status", 0, 255);
    o.noanswer = p.isSet("no-answer");
    if (p.isSet("vanish-after-records")) o.vanishrecords = number(p, "vanish-after-records", 0, 1000000);
    if (p.isSet("vanish-after-bytes")) o.vanishbytes = number(p, "vanish-after-bytes", 0, 100000000);
    o.refuseclock = p.isSet("refuse-clock");
    o.refuseid = p.isSet("refuse-id");
    o.refuseload = p.isSet("refuse-load");
    o.garbage = p.value("garbage").toStdString();
    o.badcrc = p.value("bad-crc").toStdString();
    o.batterytext = p.value("battery-text").toStdString();
    if (o.batterytext.size() > 64) bad("--battery-text takes at most 64 characters");
    if (p.isSet("refuse")) {
        std::string v = p.value("refuse").toStdString();
        auto colon = v.rfind(':');
        std::string status = colon == std::string::npos ? "" : v.substr(colon + 1);
        if (o.type == Options::opl) bad("--refuse is for opn and cs1504");
        if (status != "5" && status != "7" && status != "8" && status != "9")
            bad("--refuse wants COMMAND:STATUS with a status of 5, 7, 8 or 9");
        o.refuse = v.substr(0, colon);
        o.refusestatus = std::stoi(status);
    }
    std::string names = std::string(" ") + commandnames(o.type) + " all ";
    for (const auto& c : {o.garbage, o.badcrc, o.refuse})
        if (!c.empty() && names.find(" " + c + " ") == std::string::npos)
            bad("unknown command name '" + c + "' for this type; names: " + commandnames(o.type));
    return o;
}
