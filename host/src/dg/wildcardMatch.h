#pragma once
// Name patterns as ls, select and MSelectionList::add take them: '*' stands for any run of
// characters (none included), '?' for exactly one, everything else for itself.

#include <string_view>

namespace host {

// Whether the whole of `name` matches `pattern`. Linear in the length of the name (plus the
// pattern's): the stars split the pattern into pieces that are found leftmost in turn, each
// by one bit-parallel scan, so no input makes it backtrack.
bool wildcardMatch(std::string_view pattern, std::string_view name);

} // namespace host
