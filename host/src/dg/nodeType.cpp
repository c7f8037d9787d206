#include "dg/nodeType.h"

namespace host {

AttributeBody* NodeType::findAttribute(const std::string& name) const
{
    auto it = byName.find(name);
    return it == byName.end() ? nullptr : it->second;
}

bool NodeType::isA(const std::string& typeName) const
{
    for (const NodeType* t = this; t; t = t->base)
        if (t->name == typeName)
            return true;
    return false;
}

NodeTypeRegistry& NodeTypeRegistry::instance()
{
    static NodeTypeRegistry registry;
    return registry;
}

NodeType* NodeTypeRegistry::find(const std::string& name) const
{
    auto it = fByName.find(name);
    return it == fByName.end() ? nullptr : it->second;
}

NodeType* NodeTypeRegistry::find(const MTypeId& id) const
{
    auto it = fById.find(id.id());
    return it == fById.end() ? nullptr : it->second;
}

bool NodeTypeRegistry::add(std::unique_ptr<NodeType> type)
{
    if (!type || find(type->name) || (type->id.id() != 0 && find(type->id)))
        return false;
    fByName[type->name] = type.get();
    if (type->id.id() != 0)
        fById[type->id.id()] = type.get();
    fTypes.push_back(std::move(type));
    return true;
}

void NodeTypeRegistry::remove(const NodeType* type)
{
    for (auto it = fTypes.begin(); it != fTypes.end(); ++it) {
        if (it->get() != type)
            continue;
        fByName.erase(type->name);
        auto byId = fById.find(type->id.id());
        if (byId != fById.end() && byId->second == type)
            fById.erase(byId);
        // Dead nodes still refer to their type: retire it instead of destroying it.
        fRetired.push_back(std::move(*it));
        fTypes.erase(it);
        return;
    }
}

std::vector<NodeType*> NodeTypeRegistry::all() const
{
    std::vector<NodeType*> out;
    for (const auto& t : fTypes)
        out.push_back(t.get());
    return out;
}

} // namespace host
