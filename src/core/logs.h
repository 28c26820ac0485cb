// The day's two logs under the install folder's LOGS: DD_LOG.TXT, the program's log, and
// DD_DAT.TXT, the scanner lines as received. They turn over monthly: a day file whose first
// line is not today's date is replaced at the next start.
#pragma once

#include <string>

void addtologfile(const std::string& text);
void addtodatfile(const std::string& text);
// Today's data log on the disk (fsync). A log that cannot be flushed was reported when its
// lines could not be written.
void flushdatfile();
// Called once at start: removes the old weekday files, starts or continues today's files.
void checklogfiles();
