#include "maintenance/chargecurve.h"

int chargeminutes(int level)
{
    // Below 72% the level moves in bands of a minute each; above it each percent has its
    // own cost. A level under 0 counts as the first band.
    static const struct Band { int upto, minutes, next; } bands[] = {
        {30, 1, 31}, {42, 1, 43}, {49, 1, 50}, {56, 1, 57}, {61, 1, 62}, {63, 1, 64}, {68, 1, 69}, {71, 1, 72},
    };
    int sum = 0;
    int p = level;
    while (p <= 100) {
        if (p <= 71) {
            for (const Band& b : bands) {
                if (p <= b.upto) {
                    sum += b.minutes;
                    p = b.next;
                    break;
                }
            }
            continue;
        }
        if (p <= 75) sum += 1;
        else if (p <= 78) sum += 5;
        else if (p <= 85) sum += 3;
        else if (p <= 91) sum += 9;
        else if (p == 92) sum += 5;
        else if (p <= 96) sum += 3;
        else if (p <= 98) sum += 4;
        else sum += 2;
        ++p;
    }
    return sum;
}
