#pragma once
// The small questions the gesture code branches on. Each finds the store and reads what it
// needs anew; with no store the answer is false or 0.
//
// Closure is tested with two tolerances, both strict: 0.001 for strokes (a hand-drawn loop
// whose ends met on screen) and 0.0001 for shadow rows in `anyShadowRowClosed` (rows built
// from vertices, whose loops close exactly). They differ on purpose.

namespace tq {

bool hasStrokePoints();   // `strokes` holds a point
bool hasPlayerVertices(); // `playervtx` holds an id
bool hasShadow();         // `sizesShadow` is not empty
int strokeCount();        // entries of `sizes`
int shadowCount();        // entries of `sizesShadow`

// `playervtx` is not empty and its first and last ids are equal.
bool playerLoopClosed();
// Rows 1 and 3 of the shadow indices are set and row 2 is empty: a patch between a
// boundary and one stroke, whose far row is being edited.
bool boundaryEditMode();
// The first shadow row has points and closes within 0.001, or else working stroke 0 does.
bool shadowIsClosed();
// Working stroke `n` has points and closes within 0.001; false without that stroke.
bool firstStrokeClosed(int n);
// Some shadow row has points and closes within 0.0001.
bool anyShadowRowClosed();

} // namespace tq
