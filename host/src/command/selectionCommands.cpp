// Built-in commands on the selection: select, sets (edit mode), changeSelectMode.

#include "command/builtinArgs.h"

#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/plugNames.h"
#include "dg/scene.h"

#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <algorithm>

namespace host {
namespace {

MStatus selectCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"r", "replace", 0},
                        {"add", "add", 0},
                        {"af", "addFirst", 0},
                        {"d", "deselect", 0},
                        {"tgl", "toggle", 0},
                        {"cl", "clear", 0},
                        {"ne", "noExpand", 0}}))
        return MStatus::kInvalidParameter;
    int modes = int(a.has("add")) + int(a.has("addFirst")) + int(a.has("deselect")) + int(a.has("toggle")) +
                int(a.has("replace"));
    if (modes > 1)
        return commandError(call, "use only one of -replace, -add, -addFirst, -deselect and -toggle");
    if (a.has("clear")) {
        changeSelection(MSelectionList());
        return MStatus::kSuccess;
    }
    MSelectionList items;
    for (const std::string& name : a.operandTexts())
        if (!items.add(MString(name.c_str())))
            return commandError(call, "No object matches name: " + name);
    MSelectionList next;
    MGlobal::getActiveSelectionList(next);
    if (a.has("add")) {
        next.merge(items);
    } else if (a.has("addFirst")) {
        MSelectionList head = items;
        head.merge(next);
        next = head;
    } else if (a.has("deselect")) {
        next.merge(items, MSelectionList::kRemoveFromList);
    } else if (a.has("toggle")) {
        next.merge(items, MSelectionList::kXORWithList);
    } else {
        next = items;
    }
    changeSelection(next);
    return MStatus::kSuccess;
}

// The set's members are the nodes whose message plug feeds an element of its dagSetMembers.
bool memberIndex(NodeBody* set, NodeBody* item, unsigned& index)
{
    MPlug message;
    if (!parsePlug(nodePathName(item) + ".message", message, nullptr))
        return false;
    MPlugArray destinations;
    message.destinations(destinations);
    for (unsigned i = 0; i < destinations.length(); ++i) {
        const AttributeBody* attr = Access::plugKey(destinations[i]).attr;
        if (Access::plugNode(destinations[i]) == set && destinations[i].isElement() && attr &&
            attr->longName == "dagSetMembers") {
            index = destinations[i].logicalIndex();
            return true;
        }
    }
    return false;
}

MStatus setsCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"e", "edit", 0}, {"fe", "forceElement", 1}, {"add", "addElement", 1}, {"rm", "remove", 1}}))
        return MStatus::kInvalidParameter;
    const char* which = a.has("forceElement") ? "forceElement" : (a.has("addElement") ? "addElement" : "remove");
    if (!a.has("edit") || int(a.has("forceElement")) + int(a.has("addElement")) + int(a.has("remove")) != 1)
        return commandError(call, "only the edit form with one of -forceElement, -addElement or -remove is "
                                  "supported",
                            MStatus::kNotImplemented);
    std::string setName = a.text(which);
    NodeBody* set = findNodeByPath(setName);
    if (!set)
        return commandError(call, "No object matches name: " + setName);
    if (!set->type->isA("objectSet"))
        return commandError(call, "'" + setName + "' is not a set");
    std::vector<std::string> names = a.operandTexts();
    if (names.empty()) {
        MSelectionList active;
        MStringArray selected;
        MGlobal::getActiveSelectionList(active);
        active.getSelectionStrings(selected);
        for (unsigned i = 0; i < selected.length(); ++i)
            names.push_back(selected[i].asChar());
    }
    std::vector<NodeBody*> items;
    for (const std::string& name : names) {
        if (name.find('.') != std::string::npos)
            return commandError(call, "components and attributes cannot be set members here: " + name,
                                MStatus::kNotImplemented);
        NodeBody* n = findNodeByPath(name);
        if (!n)
            return commandError(call, "No object matches name: " + name);
        items.push_back(n);
    }
    bool adding = std::string(which) != "remove";
    NodePtr keepSet = Scene::current().shared(set);
    for (NodeBody* item : items) {
        unsigned index = 0;
        bool member = memberIndex(set, item, index);
        if (member == adding)
            continue;
        if (adding) {
            MPlug members;
            parsePlug(set->name + ".dagSetMembers", members, nullptr);
            MIntArray used;
            members.getExistingArrayAttributeIndices(used);
            for (unsigned i = 0; i < used.length(); ++i)
                index = std::max(index, unsigned(used[i]) + 1);
        }
        MPlug source, destination;
        if (!parsePlug(nodePathName(item) + ".message", source, nullptr) ||
            !parsePlug(set->name + ".dagSetMembers[" + std::to_string(index) + "]", destination, nullptr))
            return commandError(call, "'" + item->name + "' cannot be a member of a set");
        PlugRef s = Access::plugRef(source), d = Access::plugRef(destination);
        std::string error;
        MStatus st = adding ? connectPlugs(s, d, false, &error) : disconnectPlugs(s, d, &error);
        if (!st)
            return commandError(call, error, st.statusCode());
        NodePtr keepItem = Scene::current().shared(item);
        auto link = [s, d, keepSet, keepItem] { connectPlugs(s, d, false, nullptr); };
        auto unlink = [s, d, keepSet, keepItem] { disconnectPlugs(s, d, nullptr); };
        if (adding)
            recordUndo(unlink, link);
        else
            recordUndo(link, unlink);
    }
    return MStatus::kSuccess;
}

MStatus changeSelectModeCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"o", "object", 0},
                        {"co", "component", 0},
                        {"h", "hierarchical", 0},
                        {"t", "template", 0},
                        {"pr", "preset", 0},
                        {"q", "query", 0}}))
        return MStatus::kInvalidParameter;
    struct Mode {
        const char* flag;
        MGlobal::MSelectionMode mode;
    };
    static const Mode modes[] = {{"object", MGlobal::kSelectObjectMode},
                                 {"component", MGlobal::kSelectComponentMode},
                                 {"hierarchical", MGlobal::kSelectRootMode},
                                 {"template", MGlobal::kSelectTemplateMode},
                                 {"preset", MGlobal::kSelectObjectMode}};
    MGlobal::MSelectionMode current = MGlobal::selectionMode();
    const Mode* asked = nullptr;
    for (const Mode& m : modes)
        if (a.has(m.flag)) {
            if (asked)
                return commandError(call, "give one selection mode");
            asked = &m;
        }
    if (a.has("query")) {
        if (asked) {
            result = CommandValue::ofInt(current == asked->mode ? 1 : 0);
        } else {
            for (const Mode& m : modes)
                if (m.mode == current) {
                    result = CommandValue::ofString(m.flag);
                    break;
                }
        }
        return MStatus::kSuccess;
    }
    if (!asked)
        return commandError(call, "needs a selection mode flag (-object, -component, ...)");
    return MGlobal::setSelectionMode(asked->mode);
}

struct Registrar {
    Registrar()
    {
        registerBuiltinCommand("select", selectCommand);
        registerBuiltinCommand("sets", setsCommand);
        registerBuiltinCommand("changeSelectMode", changeSelectModeCommand);
    }
} gRegistrar;

} // namespace
} // namespace host
