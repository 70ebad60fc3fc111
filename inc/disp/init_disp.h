#pragma once

// The display's one-time setup: the calling thread's context (kept until
// finish_disp, which keeps the share group alive while viewers come and go),
// the loader, the programs and the font.

namespace disp {

// Runs once per process; later calls return 0 at once and write nothing. Not
// guarded against two threads entering at the same moment. Stores the
// context's depth range in depth_max unless it is null.
int init_disp(double* depth_max);

}  // namespace disp
