#include "pipeline/form12.h"

Form12::Form12(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form12");
    setWindowTitle("Corrupt Scanner Data");
    resize(twips(7500), twips(6600));
    adopt(List1, this, "List1");
    List1.setGeometry(twips(120), twips(1200), twips(7260), twips(4200));
    place(Label2, this, "Label2", 120, 120, 7260, 300);
    place(Label3, this, "Label3", 120, 600, 2400, 300);
}
