// The OPL 972x charge curve: minutes from a battery level to 100%. The time stays almost
// flat below 72% and is spent between 76% and 92%: 0% gives 131, 72% 123, 99% 4.
#pragma once

int chargeminutes(int level);
