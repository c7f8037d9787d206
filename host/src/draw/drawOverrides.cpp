#include "draw/drawOverrides.h"

#include "dg/access.h"
#include "dg/barrier.h"
#include "dg/evaluation.h"
#include "dg/scene.h"
#include "draw/dagVisibility.h"
#include "draw/drawAccess.h"
#include "draw/frameState.h"
#include "plugin/pluginRegistry.h"
#include "view/cameraNode.h"
#include "view/views.h"

#include "host/log.h"

#include <maya/MDGContext.h>
#include <maya/MDrawRegistry.h>
#include <maya/MEvaluationNode.h>
#include <maya/MPxDrawOverride.h>
#include <maya/MPxNode.h>
#include <maya/MUserData.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

namespace host {
namespace {

using OverrideCreator = MHWRender::MDrawRegistry::DrawOverrideCreator;

struct Entry {
    std::weak_ptr<NodeBody> node;
    const NodeBody* identity = nullptr;
    std::string classification;
    std::string registrantId;
    void* creator = nullptr;
    std::string label; // the node's path when the override was made, for log lines
    MHWRender::MPxDrawOverride* override = nullptr;
    MUserData* data = nullptr;
    std::set<unsigned int> upToDate; // views whose retained records are current
    std::map<unsigned int, std::vector<DrawRecord>> retained;
};

struct Cache {
    std::vector<std::unique_ptr<Entry>> entries;
    // Overrides whose plug-in was unloaded while they lived: their code is gone, so they
    // can be neither used nor destroyed. Kept reachable on purpose.
    std::vector<const void*> abandoned;
};

Cache& cache()
{
    static Cache* c = new Cache(); // lives for the process: overrides may outlive static destruction
    return *c;
}

void deleteData(Entry& e)
{
    if (!e.data)
        return;
    MUserData* data = e.data;
    e.data = nullptr;
    guardedVoid(e.label + " draw override user data destructor", [&] { delete data; });
}

void destroy(Entry& e)
{
    deleteData(e);
    if (e.override) {
        MHWRender::MPxDrawOverride* o = e.override;
        e.override = nullptr;
        guardedVoid(e.label + " draw override destructor", [&] { delete o; });
    }
}

bool registered(const Entry& e)
{
    for (const DrawOverrideRecord& r : PluginRegistry::instance().drawOverrides)
        if (r.creator == e.creator && r.classification == e.classification && r.registrantId == e.registrantId)
            return true;
    return false;
}

// Drops the entries of nodes that are gone and of registrations removed behind our back.
void sweep()
{
    auto& entries = cache().entries;
    for (auto& e : entries) {
        auto node = e->node.lock();
        if (!registered(*e)) {
            if (e->override) {
                writeLog(LogLevel::kWarning, "The draw override of " + e->label + " ('" + e->classification +
                                                 "') lost its registration without being deregistered; it is "
                                                 "abandoned, not destroyed");
                cache().abandoned.push_back(e->override);
                cache().abandoned.push_back(e->data); // made by the same code
                e->override = nullptr;
                e->data = nullptr;
            }
            e.reset();
        } else if (!node || !node->isAlive) {
            destroy(*e);
            e.reset();
        }
    }
    entries.erase(std::remove(entries.begin(), entries.end(), nullptr), entries.end());
}

// True when one of the node type's classifications (separated by ':') is the override's
// classification or lies below it.
bool classifiedAs(const std::string& nodeClassification, const std::string& drawClassification)
{
    std::size_t start = 0;
    while (start <= nodeClassification.size()) {
        std::size_t end = nodeClassification.find(':', start);
        if (end == std::string::npos)
            end = nodeClassification.size();
        const std::string part = nodeClassification.substr(start, end - start);
        if (part == drawClassification ||
            (part.size() > drawClassification.size() && part.compare(0, drawClassification.size(),
                                                                       drawClassification) == 0 &&
             part[drawClassification.size()] == '/'))
            return true;
        start = end + 1;
    }
    return false;
}

const DrawOverrideRecord* registrationFor(const NodeType* type)
{
    if (type->classification.empty())
        return nullptr;
    for (const DrawOverrideRecord& r : PluginRegistry::instance().drawOverrides)
        if (r.creator && classifiedAs(type->classification, r.classification))
            return &r;
    return nullptr;
}

void runPreEvaluation()
{
    std::vector<std::pair<NodePtr, std::vector<PlugKey>>> pending;
    for (const NodePtr& node : Scene::current().nodes()) {
        if (node->pendingDirty.empty())
            continue;
        std::vector<PlugKey> keys;
        keys.swap(node->pendingDirty);
        if (!node->isAlive || !node->px || node->type->pluginName.empty())
            continue;
        std::vector<PlugKey> unique;
        for (PlugKey& k : keys)
            if (std::find(unique.begin(), unique.end(), k) == unique.end())
                unique.push_back(std::move(k));
        pending.emplace_back(node, std::move(unique));
    }
    // Plugs these calls dirty belong to the next frame.
    for (auto& [node, keys] : pending) {
        if (!node->isAlive || !node->px)
            continue;
        const MEvaluationNode evaluation = Access::evaluationNode(node.get(), keys);
        MPxNode* px = node->px.get();
        guardedStatus(node->type->name + ".preEvaluation",
                      [&] { return px->preEvaluation(MDGContext::fsNormal, evaluation); });
    }
}

Entry* entryFor(NodeBody* node, const DrawOverrideRecord& reg)
{
    auto& entries = cache().entries;
    for (auto& e : entries) {
        if (e->identity != node)
            continue;
        if (e->creator == reg.creator && e->classification == reg.classification &&
            e->registrantId == reg.registrantId)
            return e.get();
        destroy(*e); // the node is now drawn by another registration
        e.reset();
    }
    entries.erase(std::remove(entries.begin(), entries.end(), nullptr), entries.end());

    auto e = std::make_unique<Entry>();
    e->node = Scene::current().shared(node);
    e->identity = node;
    e->classification = reg.classification;
    e->registrantId = reg.registrantId;
    e->creator = reg.creator;
    e->label = Access::pathTo(node).fullPathName().asChar();
    const MObject object = Access::object(Scene::current().shared(node));
    auto creator = reinterpret_cast<OverrideCreator>(reg.creator);
    e->override = guarded<MHWRender::MPxDrawOverride*>(reg.classification + " draw override creator", nullptr,
                                                         [&] { return creator(object); });
    if (!e->override)
        writeLog(LogLevel::kWarning, "The draw override creator for '" + reg.classification + "' made nothing for " +
                                         e->label + "; it is not drawn");
    entries.push_back(std::move(e));
    return entries.back().get();
}

// prepareForDraw and addUIDrawables; the records become the view's retained drawables.
void update(Entry& e, NodeBody* node, unsigned int viewId, const MHWRender::MFrameContext& context)
{
    MHWRender::MPxDrawOverride* o = e.override;
    const MDagPath objPath = Access::pathTo(node);
    const View* view = findView(viewId);
    const MDagPath cameraPath = view ? Access::pathTo(view->camera.get()) : MDagPath();
    MUserData* old = e.data;
    MUserData* made = guarded<MUserData*>(e.label + " prepareForDraw", old,
                                          [&] { return o->prepareForDraw(objPath, cameraPath, context, old); });
    if (made != old)
        deleteData(e);
    e.data = made;
    std::vector<DrawRecord> records;
    if (guarded(e.label + " hasUIDrawables", false, [&] { return o->hasUIDrawables(); })) {
        DrawManagerPtr manager = DrawAccess::makeManager(e.label);
        const MUserData* data = e.data;
        guardedVoid(e.label + " addUIDrawables", [&] { o->addUIDrawables(objPath, *manager, context, data); });
        records = std::move(DrawAccess::recorder(*manager).records);
    }
    if (e.data && e.data->deleteAfterUse())
        deleteData(e);
    e.retained[viewId] = std::move(records);
    e.upToDate.insert(viewId);
}

} // namespace

FrameRecords drawFrameOf(unsigned int viewId)
{
    ensureCameraType();
    FrameRecords frame;
    frame.view = findView(viewId) ? viewId : 0;
    runPreEvaluation();
    sweep();
    HostFrameContext context(frame.view);
    const std::vector<NodePtr> nodes = Scene::current().nodes(); // overrides may create or delete nodes
    for (const NodePtr& node : nodes) {
        if (!shownInViewport(node.get()))
            continue;
        const DrawOverrideRecord* reg = registrationFor(node->type);
        if (!reg)
            continue;
        Entry* e = entryFor(node.get(), *reg);
        if (!e->override)
            continue;
        OverrideRecords out;
        out.node = e->label = Access::pathTo(node.get()).fullPathName().asChar();
        const bool stale = DrawAccess::alwaysDirty(*e->override) || !e->upToDate.count(frame.view);
        if (stale)
            update(*e, node.get(), frame.view, context);
        out.updated = stale;
        out.records = e->retained[frame.view];
        frame.overrides.push_back(std::move(out));
    }
    const View* active = activeViewState();
    if (!active || active->id == frame.view)
        frame.feedback = feedbackRecords();
    return frame;
}

void markDrawDirty(NodeBody* node)
{
    for (auto& e : cache().entries)
        if (e && e->identity == node)
            e->upToDate.clear();
}

void releaseDrawOverrides(const std::string& classification, const std::string& registrantId)
{
    auto& entries = cache().entries;
    for (auto& e : entries)
        if (e->classification == classification && e->registrantId == registrantId) {
            destroy(*e);
            e.reset();
        }
    entries.erase(std::remove(entries.begin(), entries.end(), nullptr), entries.end());
}

} // namespace host
