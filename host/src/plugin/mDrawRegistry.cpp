#include <maya/MDrawRegistry.h>

#include "draw/drawOverrides.h"
#include "plugin/pluginRegistry.h"

#include "host/log.h"

#include <algorithm>

namespace MHWRender {

MStatus MDrawRegistry::registerDrawOverrideCreator(const MString& drawClassification, const MString& registrantId,
                                                   DrawOverrideCreator creator)
{
    auto& registry = host::PluginRegistry::instance();
    if (!creator || drawClassification.length() == 0)
        return MStatus::kInvalidParameter;
    for (const auto& d : registry.drawOverrides)
        if (d.classification == drawClassification.asChar() && d.registrantId == registrantId.asChar()) {
            host::writeLog(host::LogLevel::kError, "A draw override for '" + d.classification + "' by '" +
                                                       d.registrantId + "' is already registered");
            return MStatus::kFailure;
        }
    host::DrawOverrideRecord r;
    r.classification = drawClassification.asChar();
    r.registrantId = registrantId.asChar();
    r.creator = reinterpret_cast<void*>(creator);
    if (registry.active) {
        r.plugin = registry.active->name;
        registry.active->drawOverrides.push_back(r.classification + "|" + r.registrantId);
    }
    registry.drawOverrides.push_back(r);
    return MStatus::kSuccess;
}

MStatus MDrawRegistry::deregisterDrawOverrideCreator(const MString& drawClassification, const MString& registrantId)
{
    auto& registry = host::PluginRegistry::instance();
    auto& list = registry.drawOverrides;
    for (auto it = list.begin(); it != list.end(); ++it) {
        if (it->classification != drawClassification.asChar() || it->registrantId != registrantId.asChar())
            continue;
        // The overrides it made go now, while the plug-in's code is still loaded.
        host::releaseDrawOverrides(it->classification, it->registrantId);
        if (host::PluginRecord* p = registry.find(it->plugin)) {
            auto& names = p->drawOverrides;
            names.erase(std::remove(names.begin(), names.end(), it->classification + "|" + it->registrantId),
                        names.end());
        }
        list.erase(it);
        return MStatus::kSuccess;
    }
    return MStatus::kInvalidParameter;
}

} // namespace MHWRender
