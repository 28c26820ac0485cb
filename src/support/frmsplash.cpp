#include "support/frmsplash.h"

#include <QEvent>

#include "core/form9.h"
#include "core/runtimeerror.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "settings/form2.h"
#include "core/runtimeerror.h"

namespace {

std::string titlestart()
{
    const std::string issue = programissue;
    return std::string("VEXAL Bench Clock Utility v") + programversion + " (Issue: " + issue.substr(0, 2) + "/"
           + issue.substr(2, 2) + "/" + issue.substr(6, 2);
}

}  // namespace

std::string maintitle() { return titlestart() + ")"; }
std::string setuptitle() { return titlestart() + ") - Setup Screen"; }

frmSplash::frmSplash(QWidget* parent) : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName("frmSplash");
    resize(twips(6000), twips(3600));
    setAutoFillBackground(true);
    place(Frame1, this, "Frame1", 120, 120, 5760, 3360);
    Frame1.setStyleSheet("#Frame1 { border: 2px solid #404040; background: #c0ffff; }");
    place(lblCompanyProduct, &Frame1, "lblCompanyProduct", 240, 240, 5280, 360);
    lblCompanyProduct.setcaption("VEXAL");
    lblCompanyProduct.setbold(true);
    place(lblProductName, &Frame1, "lblProductName", 240, 840, 5280, 480);
    lblProductName.setcaption("Bench Clock Utility");
    lblProductName.setbold(true);
    place(lblVersion, &Frame1, "lblVersion", 240, 1560, 5280, 300);
    place(Label1, &Frame1, "Label1", 240, 2520, 5280, 600);
    Label1.setcaption("Scanner interface for the Tarn dealer system");
    Label1.setWordWrap(true);
    Frame1.installEventFilter(this);
    Timer1.setParent(this);
    Timer1.setObjectName("Timer1");
    connect(&Timer1, &QTimer::timeout, this, guard([this] { timer1tick(); }));
}

void frmSplash::timer1tick()
{
    ++tickcount;
    if (tickcount > 2) done();
}

void frmSplash::done()
{
    setinterval(Timer1, 0);
    form9().splashdone = "1";
    hide();
}

void frmSplash::mousePressEvent(QMouseEvent*) { done(); }

bool frmSplash::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &Frame1 && event->type() == QEvent::MouseButtonPress) done();
    return QWidget::eventFilter(watched, event);
}

frmSplash& frmsplash()
{
    static frmSplash* form = new frmSplash;
    return *form;
}
