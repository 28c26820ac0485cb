// Loopback ports for the test servers (HTTP, SMTP, SMB) the tests start.
#pragma once

// A loopback port that nothing listens on at the moment of asking.
int freeport();
// Whether something accepts connections on the loopback port.
bool listening(int port);
