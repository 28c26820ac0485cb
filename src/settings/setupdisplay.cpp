#include "settings/setupdisplay.h"

#include "core/colorbox.h"
#include "core/controls.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "settings/form2.h"

namespace {
// A filled ball for on, an empty one for off.
constexpr int litpicture = 3, dimpicture = 1;
constexpr int coloron = 13, coloroff = 7;

void subcaption(Caption& label, const char* text, int colour)
{
    label.setcaption(text);
    label.setbold(true);
    label.setforecolor(colorbox(colour));
}
}  // namespace

void light(PictureBox& picture, bool on) { picture.setpicture(Balls(), on ? litpicture : dimpicture); }

bool islit(const PictureBox& picture)
{
    return picture.picturelist() == Balls().name() && picture.pictureindex() == litpicture;
}

void paint(Shape& frame, int index) { frame.setfillcolor(colorbox(index)); }

void showauto(int i)
{
    Form2& f = form2();
    const bool on = g().scannerauto[i] == 1;
    f.LAuto[i].setcaption(on ? "Yes" : "No");
    light(f.SAuto[i], on);
}

void showautotime(int i)
{
    Caption& label = form2().TimeUpdateLabel[i];
    switch (g().scannerautotime[i]) {
    case 1: subcaption(label, "Time Adj : Adv", coloron); break;
    case 2: subcaption(label, "Time Adj : On", coloron); break;
    default: subcaption(label, "Time Adj : Off", coloroff); break;
    }
}

void showsavetype()
{
    Form2& f = form2();
    const int type = g().savetype;
    const bool server = type > 0;
    light(f.FileDown[1], !server);
    light(f.FileDown[2], server);
    QWidget* servercontrols[] = {&f.FileDownLabel[3], &f.Shape1[7], &f.Label2, &f.ServerTest[0], &f.ServerIP,
                                 &f.FitterInfo[2], &f.FitterInfoLabel[2]};
    for (QWidget* w : servercontrols) w->setVisible(server);
    if (!server) f.FitterInfoLabel[3].hide();
    if (type == 3) subcaption(f.FileDownLabel[3], "Email", 10);
    else if (type == 2) subcaption(f.FileDownLabel[3], "Batch Update", 14);
    else subcaption(f.FileDownLabel[3], "Direct", 13);
    f.Label2.setcaption(type == 3 ? "Email" : "Server");
    const bool terminal = server && type != 3;
    for (QWidget* w : {(QWidget*)&f.Shape1[1], (QWidget*)&f.Label1, (QWidget*)&f.TarnTNO}) w->setVisible(terminal);
}

void showfittertype()
{
    Form2& f = form2();
    const int type = g().fittertype;
    light(f.FitterInfo[1], type == 0);
    light(f.FitterInfo[2], type != 0);
    if (type == 0) {
        f.FitterInfoLabel[3].hide();
        return;
    }
    if (type == 2) subcaption(f.FitterInfoLabel[3], "PC Copy", 14);
    else subcaption(f.FitterInfoLabel[3], "Direct", 13);
    f.FitterInfoLabel[3].show();
}
