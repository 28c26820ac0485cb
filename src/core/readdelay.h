// The read delay between calls to the OPL 972x, for machines that need time between them:
// with `readdelay` n above 0 it waits n + 1 ticks of a 1000 ms timer, letting events run;
// with 0 there is no wait at all.
#pragma once

void waitreaddelay();
