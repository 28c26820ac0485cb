// The three scanner types the program serves, always by their index 1 to 3.
#pragma once

#include <string>
#include <vector>

struct ScannerModel {
    int index;
    const char* section;       // section of TAGSTORE.INI
    const char* name;          // name on screens
    enum Access { oplcontrol, csp2library } access;
    const char* versiontest;   // first three characters of its software version; "" none
};

// 1 Opticon OPL 972x, 2 Opticon OPN 2001, 3 Symbol CS 1504; fault 9 for any other index.
const ScannerModel& scannermodel(int index);

// "COM1" .. "COM16" for the ports that exist at this moment (the port lists of the setup
// screen), in order.
std::vector<std::string> listcoms();
