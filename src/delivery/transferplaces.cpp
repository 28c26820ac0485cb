#include "delivery/transferplaces.h"

#include "core/globals.h"
#include "pipeline/formats.h"
#include "platform/files.h"
#include "runtime/vb.h"

namespace transferplaces {

std::string workmaster() { return std::string(workfolder) + "BARCODE." + g().terminalno; }
std::string workbar(long n) { return std::string(workfolder) + "BAR" + Format(n, "000") + "." + g().terminalno; }
std::string storepattern() { return formats::storefolder(g().serverip) + "BAR*." + g().terminalno; }
std::string workpattern() { return std::string(workfolder) + "BAR*." + g().terminalno; }

void makeworkfolders()
{
    for (const char* folder : {"C:\\TARNBC\\INITEMP", "C:\\TARNBC\\INITEMP\\BACKUPS"})
        if (!files::isfolder(folder)) files::makefolder(folder);
}

}  // namespace transferplaces
