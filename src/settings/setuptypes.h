// The two switches of the setup screen: where data goes (File Download Location) and where
// the engineer list lives (Engineer Information). Both change the shared block at once and
// refuse to run while the other, or themselves, is still at work (changingtype).
#pragma once

// index 1 Local, 2 Server, 3 the sub-mode caption, which cycles Direct, Batch Update and,
// with the OPL 972x in use, Email. Going to Server with no address in the box guesses the
// server from the PC's own address (its first three octets and 200).
void setsavetype(int index);
// index 1 Local, 2 Server (Direct), 3 the sub-mode caption: Direct and PC Copy in turn.
// Does nothing while saving locally.
void setfittertype(int index);
