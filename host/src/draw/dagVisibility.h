#pragma once
// Which DAG nodes a viewport shows: a live shape (or other non-transform DAG node) that is
// no intermediate object, with visibility on for it and every transform above it.

#include "dg/nodeBody.h"

namespace host {

bool shownInViewport(NodeBody* node);

} // namespace host
