// The setup screen's events: which routine each click and focus change runs.
#include "core/globals.h"
#include "core/runtimeerror.h"
#include "delivery/sendmail.h"
#include "settings/firstrun.h"
#include "settings/form2.h"
#include "settings/form25.h"
#include "settings/form3.h"
#include "settings/setupboxes.h"
#include "settings/setupdisplay.h"
#include "settings/setupleave.h"
#include "settings/setupports.h"
#include "settings/setupsave.h"
#include "settings/setuptests.h"
#include "settings/setuptypes.h"
#include "settings/storecheck.h"
#include "support/form18.h"

namespace {

// Automatic download of scanner i on or off.
void flipauto(int i)
{
    g().scannerauto[i] = g().scannerauto[i] == 0 ? 1 : 0;
    showauto(i);
}

// Clock adjustment Off, Adv, On and round.
void cycleautotime(int i)
{
    Int16& mode = g().scannerautotime[i];
    mode = mode == 0 ? 1 : mode == 1 ? 2 : 0;
    showautotime(i);
}

// The address box left: an e-mail address in Email mode, else the server's address.
void serveripleft()
{
    Form2& f = form2();
    if (g().savetype == 3) {
        if (checkemailbox()) form3().HOEmail.settext(f.ServerIP.value());
        return;
    }
    g().serverip = f.ServerIP.value();
    checkserverip();
}

// The test beside the address box: the server store check, or in Email mode a test mail.
void servertest()
{
    if (g().savetype != 3) form25().storetest();
    else sendtestmail();
}

template <typename Control, typename Signal, typename Routine>
void on(Control& control, Signal signal, QObject* owner, Routine routine)
{
    QObject::connect(&control, signal, owner, guard(routine));
}

}  // namespace

void Form2::wireevents()
{
    for (int i = 1; i <= 3; ++i) {
        on(SType[i], &PictureBox::clicked, this, [i] { showandhide(i, 0); });
        on(STypeL[i], &Caption::clicked, this, [i] { showandhide(i, 0); });
        on(LAuto[i], &Caption::clicked, this, [i] { flipauto(i); });
        on(SAuto[i], &PictureBox::clicked, this, [i] { flipauto(i); });
        on(TimeUpdateLabel[i], &Caption::clicked, this, [i] { cycleautotime(i); });
        on(ScanLabel[i], &Caption::clicked, this, [i] { scanforport(i); });
        on(TestLabel[i], &Caption::clicked, this, [i] { runtests(i); });
        on(TestResult[i], &Caption::clicked, this, [i] { showscannerinfo(i); });
        on(FileDownLabel[i], &Caption::clicked, this, [i] { setsavetype(i); });
        on(FitterInfoLabel[i], &Caption::clicked, this, [i] { setfittertype(i); });
    }
    for (int n = 1; n <= 2; ++n) {
        on(FileDown[n], &PictureBox::clicked, this, [n] { setsavetype(n); });
        on(FitterInfo[n], &PictureBox::clicked, this, [n] { setfittertype(n); });
    }
    on(Label3, &Caption::clicked, this, testall);
    on(Label4[15], &Caption::clicked, this, testall);
    on(CheckSubLabel, &Caption::clicked, this, getcoms);
    on(Label4[14], &Caption::clicked, this, getcoms);
    on(ServerIP, &TextBox::lostfocus, this, serveripleft);
    on(TarnTNO, &TextBox::lostfocus, this, checktno);
    on(ServerTest[0], &PictureBox::clicked, this, servertest);
    on(Label2, &Caption::clicked, this, servertest);
    on(Update[0], &PictureBox::clicked, this, updatedata);
    on(UpdateLabel[0], &Caption::clicked, this, updatedata);
    on(Undo[0], &PictureBox::clicked, this, undosetup);
    on(UndoLabel[0], &Caption::clicked, this, undosetup);
    on(Cancel[0], &PictureBox::clicked, this, cancelsetup);
    on(CancelLabel[0], &Caption::clicked, this, cancelsetup);
    on(*this, &Form2::closing, this, cancelsetup);
    on(Help[0], &PictureBox::clicked, this, [] { openhelpmenu(2); });
    on(HelpLabel[0], &Caption::clicked, this, [] { openhelpmenu(2); });
    on(form3(), &Form3::leadon, this, aftercompany);

    // A click on a picture takes the focus, so the box that had it is checked first.
    for (PictureBox* p : findChildren<PictureBox*>()) p->setFocusPolicy(Qt::ClickFocus);
}
