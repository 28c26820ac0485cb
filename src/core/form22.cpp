#include "core/form22.h"

#include <QCoreApplication>

#include "core/exit.h"
#include "core/form9.h"
#include "core/imagelists.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "core/runtimeerror.h"

Form22::Form22(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form22");
    setWindowTitle("Select Exit Option");
    resize(twips(4680), twips(3000));
    const char* texts[] = {"", "EXIT COMPLETELY", "RUN IN TASK BAR"};
    const int images[] = {3, 1, 8};
    for (int i = 1; i <= 2; ++i) {
        place(Picture1[i], this, "Picture1", i, 240, 240 + (i - 1) * 960, 720, 720);
        Picture1[i].setpicture(ColorIcons(), images[i]);
        place(Label1[i], this, "Label1", i, 1200, 480 + (i - 1) * 960, 3240, 300);
        Label1[i].setcaption(texts[i]);
        Label1[i].setbold(true);
    }
    place(Picture1[0], this, "Picture1", 0, 240, 2040, 480, 480);
    Picture1[0].setpicture(ColorIcons(), images[0]);
    place(Label4, this, "Label4", 840, 2160, 1500, 300);
    Label4.setcaption("Cancel");

    connect(&Picture1[0], &PictureBox::clicked, this, guard([this] { cancelclick(); }));
    connect(&Label4, &Caption::clicked, this, guard([this] { cancelclick(); }));
    connect(&Label1[1], &Caption::clicked, this, guard([this] { exitclick(); }));
    connect(&Picture1[1], &PictureBox::clicked, this, guard([this] { exitclick(); }));
    connect(&Label1[2], &Caption::clicked, this, guard([this] { taskbarcaptionclick(); }));
    connect(&Picture1[2], &PictureBox::clicked, this, guard([this] { taskbarpictureclick(); }));
}

void Form22::cancelclick()
{
    hide();
    form1().show();
}

void Form22::exitclick()
{
    hide();
    QCoreApplication::processEvents();
    fullexit();
}

void Form22::taskbarcaptionclick()
{
    setinterval(form9().Timer4, 1000);
    hide();
}

void Form22::taskbarpictureclick() { hide(); }

Form22& form22()
{
    static Form22* form = new Form22;
    return *form;
}
