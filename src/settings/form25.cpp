#include "settings/form25.h"

#include "core/globals.h"
#include "core/imagelists.h"
#include "settings/form2.h"
#include "settings/storecheck.h"
#include "core/runtimeerror.h"

namespace {

void fill(Caption& box, const QColor& colour)
{
    QPalette p = box.palette();
    p.setColor(QPalette::Window, colour);
    box.setPalette(p);
    box.setAutoFillBackground(true);
}

}  // namespace

Form25::Form25(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form25");
    setWindowTitle("Checking Server Store Location");
    setFixedSize(twips(5160), twips(3600));

    place(Label4[0], this, "Label4", 0, 120, 120, 1800, 300);
    Label4[0].setcaption("Server Address");
    place(Label4[5], this, "Label4", 5, 2040, 120, 2880, 300);
    place(Label1, this, "Label1", 120, 480, 4800, 300);
    Label1.setcaption("IP Status");

    const char* rows[] = {"", "Address Test", "Share Test", "Share Writablity"};
    for (int row = 1; row <= 3; ++row) {
        const int top = 900 + (row - 1) * 600;
        place(Label4[row + 1], this, "Label4", row + 1, 120, top, 600, 480);
        place(Cancel[row], this, "Cancel", row, 180, top + 30, 480, 420);
        place(Label3[row], this, "Label3", row, 840, top + 90, 3000, 300);
        Label3[row].setcaption(rows[row]);
    }

    place(Delete, this, "Delete", 4200, 2640, 720, 480);
    Delete.setpicture(ColorIcons(), 1);
    place(Label4[1], this, "Label4", 1, 4080, 3150, 960, 300);
    Label4[1].setcaption("Close");
    Label4[1].setAlignment(Qt::AlignCenter);
    connect(&Delete, &PictureBox::clicked, this, guard(std::bind_front(&QWidget::hide, this)));
    connect(&Label4[1], &Caption::clicked, this, guard(std::bind_front(&QWidget::hide, this)));

    resetscreen();
}

void Form25::resetscreen()
{
    Label4[5].setcaption(form2().ServerIP.value());
    Label1.setcaption("IP Status");
    for (int row = 1; row <= 3; ++row) setlight(row, Light::waiting);
}

void Form25::setlight(int row, Light light)
{
    showlight(Cancel[row], light);
    fill(Label4[row + 1], lightcolour(light));
}

void Form25::storetest()
{
    resetscreen();
    show();
    repaint();
    g().testmode = 1;
    checkstorelocation();
    g().testmode = 0;
}

Form25& form25()
{
    static Form25* screen = new Form25;
    return *screen;
}
