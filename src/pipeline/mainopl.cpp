#include "pipeline/mainopl.h"

#include <QCoreApplication>

#include "core/form16.h"
#include "core/form6.h"
#include "core/globals.h"
#include "core/screens.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "pipeline/session.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "platform/opl.h"
#include "core/runtimeerror.h"

std::unique_ptr<opl::Control>& mainopl()
{
    static std::unique_ptr<opl::Control> control;
    return control;
}

opl::Control& openmainopl()
{
    Globals& s = g();
    auto& control = mainopl();
    control = std::make_unique<opl::Control>();
    QObject::connect(control.get(), &opl::Control::DownloadProgress, control.get(), guard(&opl_DownloadProgress));
    QObject::connect(control.get(), &opl::Control::DownloadComplete, control.get(), guard(&opl_DownloadComplete));
    QObject::connect(control.get(), &opl::Control::Error, control.get(), guard(&opl_Error));
    control->setport(s.scannerport[1]);
    if (s.oplportstate == 0) {
        control->openport();
        s.oplportstate = 1;
    } else {
        s.oplportstate = 2;
    }
    return *control;
}

void closemainopl()
{
    auto& control = mainopl();
    if (!control) return;
    if (g().oplportstate == 1) {
        control->closeport();
        g().oplportstate = 0;
    }
    control.reset();
}

void closepipelinesession()
{
    if (mainopl()) closemainopl();
    else csp2Restore();
}

void installsessioncloser() { setsessioncloser(closepipelinesession); }

void opl_DownloadProgress(int position)
{
    Globals& s = g();
    Form6& balls = form6();
    if (s.scancount == 1) balls.TimeCount.settext("9");
    else balls.TimeCount.settext(CStr((long long)CInt(position / ((double)s.scancount - 1) * 10)));
    balls.fillballs();
    Form16& status = form16();
    if (status.isVisible()) {
        status.DownData.setcaption(Format(position, "000") + " / " + Format(s.scancount, "000"));
        status.DownData.repaint();
    }
    QCoreApplication::processEvents();
}

void opl_DownloadComplete()
{
    QCoreApplication::processEvents();
    form6().hide();
    form1().List2.additem("Data Download Complete");
    QCoreApplication::processEvents();
    g().opldone = 1;
}

void opl_Error(const QString& text) { MsgBox(" " + text.toLatin1().toStdString()); }
