// The screens of the scan data pipeline, one instance each, made on first use. A screen is
// made hidden; the routines on it can be called without showing it.
#pragma once

class Form1;
class Form12;

Form1& form1();     // main screen
Form12& form12();   // corrupt data screen
