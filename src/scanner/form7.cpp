#include "scanner/form7.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QVBoxLayout>

#include "core/colorbox.h"
#include "core/globals.h"
#include "platform/csp2.h"
#include "platform/opl.h"
#include "platform/serial.h"
#include "runtime/vb.h"
#include "core/runtimeerror.h"

namespace {

// The Balls pictures: any images that tell the states apart.
QPixmap ball(int image)
{
    static const int colour[6] = {6, 5, 7, 11, 14, 2};  // by image 1..5, as ColorBox indices
    QPixmap p(16, 16);
    p.fill(Qt::transparent);
    QPainter paint(&p);
    paint.setRenderHint(QPainter::Antialiasing);
    paint.setBrush(colorbox(colour[image >= 1 && image <= 5 ? image : 0]));
    paint.setPen(colorbox(7));
    paint.drawEllipse(1, 1, 14, 14);
    return p;
}

// A timer's interval as the screens set it: 0 stops it.
void setinterval(QTimer* t, int ms)
{
    if (ms == 0) {
        t->stop();
        return;
    }
    t->setInterval(ms);
    if (!t->isActive()) t->start();
}

}  // namespace

Form7::Form7(QWidget* parent) : QDialog(parent)
{
    setObjectName("Form7");
    setWindowTitle("Scanning For Scanner Port");
    auto* layout = new QVBoxLayout(this);
    Label1 = new QLabel("Scanning", this);
    Label1->setObjectName("Label1");
    Label1->setAlignment(Qt::AlignCenter);
    layout->addWidget(Label1);
    auto* grid = new QGridLayout;
    for (int i = 0; i < 16; ++i) {
        Image1[i] = new QLabel(this);
        Image1[i]->setObjectName(QString("Image1_%1").arg(i));
        PortLabel[i] = new QLabel(QString("COM%1").arg(i + 1), this);
        PortLabel[i]->setObjectName(QString("PortLabel_%1").arg(i));
        grid->addWidget(Image1[i], (i % 8), (i / 8) * 2);
        grid->addWidget(PortLabel[i], (i % 8), (i / 8) * 2 + 1);
        setball(i, 1);
    }
    layout->addLayout(grid);
    Cancel = new QLabel(this);
    Cancel->setObjectName("Cancel");
    Cancel->setPixmap(ball(5));
    Label4 = new QLabel("Cancel", this);
    Label4->setObjectName("Label4");
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(Cancel);
    row->addWidget(Label4);
    layout->addLayout(row);
    for (QLabel* l : {Cancel, Label4}) {
        l->setCursor(Qt::PointingHandCursor);
        l->installEventFilter(this);
    }
    Text1 = new QLineEdit("0", this);
    Text2 = new QLineEdit("0", this);
    Text3 = new QLineEdit("0", this);
    Text1->setObjectName("Text1");
    Text2->setObjectName("Text2");
    Text3->setObjectName("Text3");
    for (QLineEdit* t : {Text1, Text2, Text3}) t->hide();
    Timer1 = new QTimer(this);
    Timer2 = new QTimer(this);
    connect(Timer1, &QTimer::timeout, this, guard(std::bind_front(&Form7::Timer1_Timer, this)));
    connect(Timer2, &QTimer::timeout, this, guard(std::bind_front(&Form7::Timer2_Timer, this)));
}

Form7::~Form7() = default;

bool Form7::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        if (watched == Cancel) Cancel_Click();
        if (watched == Label4) Label4_Click();
    }
    return QDialog::eventFilter(watched, event);
}

void Form7::closeEvent(QCloseEvent* event)
{
    Cancel_Click();
    event->accept();
}

int Form7::ballimage(int index) const { return Image1.at((size_t)index)->property("image").toInt(); }

void Form7::setball(int index, int image)
{
    QLabel* l = Image1.at((size_t)index);
    l->setProperty("image", image);
    l->setPixmap(ball(image));
}

void Form7::setlabel1(const std::string& text, int colour)
{
    Label1->setText(QString::fromLatin1(text.c_str()));
    QPalette p = Label1->palette();
    p.setColor(QPalette::WindowText, colorbox(colour));
    Label1->setPalette(p);
    label1colour_ = colour;
}

void Form7::startscan()
{
    for (int port = 1; port <= 16; ++port) setball(port - 1, serial::portexists(port) ? 1 : 2);
    Text1->setText("0");
    Text2->setText("0");
    Text3->setText("0");
    setlabel1("Scanning", 6);
    show();
    setinterval(Timer1, 200);
    setinterval(Timer2, 1000);
}

void Form7::opl_Error(const QString&) { error = 1; }

void Form7::Timer1_Timer()
{
    if (Text1->text() == "0" || Text3->text() == "2") return;
    int port = CInt(Text1->text().toStdString());
    if (Text3->text() == "0") {
        setball(port - 1, 4);
        Text3->setText("1");
    } else if (Text3->text() == "1") {
        setball(port - 1, 1);
        Text3->setText("0");
    }
}

void Form7::Timer2_Timer()
{
    Text3->setText("2");
    if (Timer2->interval() == 1000) setinterval(Timer2, 2500);
    Int16 type = g().scannertype;

    if (!Timer1->isActive()) {  // the scan has ended
        setinterval(Timer2, 0);
        if (found == 1) {
            std::string port = Text1->text().toStdString();
            if (setup.setsports) setup.setsports(type, "COM" + port);
            g().scannerport[type] = CInt(port);
            g().runmode = 0;
            hide();
            QCoreApplication::processEvents();
            if (setup.runtests) setup.runtests(type);
        } else {
            if (setup.clearbport) setup.clearbport();
            if (setup.setsports) setup.setsports(type, "");
            g().scannerport[type] = 0;
            g().runmode = 0;
            hide();
        }
        return;
    }

    Int16 port = CInt(Text1->text().toStdString());
    if (port > 0) {
        runportscan(port);
        if (Text2->text() == "1000") {
            found = 1;
            setball(port - 1, 3);
            setlabel1("Found!", 11);
            setinterval(Timer1, 0);
            return;
        }
        setball(port - 1, 5);
    }

    int next = port;
    do {
        ++next;
    } while (next <= 16 && !serial::portexists(next));
    if (next > 16) {
        found = 0;
        setinterval(Timer1, 0);
        setlabel1("Failed!", 2);
    } else {
        Text1->setText(QString::number(next));
        Text3->setText("0");
    }
}

void Form7::runportscan(int Port)
{
    Int16 type = g().scannertype;
    if (type == 1) {
        error = 0;
        opl = std::make_unique<opl::Control>();
        connect(opl.get(), &opl::Control::Error, this, guard(std::bind_front(&Form7::opl_Error, this)));
        opl->setport(Port);
        if (g().oplportstate == 0) {
            opl->openport();
            g().oplportstate = 1;
        } else {
            g().oplportstate = 2;
        }
        opl->readlinecount();
        QCoreApplication::processEvents();
        // Cancel, clicked while the events ran, has closed the port and released the control.
        if (!opl) return;
        if (error == 0) {
            opl->readid();
            Text2->setText("1000");
        }
        if (g().oplportstate == 1) {
            opl->closeport();
            g().oplportstate = 0;
        }
        opl.reset();
        return;
    }
    csp2Restore();
    csp2SetRetryCount(1);
    csp2Init(Port - 1);
    if (csp2Interrogate() == 0) {
        csp2ReadData();
        std::string version(256, '\0');
        csp2GetSwVersion(version.data(), 9);
        csp2Restore();
        std::string model = Left(version, 3);
        if ((model == "RBB" && type == 3) || (model == "NBR" && type == 2)) Text2->setText("1000");
    }
    csp2Restore();
}

void Form7::Cancel_Click()
{
    setinterval(Timer1, 0);
    setinterval(Timer2, 0);
    QCoreApplication::processEvents();
    if (g().scannertype == 1) {
        if (g().oplportstate == 1 && opl) {
            opl->closeport();
            g().oplportstate = 0;
        }
        opl.reset();
    } else {
        csp2Restore();
    }
    g().runmode = 0;
    hide();
}

Form7& form7()
{
    static Form7* screen = new Form7;
    return *screen;
}
