// Form7: port scan screen ("Scanning For Scanner Port"): walks the ports that exist, one try
// every 2500 ms, until the scanner of the type in `scannertype` answers on one of them.
#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <memory>
#include <string>

class QLabel;
class QLineEdit;
class QTimer;

namespace opl {
class Control;
}

class Form7 : public QDialog {
    Q_OBJECT
public:
    explicit Form7(QWidget* parent = nullptr);
    ~Form7() override;

    // ---- controls --------------------------------------------------------------------
    QLabel* Label1;                     // "Scanning", "Found!", "Failed!"
    QLabel* Cancel;                     // the cancel picture and its caption
    QLabel* Label4;
    std::array<QLabel*, 16> PortLabel;  // "COM1" .. "COM16"
    std::array<QLabel*, 16> Image1;     // a ball per port, index port - 1
    QLineEdit* Text1;                   // port under test
    QLineEdit* Text2;                   // "1000" when the scanner answered on it
    QLineEdit* Text3;                   // blink phase: 0, 1, or 2 while a try runs
    QTimer* Timer1;                     // blink, 200 ms
    QTimer* Timer2;                     // one try per tick

    // ---- marks -----------------------------------------------------------------------
    int found = 0;                      // 1 found, 0 failed
    int error = 0;                      // set by this screen's opl_Error
    std::unique_ptr<opl::Control> opl;

    // What the setup screen lends this screen when it opens it: its port box SPorts(type),
    // its BPort, and its scanner test.
    struct SetupLink {
        std::function<void(int type, const std::string& text)> setsports;
        std::function<void()> clearbport;
        std::function<void(int type)> runtests;
    } setup;

    // ---- routines --------------------------------------------------------------------
    // This screen's side of the setup screen's port scan: the balls show which ports exist
    // (image 1) and which do not (image 2), Text1..Text3 "0", Label1 "Scanning" in colour box
    // 6, Timer1 at 200 ms and Timer2 at 1000 ms, shown.
    void startscan();
    // One try on one port; Text2 becomes "1000" when the scanner of `scannertype` answers.
    void runportscan(int Port);

    void Timer1_Timer();
    void Timer2_Timer();
    void Cancel_Click();
    void Label4_Click() { Cancel_Click(); }
    void opl_Error(const QString& text);

    // The Balls image on Image1(index): 1 idle, 2 no port, 3 found, 4 lit, 5 tried.
    int ballimage(int index) const;
    void setball(int index, int image);
    // The ColorBox index of Label1's text.
    int label1colour() const { return label1colour_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void setlabel1(const std::string& text, int colour);
    int label1colour_ = 6;
};

// The one port scan screen of the program.
Form7& form7();
