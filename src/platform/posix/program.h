// What every program of the system does first of all.
#pragma once

// A file that may not grow and a reader that has gone are errors of the call that meets them, and not the
// end of the process without a word. The process's memory may hold passwords: no core dump is written, and
// other processes of the user cannot look into it. Call before threads and libraries start.
void PrepareProgram();
