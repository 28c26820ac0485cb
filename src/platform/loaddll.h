// The software loader of the OPL 972x (the LoadDll control): reads the scanner's versions,
// erases its application and loads a software image, over the OPL link (docs/opl-link.md).
//
// The control's dispatch numbers and what stands for them here:
//   1 property  setport       the COM port of the scanner
//   2 property  setfile       the image file, a Windows path (OS\vexalOS.S32, OS\vexal.S32)
//   3 property  setstep       progress step in percent between two status events; 0: every
//                             percent. Set to 0 before each operation.
//   4 method    load          loads the image of property 2
//   6 method    readversions  reads the scanner's versions
//   7 method    erase         erases the application
//   9 event     Status(progress, code, text)
// Every operation runs in the background and reports only through Status, delivered on the
// thread that owns the loader while it lets events run. One operation at a time.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <string>
#include <thread>

namespace loaddll {

// Status codes: the end of an operation, progress, and failures (1 to 999).
constexpr int loadfinished = 1020;
constexpr int versionsread = 1040;    // text: "OS version: <os> APP version: <app>"
constexpr int erasefinished = 1050;
constexpr int progressfirst = 2010;   // a load writing the image into the scanner's memory
constexpr int progresssecond = 2020;  // an image on its way over the line, or an erase
constexpr int errnoport = 101;        // the port is not mapped, missing or held
constexpr int errnoanswer = 102;      // the scanner did not answer
constexpr int errlinklost = 103;      // the line broke during the operation
constexpr int errnofile = 104;        // the image file is missing or unreadable
constexpr int errrefused = 105;       // the scanner refused the operation
constexpr int errbadimage = 106;      // the scanner found the image unsound
constexpr int errbusy = 107;          // another operation holds the port
constexpr int errlink = 108;          // broken frames

class LoadDll : public QObject {
    Q_OBJECT
public:
    explicit LoadDll(QObject* parent = nullptr);
    ~LoadDll() override;  // waits for a running operation to give up

    void setport(int port) { port_ = port; }
    void setfile(const std::string& file) { file_ = file; }
    void setstep(int percent) { step_ = percent; }
    void load();
    void readversions();
    void erase();
    bool running() const { return running_; }

signals:
    void Status(int progress, int code, const QString& text);

private:
    enum Operation { opload, opversions, operase };
    void start(Operation op);
    void run(Operation op);
    void status(int progress, int code, const std::string& text);
    void progress(int percent, int code, const std::string& text, int& last);

    int port_ = 0;
    std::string file_;
    int step_ = 0;
    std::thread worker_;
    std::atomic<bool> running_{false};
    std::atomic<bool> cancel_{false};
};

}  // namespace loaddll
