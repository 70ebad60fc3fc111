#pragma once

// One force step of the mechanistic model: every edge element of every
// flute that the engagement puts in contact, at every sampled angle of one
// revolution, gives a cutting force (coefficients times chip area) and an
// edge force (coefficients times edge length). Side elements are slices of
// the flank at the engagement's heights; bottom elements are rings, which
// cut only when the tool plunges.

#include <span>

#include "milling/engagement_t.h"
#include "milling/milling_physics.h"
#include "milling/milling_physics_session_t.h"

namespace mech {

// The arrays hold 3 * input.samples doubles, output 11; input.samples >= 1.
// Everything they held is overwritten; when memory runs out (std::bad_alloc)
// nothing has been written yet.
void run_force_step(const milling_physics_session_t& session, const engagement_t& engagement,
                    const milling_force_input_t& input, std::span<double> cut_forces, std::span<double> edge_forces,
                    std::span<double> moments, std::span<double> output);

}  // namespace mech
