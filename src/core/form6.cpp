#include "core/form6.h"

#include "core/imagelists.h"
#include "core/logs.h"
#include "platform/dialogs.h"

Form6::Form6(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form6");
    setWindowTitle("Downloading Barcode Data");
    setFixedSize(twips(9 * 480 + 240), twips(900));
    for (int i = 1; i <= 9; ++i) {
        adopt(Image1[i], this, "Image1", i);
        Image1[i].setGeometry(twips(120 + (i - 1) * 480), twips(240), twips(480), twips(480));
    }
    adopt(TimeCount, this, "TimeCount");
    TimeCount.hide();
    adopt(ScanSource, this, "ScanSource");
    ScanSource.hide();
    resetballs();
}

void Form6::resetballs()
{
    for (int i = 1; i <= 9; ++i) Image1[i].setpicture(Balls(), 1);
}

void Form6::fillballs()
{
    try {
        double n = Val(TimeCount.value());
        if (n > 9) n = 9;
        Int16 count = CInt(n);
        for (int i = 1; i <= count; ++i) Image1[i].setpicture(Balls(), 3);
        // With nothing to fill there is no ball to refresh.
        if (count >= 1) Image1[count].repaint();
    } catch (const std::exception& e) {
        Fault f = Fault::from(e);
        MsgBox("An unexpected error has occured in a sub form! Error : " + CStr((long long)f.number) + " " + f.description,
               vbExclamation, "Error In Form6");
        addtologfile("form6-fillballs: Unexpected error. Error : " + CStr((long long)f.number) + " " + f.description);
    }
}
