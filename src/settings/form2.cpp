#include "settings/form2.h"

#include <QCloseEvent>
#include <QNetworkInterface>

#include "core/colorbox.h"
#include "core/displaysize.h"
#include "core/imagelists.h"
#include "settings/form4.h"
#include "settings/setupdisplay.h"
#include "settings/setupports.h"
#include "core/runtimeerror.h"

std::string LocalAddress::LocalIP() const
{
    if (!fixed.empty()) return fixed;
    for (const QHostAddress& a : QNetworkInterface::allAddresses()) {
        if (a.protocol() == QAbstractSocket::IPv4Protocol && !a.isLoopback())
            return a.toString().toStdString();
    }
    return "127.0.0.1";
}

Form2::Form2(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form2");
    // The screen, its frames and buttons take their places from the layout (tall until the
    // display size says otherwise).

    const char* scannernames[] = {"", "Opticon OPL 972x", "Opticon OPN 2001", "Symbol CS 1504"};
    adopt(Frame[1], this, "Frame1");
    adopt(Frame[2], this, "Frame2");
    adopt(Frame[3], this, "Frame3");
    Frame[1].setTitle("Scanners");
    Frame[2].setTitle("File Download Location");
    Frame[3].setTitle("Engineer Information");

    for (int i = 1; i <= 3; ++i) {
        QWidget* f = &Frame[1];
        const int top = 360 + (i - 1) * 1320;
        place(STypeB[i], f, "STypeB", i, 120, top, 2880, 1200);
        place(SType[i], f, "SType", i, 180, top + 120, 480, 480);
        light(SType[i], false);
        place(STypeL[i], f, "STypeL", i, 720, top + 180, 2220, 300);
        STypeL[i].setcaption(scannernames[i]);
        place(PortBox[i], f, "PortBox", i, 3120, top, 1800, 1200);
        place(Port[i], f, "Port", i, 3180, top + 60, 1680, 240);
        Port[i].setcaption("Port");
        place(SPorts[i], f, "SPorts", i, 3180, top + 360, 1680, 315);
        place(ScanBox[i], f, "ScanBox", i, 3180, top + 780, 1680, 360);
        place(ScanLabel[i], f, "ScanLabel", i, 3240, top + 820, 1560, 280);
        ScanLabel[i].setcaption("Scan For Port");
        place(TestBox[i], f, "TestBox", i, 5040, top, 1200, 540);
        place(TestLabel[i], f, "TestLabel", i, 5100, top + 120, 1080, 280);
        TestLabel[i].setcaption("Test");
        place(ResultBox[i], f, "ResultBox", i, 5040, top + 660, 1200, 540);
        place(TestResult[i], f, "TestResult", i, 5100, top + 780, 1080, 280);
        place(BAuto[i], f, "BAuto", i, 6360, top, 1380, 540);
        place(SAuto[i], f, "SAuto", i, 6420, top + 60, 420, 420);
        light(SAuto[i], false);
        place(LAuto[i], f, "LAuto", i, 6900, top + 120, 780, 280);
        LAuto[i].setcaption("No");
        place(TimeUpdateBox[i], f, "TimeUpdateBox", i, 6360, top + 660, 2880, 540);
        place(TimeUpdateLabel[i], f, "TimeUpdateLabel", i, 6420, top + 780, 2760, 280);
        TimeUpdateLabel[i].setcaption("Time Adj : Off");
        place(BPort[i], this, "BPort", i, 0, 0, 600, 300);
        BPort[i].hide();
    }
    place(Label3, &Frame[1], "Label3", 120, 4260, 2880, 240);
    Label3.setcaption("Click to test all");
    place(CheckSubLabel, &Frame[1], "CheckSubLabel", 3180, 4260, 2880, 240);
    CheckSubLabel.setcaption("Click to rescan for ports");
    place(Label4[15], &Frame[1], "Label4", 15, 3000, 4260, 120, 240);
    place(Label4[14], &Frame[1], "Label4", 14, 6060, 4260, 120, 240);

    QWidget* loc = &Frame[2];
    const char* locnames[] = {"", "Local", "Server", ""};
    for (int n = 1; n <= 2; ++n) {
        place(FileDown[n], loc, "FileDown", n, 120 + (n - 1) * 1800, 300, 420, 420);
        light(FileDown[n], false);
    }
    for (int n = 1; n <= 3; ++n) {
        place(FileDownLabel[n], loc, "FileDownLabel", n, 600 + (n - 1) * 1800, 360, 1680, 280);
        FileDownLabel[n].setcaption(locnames[n]);
    }
    place(Shape1[7], loc, "Shape1", 7, 120, 840, 5400, 720);
    place(Label2, loc, "Label2", 180, 900, 1680, 280);
    Label2.setcaption("Server IP");
    place(ServerIP, loc, "ServerIP", 1920, 900, 3000, 300);
    place(ServerTest[0], loc, "ServerTest", 0, 5040, 880, 420, 420);
    ServerTest[0].setpicture(MiscIcons(), 3);
    place(Shape1[1], loc, "Shape1", 1, 5640, 840, 3600, 720);
    place(Label1, loc, "Label1", 5700, 900, 1800, 280);
    Label1.setcaption("Tarn Terminal No");
    place(TarnTNO, loc, "TarnTNO", 7560, 900, 1200, 300);
    place(BIP, this, "BIP", 0, 0, 600, 300);
    place(BTNO, this, "BTNO", 0, 0, 600, 300);
    BIP.hide();
    BTNO.hide();

    QWidget* eng = &Frame[3];
    place(FitterInfoBox, eng, "FitterInfoBox", 120, 240, 5400, 1200);
    for (int n = 1; n <= 2; ++n) {
        place(FitterInfo[n], eng, "FitterInfo", n, 180 + (n - 1) * 1800, 300, 420, 420);
        light(FitterInfo[n], false);
    }
    for (int n = 1; n <= 3; ++n) {
        place(FitterInfoLabel[n], eng, "FitterInfoLabel", n, 660 + (n - 1) * 1800, 360, 1620, 280);
        FitterInfoLabel[n].setcaption(locnames[n]);
    }
    place(Shape1[10], eng, "Shape1", 10, 5640, 240, 3600, 1200);
    place(FitterList, eng, "FitterList", 5760, 360, 480, 480);
    FitterList.setpicture(ColorIcons(), 8);
    place(Label4[9], eng, "Label4", 9, 6300, 480, 2800, 280);
    Label4[9].setcaption("Engineer List");

    PictureBox* buttons[] = {&Update[0], &Undo[0], &Cancel[0], &Help[0]};
    Caption* labels[] = {&UpdateLabel[0], &UndoLabel[0], &CancelLabel[0], &HelpLabel[0]};
    const char* bnames[] = {"Update", "Undo", "Cancel", "Help"};
    const char* lnames[] = {"UpdateLabel", "UndoLabel", "CancelLabel", "HelpLabel"};
    const char* texts[] = {"Update", "Undo", "Cancel", "Help"};
    const int images[] = {9, 2, 1, 4};  // save, undo, cancel, help
    for (int b = 0; b < 4; ++b) {
        adopt(*buttons[b], this, bnames[b], 0);
        buttons[b]->setpicture(ColorIcons(), images[b]);
        adopt(*labels[b], this, lnames[b], 0);
        labels[b]->setcaption(texts[b]);
        labels[b]->setAlignment(Qt::AlignCenter);
    }

    // A port box is checked whenever its text changes, by typing, by choice or by a load,
    // and when it loses the focus.
    for (int i = 1; i <= 3; ++i) {
        ComboBox* box = &SPorts[i];
        for (auto signal : {&ComboBox::changed, &ComboBox::clicked, &ComboBox::lostfocus})
            connect(box, signal, this, guard([i] { checkcomport(i); }));
    }
    connect(&FitterList, &PictureBox::clicked, this, guard(openengineerlist));
    connect(&Label4[9], &Caption::clicked, this, guard(openengineerlist));
    layoutsetup(*this, true);
    wireevents();
}

void Form2::closeEvent(QCloseEvent* event)
{
    // Closing by the frame runs the Cancel flow, which decides whether the screen goes.
    event->ignore();
    emit closing();
}

Form2& form2()
{
    static Form2* screen = new Form2;
    return *screen;
}
