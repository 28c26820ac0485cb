#include "settings/form11.h"

#include <QCoreApplication>

#include "core/imagelists.h"
#include "scanner/checkscanners.h"

Form11::Form11(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form11");
    setWindowTitle("System Check");
    setFixedSize(twips(4200), twips(1080));
    place(Image1, this, "Image1", 120, 120, 720, 720);
    Image1.setpicture(MiscIcons(), 2);
    place(Label1, this, "Label1", 960, 300, 3120, 360);
}

void Form11::showbusy(const std::string& text, int image)
{
    Label1.setcaption(text);
    Image1.setpicture(MiscIcons(), image);
    show();
    repaint();
    QCoreApplication::processEvents();
}

void Form11::hidebusy() { hide(); }

Form11& form11()
{
    static Form11* screen = new Form11;
    return *screen;
}
