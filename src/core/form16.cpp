#include "core/form16.h"

#include <QGuiApplication>
#include <QScreen>

#include "core/colorbox.h"

Form16::Form16(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form16");
    setWindowTitle("Current Status");
    setFixedSize(twips(5025), twips(2160));
    Caption* captions[] = {&ScanLabel, &DownLabel, &ProcLabel, &SaveLabel};
    Caption* values[] = {&ScanData, &DownData, &ProcData, &SaveData};
    const char* texts[] = {"Current Scanner", "Downloading Data", "Processing Data", "Saving Data"};
    const char* captionnames[] = {"ScanLabel", "DownLabel", "ProcLabel", "SaveLabel"};
    const char* valuenames[] = {"ScanData", "DownData", "ProcData", "SaveData"};
    for (int i = 0; i < 4; ++i) {
        adopt(*captions[i], this, captionnames[i]);
        captions[i]->setcaption(texts[i]);
        captions[i]->setGeometry(twips(120), twips(120 + i * 360), twips(2100), twips(300));
        adopt(*values[i], this, valuenames[i]);
        values[i]->setGeometry(twips(2280), twips(120 + i * 360), twips(2625), twips(300));
    }
    // The level bar lies inside its frame, which keeps the full width.
    for (int i = 0; i <= 1; ++i) {
        adopt(BatteryLevel[i], this, "BatteryLevel", i);
        BatteryLevel[i].setGeometry(twips(120), twips(1680), twips(4785), twips(240));
    }
    BatteryLevel[0].raise();
    setupstatus();
}

void Form16::setupstatus()
{
    ScanLabel.setbold(true);
    DownLabel.setbold(false);
    ProcLabel.setbold(false);
    SaveLabel.setbold(false);
    ScanData.setcaption("Getting Data");
    ScanData.setVisible(true);
    ScanData.setforecolor(colorbox(10));
    for (Caption* c : {&DownData, &ProcData, &SaveData}) {
        c->setcaption("000 / 000");
        c->setforecolor(colorbox(10));
        c->setVisible(false);
    }
    QRect display(0, 0, 1024, 768);
    if (auto screen = QGuiApplication::primaryScreen()) display = screen->geometry();
    move(display.width() - twips(200) - width(), display.height() - twips(600) - height());
}

void Form16::showstage(Caption& label, Caption& data, const std::string& counter)
{
    for (Caption* c : {&ScanLabel, &DownLabel, &ProcLabel, &SaveLabel}) c->setbold(c == &label);
    data.setforecolor(colorbox(10));
    data.setcaption(counter);
    data.setVisible(true);
    repaint();
}
