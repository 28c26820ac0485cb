#include "recovery/form28.h"

#include <QCloseEvent>

#include "core/imagelists.h"
#include "core/runtimeerror.h"
#include "delivery/listfiles.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "runtime/vb.h"


Form28::Form28(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form28");
    setWindowTitle("Tarn File Editor");
    setFixedSize(twips(9120), twips(5400));

    place(Label1, this, "Label1", 120, 120, 4320, 300);
    Label1.setcaption("Available Scanner Data");
    place(List1, this, "List1", 120, 420, 4320, 3960);
    place(Label2, this, "Label2", 4680, 120, 4320, 300);
    Label2.setcaption("Rogue Files");
    place(List2, this, "List2", 4680, 420, 4320, 3960);
    place(Cancel, this, "Cancel", 8160, 4440, 720, 540);
    Cancel.setpicture(ColorIcons(), 1);
    place(Label4, this, "Label4", 7920, 5010, 1200, 300);
    Label4.setcaption("Finished");
    Label4.setAlignment(Qt::AlignCenter);

    connect(&List1, &ListBox::doubleclicked, this, guard([this] { list1dblclick(); }));
    connect(&List2, &ListBox::doubleclicked, this, guard([this] { list2dblclick(); }));
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&Form28::finished, this)));
    connect(&Label4, &Caption::clicked, this, guard(std::bind_front(&Form28::finished, this)));
}

void Form28::finished()
{
    hide();
    form1().show();
    listfiles();
}

void Form28::closeEvent(QCloseEvent* event)
{
    event->ignore();
    finished();
}

Form28& form28()
{
    static Form28* screen = new Form28;
    return *screen;
}

void showfileeditor()
{
    form1().hide();
    form28().show();
    form28().listerrorfiles();
}
