// The screens of the application core, one instance each, made on first use. A screen is
// made hidden; the routines on it can be called without showing it.
#pragma once

class Form6;
class Form16;

Form6& form6();     // download progress screen
Form16& form16();   // current status screen
