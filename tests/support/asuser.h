// Runs a program as an ordinary user, as a workshop PC runs this one: when the tests run as
// root, through setpriv as nobody (uid and gid 65534, no extra groups); otherwise as they are.
#pragma once

#include <string>
#include <vector>

struct UserRun {
    int exitcode = -1;     // -1 when it did not start or had to be stopped
    std::string output;    // stdout and stderr together
};

// Whether this process is an ordinary user already or can become one (root with setpriv, and
// this test program open to that user).
bool canrunasuser();
// The command line that runs argv as the ordinary user.
std::vector<std::string> asuser(const std::vector<std::string>& argv);
// Runs this test program again as the ordinary user with a test filter; the environment is
// kept, with VEXAL_AS_USER=1 so that the run knows it is the inner one.
UserRun rerunasuser(const std::string& filter, int timeoutms = 300000);
// Whether this run is the inner one of rerunasuser.
bool innerrun();
