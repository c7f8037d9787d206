#include "ui/selectionState.h"

#include "dg/messages.h"

namespace host {

MSelectionList& activeSelection()
{
    static MSelectionList list;
    return list;
}

void setActiveSelection(const MSelectionList& list)
{
    activeSelection() = list;
    sendEvent("SelectionChanged");
}

std::map<std::string, OptionValue>& optionVariables()
{
    static std::map<std::string, OptionValue> vars;
    return vars;
}

} // namespace host
