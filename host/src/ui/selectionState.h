#pragma once
// The active selection and the option variables of the session.

#include <maya/MSelectionList.h>

#include <map>
#include <string>
#include <variant>

namespace host {

MSelectionList& activeSelection();
// Replaces the active selection and sends "SelectionChanged".
void setActiveSelection(const MSelectionList& list);

using OptionValue = std::variant<int, double, std::string>;
std::map<std::string, OptionValue>& optionVariables();

} // namespace host
