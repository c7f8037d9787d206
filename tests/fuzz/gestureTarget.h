#pragma once
// The gesture target of the fuzz driver: random sessions of a user at the tool, on a real scan
// or on an empty scene, played through the real plug-in with the checks after every step.
//
// An input is a tqsarn session (.json), so a finding replays with `hostFuzz --replay FILE`
// (steps and checks) or `tqsarn play FILE` (the steps alone). A sequence presses, drags and
// releases every button with every modifier combination, moves the pointer, presses Enter,
// Backspace, Delete and Esc, edits the context with valid and invalid flag values, sets the
// tool's option variables, undoes and redoes, changes the tool and the selection. After every
// step the retopo meshes are valid (counts, indices in range, finite positions) and the store's
// vertex and face numbers point into them or are empty; no exception reached the host's
// barrier. At the end everything is undone and the scene (nodes, connections, every mesh, the
// store's attributes) must equal the scene before the sequence.
//
// One scene per scan is set up as `tqsarn play` sets it up, and kept from one sequence to the
// next: undo-all restores it, so the next sequence starts from the same scene. A finding is
// played again on a fresh scene and says whether it replays there.

#include "fuzzTargets.h"

namespace fuzz {

// Makes "gestures" (extension .json) known to the driver.
void addGestureTarget();

// The same target without the list of known open findings: every problem is reported.
std::unique_ptr<Target> makeStrictGestureTarget();

} // namespace fuzz
