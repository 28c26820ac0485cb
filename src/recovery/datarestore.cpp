// The data log restore: the lines of a logged download written back into a fresh BAR file
// of the set, renumbered from 001, with the master file counting the new file last.
#include "core/globals.h"
#include "core/logs.h"
#include "pipeline/formats.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "recovery/form26.h"

void Form26::restorefault(const std::exception& e)
{
    const Fault f = Fault::from(e);
    const std::string error = CStr((long long)f.number) + " " + f.description;
    MsgBox("An unexpected error had occured while attempting to restore the data file! Error : " + error,
           vbExclamation, "Error While Restoring Data");
    addtologfile("dodatarestore: Unexpected error. Error : " + error);
}

void Form26::dodatarestore()
{
    try {
        if (restorecount < 3) {
            MsgBox("There are insufficent lines of data, this would indicate there were no scans present in that log or "
                   "a problem with the logged data. Please refer to Vexal Support!",
                   vbExclamation + vbOKOnly, "Insufficent Lines In Data");
            return;
        }
        const std::string first = List3.list(0);
        if (first == "No data lines found") {
            MsgBox("There are no data lines to restore!", vbExclamation, "No Data Lines");
            return;
        }
        if (first == "Please select from downloads") {
            MsgBox("No download has been selected!", vbExclamation, "Please select download to be restored");
            return;
        }
        if (MsgBox("Are you sure that you wish to restore the selected data entries? The risk is minimal as Tarn will "
                   "identify duplicate lines!",
                   vbYesNo + vbQuestion, "Confirm Data Restore") != vbYes)
            return;

        const Globals& s = g();
        if (s.savetype == 1 && s.storedown == 1) {
            MsgBox("The data store is currently unavailable! Data restore is only possible when the store location is "
                   "available!",
                   vbCritical, "Data Store Unavailable");
            return;
        }
        const formats::Place place = formats::saveplace();
        const std::string master = formats::masterfile(place);
        Int16 filecount = formats::masterfilecount(master);

        if (Left(first, 1) != "[" || Right(first, 1) != "]") {
            MsgBox("The first line of the data to be restored does not seem to contain a valid scanner ID, restoration "
                   "is not possible. Please contact Vexal for assistance!",
                   vbExclamation, "Invalid Data Format");
            return;
        }
        const std::string section = Mid(first, 2, 9);

        // A scanner with lines still in the set waits until Tarn has them: the restore always
        // goes to a fresh number above the set.
        Int16 filenumber;
        if (filecount == 0) {
            filecount = 1;
            filenumber = 1;
        } else {
            for (long i = 1; i <= filecount; ++i) {
                const std::string header = formats::readvalue(formats::barfile(place, i), section, "000");
                const std::string lead = Left(header, 1);
                if (lead >= "0" && lead <= "9") {
                    MsgBox("There is currently data outstanding for scanner " + Right(section, 3) +
                               ". This most be loaded into Tarn before data recovery can be done.",
                           vbInformation + vbOKOnly, "Outstanding Scanner Data");
                    return;
                }
            }
            filenumber = filecount + 1;
            filecount += 1;
        }

        if (restorecount > 3) {
            const std::string header = restorelines[2];
            restorelines[2] = Left(header, 4) + Format(restorecount - 2, "000") + Mid(header, 8);
        }
        if (restorecount > 2)
            for (long i = 1; i <= restorecount - 2; ++i)
                restorelines[i + 2] = Format(i, "000") + Mid(restorelines[i + 2], 4);

        const std::string file = formats::barfile(place, filenumber);
        if (files::exists(file)) files::removefile(file);
        for (long i = 2; i <= restorecount; ++i)
            formats::writevalue(file, section, Left(restorelines[i], 3), Mid(restorelines[i], 5));
        formats::writemastercount(master, filecount);

        MsgBox("Restore of data for scanner has been complete. The data may now be loaded into Tarn.",
               vbInformation + vbOKOnly, "Operation Complete");
        List3.clear();
        List3.additem("Please select from downloads");
    } catch (const std::exception& e) {
        restorefault(e);
    }
}
