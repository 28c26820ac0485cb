#include "core/form9.h"

Form9::Form9(QWidget* parent) : QWidget(parent), mnuTransfer("&Transfer Batch")
{
    setObjectName("Form9");
    setWindowTitle("VEXAL Scanner Interface");
    QTimer* timers[] = {&Timer1, &Timer2, &Timer3, &Timer4, &ImportCheckTimer, &ReadDelayTimer};
    const char* names[] = {"Timer1", "Timer2", "Timer3", "Timer4", "ImportCheckTimer", "ReadDelayTimer"};
    for (int i = 0; i < 6; ++i) {
        timers[i]->setParent(this);
        timers[i]->setObjectName(names[i]);
    }
    mnuTransfer.setParent(this);
    mnuTransfer.setObjectName("mnuTransfer");
}

Form9& form9()
{
    static Form9* form = new Form9;
    return *form;
}

void setinterval(QTimer& timer, int ms)
{
    if (ms == 0) {
        timer.stop();
        return;
    }
    timer.setInterval(ms);
    if (!timer.isActive()) timer.start();
}
