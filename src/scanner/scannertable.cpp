#include "scanner/scannertable.h"

#include "platform/serial.h"
#include "runtime/fault.h"

namespace {

const ScannerModel models[] = {
    {1, "9725", "Opticon OPL 972x", ScannerModel::oplcontrol, ""},
    {2, "1234", "Opticon 2001", ScannerModel::csp2library, "NBR"},
    {3, "1504", "Symbol 1504", ScannerModel::csp2library, "RBB"},
};

}  // namespace

const ScannerModel& scannermodel(int index)
{
    if (index < 1 || index > 3) raisefault(fault::subscript);
    return models[index - 1];
}

std::vector<std::string> listcoms()
{
    std::vector<std::string> ports;
    for (int n = 1; n <= 16; ++n)
        if (serial::portexists(n)) ports.push_back("COM" + std::to_string(n));
    return ports;
}
