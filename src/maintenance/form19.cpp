#include "maintenance/form19.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QPainter>

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/runtimeerror.h"

namespace {

QPixmap tile(const QColor& fill)
{
    QPixmap p(24, 24);
    p.fill(Qt::transparent);
    QPainter painter(&p);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(64, 64, 64), 1.5));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(2, 2, 20, 20), 4, 4);
    return p;
}

// The tile due at each tenth of a load: one at 1%, one more at 11, 21 ... 81%.
int tilesdue(int percent)
{
    int due = 0;
    for (int at = 1; at <= 81; at += 10)
        if (percent >= at) ++due;
    return due;
}

constexpr int tiletop1 = 1320, tiletop2 = 2280, tileleft = 240, tilestep = 480;

}  // namespace

const ImageList& Tiles()
{
    static const ImageList list("Tiles", {tile(QColor(224, 224, 224)), tile(QColor(255, 255, 192)),
                                          tile(QColor(255, 128, 0)), tile(QColor(192, 255, 192)),
                                          tile(QColor(0, 160, 0))});
    return list;
}

Form19::Form19(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form19");
    setWindowTitle("Scanner Software Update");
    setFixedSize(twips(5400), twips(4080));

    place(Label1, this, "Label1", 120, 120, 5160, 360);
    Label1.setAlignment(Qt::AlignCenter);
    Label1.setbold(true);
    place(OSLabel, this, "OSLabel", 240, 960, 3600, 300);
    place(AppLabel, this, "AppLabel", 240, 1920, 3600, 300);
    for (int i = 1; i <= 9; ++i) {
        place(Image1[i], this, "Image1", i, tileleft + (i - 1) * tilestep, tiletop1, 420, 420);
        place(Image2[i], this, "Image2", i, tileleft + (i - 1) * tilestep, tiletop2, 420, 420);
    }
    place(OSOpp, this, "OSOpp", 4620, tiletop1 + 60, 660, 300);
    place(AppOp, this, "AppOp", 4620, tiletop2 + 60, 660, 300);
    place(Label3, this, "Label3", 240, 2940, 4920, 300);
    Label3.setcaption("Operation Status");
    Label3.setbold(true);
    place(Label4, this, "Label4", 240, 3300, 4920, 600);
    Label4.setWordWrap(true);
    Label4.setAlignment(Qt::AlignLeft | Qt::AlignTop);

    Timer1.setParent(this);
    Timer1.setObjectName("Timer1");
    connect(&Timer1, &QTimer::timeout, this, guard([this] { ++tickcount; }));
    connect(&LoadDll1, &loaddll::LoadDll::Status, this,
            guard([this](int p, int code, const QString& text) { LoadDll1_Status(p, code, text); }));
    setupscreen();
}

void Form19::closeEvent(QCloseEvent* event) { event->ignore(); }

void Form19::LoadDll1_Status(int progressvalue, int code, const QString& text)
{
    progress = progressvalue;
    statuscode = code;
    statustext = text.toLatin1().toStdString();
}

void Form19::cleartiles() { tiles.clear(); }

void Form19::setupscreen()
{
    stage = 0;
    secondpass = 0;
    statuscode = 0;
    progress = 0;
    statustext.clear();
    laststatus = 0;
    lastprogress = 0;
    lasttext.clear();
    cleartiles();
    Label1.setcaption("DO NOT REMOVE SCANNER!");
    Label1.setforecolor(colorbox(2));
    Label4.setcaption("");
    OSLabel.setcaption("Scanner OS : ");
    AppLabel.setcaption("Software Ver : ");
    OSLabel.setforecolor(colorbox(4));
    AppLabel.setforecolor(colorbox(4));
    OSOpp.setcaption("0%");
    AppOp.setcaption("0%");
    for (int i = 1; i <= 9; ++i) {
        Image1[i].setpicture(Tiles(), 1);
        Image2[i].setpicture(Tiles(), 1);
    }
}

// ---- the three operations -------------------------------------------------------------

void Form19::runloaddll(const char* file)
{
    LoadDll1.setfile(g().homedir + file);
    LoadDll1.setport(g().scannerport[1]);
    LoadDll1.setstep(0);
}

void Form19::loadOS()
{
    stage = 1;
    secondpass = 0;
    runloaddll("OS\\vexalOS.S32");
    LoadDll1.load();
}

void Form19::eraseApp()
{
    stage = 3;
    runloaddll("OS\\vexal.S32");
    LoadDll1.erase();
}

void Form19::loadApp()
{
    stage = 2;
    runloaddll("OS\\vexal.S32");
    LoadDll1.load();
}

// ---- waits ----------------------------------------------------------------------------

void Form19::await(int code)
{
    // The loader's event arrives as a posted event, so waiting for the next event costs no
    // time while the scanner works, and the screen repaints as usual meanwhile.
    while (true) {
        if (statuscode != laststatus || progress != lastprogress || statustext != lasttext) updatedetails();
        if ((statuscode >= 1 && statuscode <= 999) || statuscode == code) return;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void Form19::waitticks(int ticks)
{
    tickcount = 0;
    Timer1.start(tickinterval);
    while (tickcount <= ticks) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    Timer1.stop();
}

void Form19::pause() { waitticks(2); }

// ---- the display ----------------------------------------------------------------------

void Form19::updatedetails()
{
    if (statustext != lasttext) {
        Label4.setcaption(statustext);
        lasttext = statustext;
        Label4.repaint();
    }
    auto remember = [this] {
        laststatus = statuscode;
        lastprogress = progress;
    };
    const int code = statuscode;
    if (code == loaddll::progressfirst && stage == 1 && secondpass == 0) {
        secondpass = 1;
        cleartiles();
        return remember();
    }
    if (code != loaddll::progressfirst && code != loaddll::progresssecond) return remember();

    const std::string percent = CStr((long long)progress) + "%";
    (stage == 1 ? OSOpp : AppOp).setcaption(percent);
    auto& row = stage == 1 ? Image1 : Image2;
    // Reached with 2010 only once the second pass has begun: running; otherwise done.
    const int picture = code == loaddll::progressfirst ? 3 : 5;
    const int due = tilesdue(progress);
    for (int i = 1; i <= due; ++i) {
        if (tiles[i] != 0) continue;
        row[i].setpicture(Tiles(), picture);
        tiles[i] = 1;
    }
    remember();
}

Form19& form19()
{
    static Form19* screen = new Form19;
    return *screen;
}
