// The main screen's `opl` control: the OPL 972x session of the routines that read and clear
// a scanner from the main screen, with the screen's three event handlers. The pipeline's
// session closer (session.h) is installed here too: it closes this control when it is
// open, and ends a csp2 session otherwise.
#pragma once

#include <QString>
#include <memory>

namespace opl {
class Control;
}

// The control of the session in hand; empty between sessions.
std::unique_ptr<opl::Control>& mainopl();
// A new control for a session, with the main screen's handlers, on the OPL 972x's port; the
// port is opened and oplportstate set to 1 unless another routine holds it open (then 2).
opl::Control& openmainopl();
// The session's end: closes the port when this session opened it (oplportstate 1, set back
// to 0) and releases the control. With no control there is nothing to close, and the state
// stays as it is.
void closemainopl();

// Closes whatever session a failing pipeline routine leaves behind; installed as the
// session closer.
void closepipelinesession();
void installsessioncloser();

// ---- the control's events, on the main screen ----
// Fills the progress balls and counts on the status screen.
void opl_DownloadProgress(int position);
// Hides the progress screen, says "Data Download Complete" and sets opldone.
void opl_DownloadComplete();
// Shows the control's text in a message box of no title of its own; oplerror stays as it is.
void opl_Error(const QString& text);
