#include "plugin/pluginRegistry.h"

#include <algorithm>

namespace host {

PluginRegistry& PluginRegistry::instance()
{
    static PluginRegistry registry;
    return registry;
}

PluginRecord* PluginRegistry::find(const std::string& name)
{
    for (auto& p : fPlugins)
        if (p->name == name)
            return p.get();
    return nullptr;
}

PluginRecord* PluginRegistry::add(const std::string& name)
{
    auto record = std::make_unique<PluginRecord>();
    record->name = name;
    record->body = std::make_shared<PluginBody>(record.get());
    fPlugins.push_back(std::move(record));
    return fPlugins.back().get();
}

void PluginRegistry::remove(const std::string& name)
{
    fPlugins.erase(std::remove_if(fPlugins.begin(), fPlugins.end(),
                                  [&](const std::unique_ptr<PluginRecord>& p) { return p->name == name; }),
                   fPlugins.end());
}

std::vector<std::string> PluginRegistry::names() const
{
    std::vector<std::string> out;
    for (const auto& p : fPlugins)
        out.push_back(p->name);
    return out;
}

} // namespace host
