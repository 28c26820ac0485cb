// The `opl` control of the OPL 972x: its roles and its three events, over the OPL link
// (docs/opl-link.md).
//
// Each routine creates a control, uses it and releases it (deletes it). The calls block for
// one short exchange. A call that fails emits Error before it returns and gives an empty or
// zero value. The download runs in the background; its events arrive on the thread that
// owns the control while that thread lets events run (QCoreApplication::processEvents):
// DownloadProgress(position) once per line from 0, DownloadComplete once the target file is
// written and closed, or Error when the download fails, and then no DownloadComplete.
//
// Open and close act on the port for every control of the process (opl_link.h): a control
// made while another holds the port open uses that open port. A call on a port that is not
// open opens it for the call alone. Releasing the control that opened a port closes it.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace loaddll {
class LoadDll;
}

namespace opl {

class Link;

// Status results of the calls that return one.
constexpr int statusok = 0;
constexpr int statusnoport = 1;      // the port is not mapped, missing or held by another
constexpr int statusnoanswer = 2;    // the scanner did not answer
constexpr int statusrefused = 3;     // the scanner answered with a refusal
constexpr int statuslinkerror = 4;   // the answer was broken
constexpr int statusbusy = 5;        // a download or load holds the port

class Control : public QObject {
    Q_OBJECT
public:
    explicit Control(QObject* parent = nullptr);
    ~Control() override;

    // 1: the COM port number.
    void setport(int port);
    int port() const { return port_; }
    // 2: the download target, a Windows path (c:\tarnbc\temp_NNN.txt).
    void settarget(const std::string& file);
    // 3, 4: open and close the port.
    int openport();
    int closeport();
    // 5, 6: the clock as "dd/mm/yyyy hh:nn:ss".
    int writeclock(const std::string& text);
    std::string readclock();
    // 7, 8: the scanner ID.
    int writeid(int16_t id);
    int16_t readid();
    // 9: lines in the scanner's memory.
    int32_t readlinecount();
    // 10: the battery text, three digits of percent and "%".
    std::string readbattery();
    // 11: starts the download of every line into the target file, replacing it. False when
    // it could not start (Error has been emitted).
    bool startdownload();
    // 12: starts loading a software image (a Windows path) into the scanner. Progress comes
    // as DownloadProgress(percent), the end as DownloadComplete, a failure as Error.
    bool loadsoftware(const std::string& imagefile);
    // Empties the scanner's memory of lines.
    int cleardata();

    bool downloading() const { return running_; }

signals:
    void DownloadProgress(int position);
    void DownloadComplete();
    void Error(const QString& text);

private:
    std::shared_ptr<Link> link();
    int fail(int status, const std::string& text);
    int request(uint8_t command, const std::vector<uint8_t>& payload, std::vector<uint8_t>& data, const char* what);
    void rundownload(std::shared_ptr<Link> link, std::string hostfile, std::string target, std::string com);
    void stopdownload();
    void post(std::function<void()> f);

    int port_ = 0;
    std::string target_;
    bool owner_ = false;   // this control opened the port
    std::thread worker_;
    std::atomic<bool> cancel_{false};
    std::atomic<bool> running_{false};
    std::unique_ptr<loaddll::LoadDll> loader_;
};

}  // namespace opl
