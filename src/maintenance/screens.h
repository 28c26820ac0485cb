// The screens of scanner maintenance, one instance each, made on first use. A screen is
// made hidden; the routines on it can be called without showing it.
#pragma once

class Form10;
class Form24;

Form10& form10();   // Check Scanner screen
Form24& form24();   // battery timer screen
