// Unattended actions: screen events played from a file, the partner of the answers file.
//
// [dialogs] actions=FILE in platform.ini names a file of lines, played in order once the
// program has started:
//   Screen.Control event [argument]
//   wait SECONDS
// The events are `click` and `dblclick`. A control of an array is written Name(index), as
// Form18.HelpLabel(0); a menu entry of the tray is a control of the monitor form, as
// Form9.mnuTransfer. For a list the argument is the row to select first, counted from 0.
// `#` starts a comment. Each event waits until its screen is shown (the monitor form, never
// shown, counts as shown for its menu entries once its load sequence has ended) and its
// control is enabled, at most 60 s;
// then the player stops and says so on standard error and in the transcript. Every event
// played is written to the transcript as an "Action" entry. A file with a line that cannot
// be read plays nothing. A relative path is taken from the install folder.
#pragma once

#include <string>
#include <vector>

namespace actions {

struct Action {
    int line = 0;              // line number in the file
    std::string screen;        // "Form1"; empty for a wait
    std::string control;       // "List1", "HelpLabel(0)"
    std::string event;         // "click", "dblclick"
    int argument = -1;         // a list's row; -1 when none was given
    double wait = 0;           // seconds, for a wait
    std::string text;          // the line as written, without its comment
};

// Reads an actions file's text. Lines that cannot be read are described in `errors` (one
// text a line, with its line number); the actions read are returned either way.
std::vector<Action> parse(const std::string& text, std::vector<std::string>& errors);

// Starts playing the file that platform.ini names, if any. Returns at once; the events are
// played from the event loop.
void start();
// Starts playing these actions (tests).
void play(std::vector<Action> list);
// True while actions are left to play.
bool playing();
// Stops playing (tests).
void stop();
// How long an event waits for its screen and control; 60 s unless a test sets it.
void settimeout(int ms);

}  // namespace actions
