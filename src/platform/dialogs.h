// Message and input boxes with the classic flags and results.
//
// Shown as Qt dialogs by default. Tests queue answers in-process; unattended runs read
// them from the [dialogs] answers file of platform.ini. Every box, shown or answered, is
// added to the transcript (and to the [dialogs] transcript file when set).
//
// Answers file, one rule a line, the first rule that fits a box answers it:
//   Title => Answer
//   Title | part of the text => Answer
// A rule with a text part is tried before a rule with the title alone. Answer is a button
// name (OK, Cancel, Abort, Retry, Ignore, Yes, No), a number, or for an input box the text
// to enter. Lines starting with # are comments. A box no rule fits takes its default button
// (an input box its default text).
#pragma once

#include <functional>
#include <string>
#include <vector>

constexpr int vbOKOnly = 0, vbOKCancel = 1, vbAbortRetryIgnore = 2, vbYesNoCancel = 3,
              vbYesNo = 4, vbRetryCancel = 5;
constexpr int vbCritical = 16, vbQuestion = 32, vbExclamation = 48, vbInformation = 64;
constexpr int vbDefaultButton1 = 0, vbDefaultButton2 = 256, vbDefaultButton3 = 512;
constexpr int vbApplicationModal = 0, vbSystemModal = 4096;
constexpr int vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6,
              vbNo = 7;

// Returns the button pressed (vbOK ... vbNo). A closed box counts as Cancel where there is
// one, else as the only or default button.
int MsgBox(const std::string& text, int flags = vbOKOnly, const std::string& title = "");
// Returns the text entered, "" on Cancel.
std::string InputBox(const std::string& prompt, const std::string& title = "",
                     const std::string& defaulttext = "");

namespace dialogs {

struct Entry {
    std::string kind;     // "MsgBox", "InputBox", or "Action" (platform/actions.h)
    std::string title;
    std::string text;
    int flags = 0;        // MsgBox flags; 0 for an input box
    std::string answer;   // button name ("Yes") or the text entered
    int result = 0;       // MsgBox result; 0 for an input box
};

// Test seam: the next boxes take these answers in order, without being shown.
void queueanswer(int result);
void queueinput(const std::string& text);
// With no queued answer and no answers file: answer with the default button instead of
// showing the box (tests and unattended runs); off by default.
void setunattended(bool on);
// Test seam: runs at each message box while it is up, before it is answered (what goes on
// while a box waits for the user, such as timer ticks); the box's title is passed.
void setwhileopen(std::function<void(const std::string& title)> run);
const std::vector<Entry>& transcript();
void cleartranscript();
// Drops queued answers and rereads the [dialogs] section of platform.ini.
void reset();

// The text of a transcript entry as written to the transcript file.
std::string describe(const Entry& e);

// Adds an entry to the transcript and its file, as a box does (the actions player).
void note(const Entry& e);
// The host path of a file setting of [dialogs] ("answers", "actions", "transcript"), a
// relative one taken from the install folder; "" when it is not set.
std::string settingfile(const std::string& key);

}  // namespace dialogs
