// The whole transfer of the scanner in scannertype: read, process, save, clear, and the
// buttons back at rest.
#pragma once

// Called by the Transfer button, the select scanner type screen and the automatic download.
// Returns at once, with runmode and pressedop as they are, when the corrupt data screen has
// taken the read over.
void transferdata();
