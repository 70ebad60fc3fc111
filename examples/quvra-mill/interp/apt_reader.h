#pragma once

// Running APT CL data, the cutter-location output of CAM systems. Positions
// are tool tip points; the optional i, j, k of GOTO is the tool axis, and a
// GOTO that changes it is a rotating move.
//   GOTO/x,y,z[,i,j,k]   move; GODLTA/dx,dy,dz or GODLTA/d (along the axis)
//   FROM/x,y,z[,i,j,k]   start point, also the point GOHOME returns to
//   RAPID                the next move only is a rapid
//   FEDRAT/f[,MMPM|IPM]  feed per minute
//   CUTTER/d | d,r | d,r,e,f,alpha,beta,h   the cutter of the current tool
//   LOADTL/n             tool change
//   UNITS/MM | INCHES    units of what follows
//   END, FINI            end of the program
// Statements that do not change the path (PARTNO, PPRINT, SPINDL, COOLNT,
// ...) are passed over; anything else stops the run.

#include <string>
#include <string_view>

#include "interp/interp_options_t.h"
#include "interp/program_t.h"

namespace mill {

// Throws source_error_t naming the statement or the parameter at fault.
program_t run_apt(std::string_view text, const std::string& file, const interp_options_t& options);

}  // namespace mill
