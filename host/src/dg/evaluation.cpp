#include "dg/evaluation.h"

#include "dg/access.h"
#include "dg/barrier.h"
#include "dg/dataBody.h"
#include "dg/messages.h"

#include <maya/MDataBlock.h>
#include <maya/MPlugArray.h>
#include <maya/MPxNode.h>

#include <algorithm>
#include <atomic>
#include <unordered_set>

namespace host {
namespace {

struct VisitKey {
    NodeBody* node;
    PlugKey key;
    bool operator==(const VisitKey& o) const { return node == o.node && key == o.key; }
};
struct VisitHash {
    std::size_t operator()(const VisitKey& v) const
    {
        return std::hash<const void*>()(v.node) ^ (PlugKeyHash()(v.key) << 1);
    }
};
using Visited = std::unordered_set<VisitKey, VisitHash>;

// Pulls nest through connections and computes; a deeper chain than this is a runaway. The
// bound keeps the recursion well inside the stack, sanitizer frames included: a fuzzed chain
// of connections overflowed it at the former 10000.
constexpr int kMaxPullDepth = 1000;
int gPullDepth = 0;

std::string typeName(const NodeBody* node) { return node->type->name; }

bool isComponentKey(const PlugKey& key) { return key.attr && key.attr->isNumericComponent(); }

PlugKey componentOwner(const PlugKey& key)
{
    PlugKey owner;
    parentKey(key, owner);
    return owner;
}

// Converts a source value for its destination: data is shared, numbers copied.
Value carried(const Value& source)
{
    Value v = source;
    if (v.kind == Value::Kind::kData)
        v.data = shareData(source.data);
    return v;
}

void propagate(NodeBody* node, const PlugKey& key, Visited& visited);

// Loops of in-place edits dirty the same plug over and over; one entry per run is enough.
void notePendingDirty(NodeBody* node, const PlugKey& key)
{
    if (node->pendingDirty.empty() || node->pendingDirty.back() != key)
        node->pendingDirty.push_back(key);
}

void dirtyOne(NodeBody* node, const PlugKey& key, Visited& visited)
{
    if (!node || !node->isAlive || !visited.insert({node, key}).second)
        return;
    bumpSceneStamp();
    PlugKey target = isComponentKey(key) ? componentOwner(key) : key;
    node->slot(target).dirty = true;
    notePendingDirty(node, key);
    notifyDirtyPlug(node, key);
    propagate(node, key, visited);
}

// Appends the existing plugs below `key`: the elements of an array plug and the children
// of a compound, walked down through the slots that exist, never the whole node.
void collectDescendants(NodeBody* node, const PlugKey& key, std::vector<PlugKey>& out)
{
    if (key.isArrayPlug()) {
        const PlugSlot* s = node->findSlot(key);
        if (!s)
            return;
        for (unsigned int e : s->elements) {
            PlugKey element = key;
            element.indices.push_back(e);
            out.push_back(element);
            collectDescendants(node, element, out);
        }
        return;
    }
    for (const auto& child : key.attr->children) {
        PlugKey k{child.get(), key.indices};
        if (node->findSlot(k))
            out.push_back(k);
        collectDescendants(node, k, out);
    }
}

bool isAtOrBelow(const AttributeBody* attr, const AttributeBody* ancestor)
{
    for (const AttributeBody* a = attr; a; a = a->parent)
        if (a == ancestor)
            return true;
    return false;
}

// Dirties every plug of the attribute, and everything below those plugs.
void dirtyAttribute(NodeBody* node, const AttributeBody* attr, Visited& visited)
{
    // Outside arrays the attribute's plug needs no slot to be addressed.
    if (!attr->parent || attr->parent->arrayDepth() == 0)
        dirtyOne(node, PlugKey{attr, {}}, visited);
    std::vector<PlugKey> plugs;
    collectDescendants(node, PlugKey{attr->root(), {}}, plugs);
    for (const PlugKey& k : plugs)
        if (isAtOrBelow(k.attr, attr))
            dirtyOne(node, k, visited);
}

void propagate(NodeBody* node, const PlugKey& key, Visited& visited)
{
    const NodeType* type = node->type;
    // Within the node: what this attribute and its compound ancestors affect.
    for (const AttributeBody* a = key.attr; a; a = a->parent) {
        auto it = type->affects.find(a);
        if (it == type->affects.end())
            continue;
        for (const AttributeBody* affected : it->second)
            dirtyAttribute(node, affected, visited);
    }
    // The node's own say.
    if (node->px) {
        MPlugArray extra;
        MPlug plug = Access::plug(node, key);
        MStatus st = guardedStatus(typeName(node) + ".setDependentsDirty",
                                   [&] { return node->px->setDependentsDirty(plug, extra); });
        if (st)
            for (const MPlug& p : extra)
                if (NodeBody* n = Access::plugNode(p))
                    dirtyOne(n, Access::plugKey(p), visited);
    }
    // Downstream: connections from this plug, its ancestors and its descendants.
    std::vector<PlugKey> related{key};
    for (PlugKey k = key, p; parentKey(k, p); k = p)
        related.push_back(p);
    collectDescendants(node, key, related);
    for (const PlugKey& k : related) {
        PlugSlot* s = node->findSlot(k);
        if (!s)
            continue;
        std::vector<PlugRef> destinations = s->destinations;
        for (const PlugRef& d : destinations)
            dirtyOne(d.node, d.key, visited);
    }
}

bool computing(NodeBody* node, const PlugKey& key)
{
    return std::find(node->computing.begin(), node->computing.end(), key) != node->computing.end();
}

} // namespace

bool parentKey(const PlugKey& key, PlugKey& parent)
{
    if (!key.attr)
        return false;
    if (key.isElement()) {
        parent.attr = key.attr;
        parent.indices.assign(key.indices.begin(), key.indices.end() - 1);
        return true;
    }
    if (!key.attr->parent)
        return false;
    parent.attr = key.attr->parent;
    std::size_t depth = std::size_t(parent.attr->arrayDepth());
    parent.indices.assign(key.indices.begin(), key.indices.begin() + std::min(depth, key.indices.size()));
    return true;
}

MObject shareData(const MObject& data)
{
    auto body = Access::as<DataBody>(data);
    if (!body)
        return data;
    return Access::object(body->share());
}

Storage storageFor(NodeBody* node, const PlugKey& key)
{
    if (isComponentKey(key)) {
        Storage owner = storageFor(node, componentOwner(key));
        owner.component = key.attr->childIndex;
        return owner;
    }
    PlugSlot& s = node->slot(key);
    if (!s.hasValue) {
        s.value = key.attr->defaultValue;
        if (s.value.kind == Value::Kind::kData)
            s.value.data = shareData(s.value.data);
        s.hasValue = true;
    }
    return Storage{&s.value, -1};
}

Storage pull(NodeBody* node, const PlugKey& key, MStatus* status)
{
    if (status)
        *status = MStatus::kSuccess;
    if (!node || !node->isAlive || !key.attr) {
        if (status)
            *status = MStatus::kInvalidParameter;
        return Storage{};
    }
    if (gPullDepth > kMaxPullDepth) {
        if (status)
            *status = MStatus::kFailure;
        return storageFor(node, key);
    }
    ++gPullDepth;
    struct DepthGuard {
        ~DepthGuard() { --gPullDepth; }
    } guard;

    if (isComponentKey(key)) {
        PlugSlot* own = node->findSlot(key);
        if (own && own->hasSource && own->source.node && own->source.node->isAlive) {
            Storage src = pull(own->source.node, own->source.key, status);
            Storage mine = storageFor(node, key);
            if (src.value)
                mine.value->num[mine.component] =
                    src.component >= 0 ? src.value->num[src.component] : src.value->num[0];
            own->dirty = false;
            return mine;
        }
        Storage owner = pull(node, componentOwner(key), status);
        owner.component = key.attr->childIndex;
        return owner;
    }

    PlugSlot& s = node->slot(key);
    if (s.hasSource && s.source.node && s.source.node->isAlive) {
        if (s.dirty || !s.hasValue) {
            Storage src = pull(s.source.node, s.source.key, status);
            Value incoming;
            if (src.value) {
                if (src.component >= 0)
                    incoming = Value::numeric(src.value->num[src.component]);
                else
                    incoming = carried(*src.value);
            }
            PlugSlot& again = node->slot(key); // a compute upstream may have added slots
            again.value = incoming;
            again.hasValue = true;
            again.dirty = false;
        }
        PlugSlot& again = node->slot(key);
        return Storage{&again.value, -1};
    }

    if (!isClean(node, key) && node->px && !computing(node, key)) {
        node->computing.push_back(key);
        MPlug plug = Access::plug(node, key);
        MDataBlock block = Access::dataBlock(node);
        MStatus st = guardedStatus(typeName(node) + ".compute", [&] { return node->px->compute(plug, block); });
        node->computing.erase(std::find(node->computing.begin(), node->computing.end(), key));
        if (status && st != MStatus::kUnknownParameter)
            *status = st;
    }
    return storageFor(node, key);
}

Value readValue(NodeBody* node, const PlugKey& key, MStatus* status)
{
    Storage s = pull(node, key, status);
    if (!s.value)
        return Value{};
    if (s.component >= 0)
        return Value::numeric(s.value->num[s.component]);
    return carried(*s.value);
}

MStatus writeValue(NodeBody* node, const PlugKey& key, const Value& value)
{
    if (!node || !node->isAlive || !key.attr)
        return MStatus::kInvalidParameter;
    if (isComponentKey(key))
        return writeComponent(node, key, key.attr->childIndex, value.num[0]);
    PlugSlot& s = node->slot(key);
    s.value = carried(value);
    s.hasValue = true;
    s.dirty = false;
    valueChangedInPlace(node, key);
    return MStatus::kSuccess;
}

MStatus writeComponent(NodeBody* node, const PlugKey& key, int component, double value)
{
    if (!node || !node->isAlive || !key.attr)
        return MStatus::kInvalidParameter;
    PlugKey owner = isComponentKey(key) ? componentOwner(key) : key;
    Storage s = storageFor(node, owner);
    if (component < 0 || component > 3)
        return MStatus::kInvalidParameter;
    s.value->kind = Value::Kind::kNumeric;
    s.value->num[component] = value;
    node->slot(owner).dirty = false;
    valueChangedInPlace(node, key);
    return MStatus::kSuccess;
}

void valueChangedInPlace(NodeBody* node, const PlugKey& key)
{
    bumpSceneStamp();
    Visited visited;
    visited.insert({node, key});
    PlugKey target = isComponentKey(key) ? componentOwner(key) : key;
    node->slot(target).dirty = false;
    notePendingDirty(node, key);
    propagate(node, key, visited);
    notifyAttributeChanged(node, MNodeMessage::kAttributeSet, key, nullptr, nullptr);
}

void markDirty(NodeBody* node, const PlugKey& key)
{
    Visited visited;
    dirtyOne(node, key, visited);
}

void setClean(NodeBody* node, const PlugKey& key)
{
    if (!node)
        return;
    PlugKey target = isComponentKey(key) ? componentOwner(key) : key;
    node->slot(target).dirty = false;
}

bool isClean(NodeBody* node, const PlugKey& key)
{
    if (!node)
        return false;
    // A plug is dirty when it, or the array or compound plug it belongs to, is dirty.
    for (PlugKey k = isComponentKey(key) ? componentOwner(key) : key, p;; k = p) {
        const PlugSlot* s = node->findSlot(k);
        if (s && s->dirty)
            return false;
        if (!parentKey(k, p))
            return true;
    }
}

namespace {
std::atomic<std::uint64_t> gSceneStamp{0};
} // namespace

std::uint64_t sceneStamp() { return gSceneStamp.load(std::memory_order_relaxed); }

void bumpSceneStamp() { gSceneStamp.fetch_add(1, std::memory_order_relaxed); }

MStatus connectPlugs(const PlugRef& source, const PlugRef& destination, bool force, std::string* error)
{
    bumpSceneStamp();
    auto fail = [&](MStatus::MStatusCode code, const std::string& why) {
        if (error)
            *error = why;
        return MStatus(code);
    };
    if (!source.node || !destination.node || !source.node->isAlive || !destination.node->isAlive ||
        !source.key.attr || !destination.key.attr)
        return fail(MStatus::kInvalidParameter, "a plug of the connection does not exist");
    const std::string srcName = plugName(source.node, source.key);
    const std::string dstName = plugName(destination.node, destination.key);
    if (source.node == destination.node && source.key == destination.key)
        return fail(MStatus::kInvalidParameter, "cannot connect " + srcName + " to itself");
    const AttrFlags& sf = source.key.attr->flags;
    const AttrFlags& df = destination.key.attr->flags;
    if (!sf.connectable || !sf.readable)
        return fail(MStatus::kInvalidParameter, srcName + " cannot be a connection source");
    if (!df.connectable || !df.writable)
        return fail(MStatus::kInvalidParameter, dstName + " cannot be a connection destination");
    const bool srcMessage = source.key.attr->kind == AttrKind::kMessage;
    const bool dstMessage = destination.key.attr->kind == AttrKind::kMessage;
    if (dstMessage && !srcMessage)
        return fail(MStatus::kInvalidParameter, "only a message can connect to " + dstName);

    PlugSlot& dst = destination.node->slot(destination.key);
    if (dst.hasSource) {
        if (dst.source == source)
            return fail(MStatus::kFailure, srcName + " is already connected to " + dstName);
        if (!force)
            return fail(MStatus::kFailure, dstName + " already has an incoming connection from " +
                                               plugName(dst.source.node, dst.source.key));
        PlugRef old = dst.source;
        disconnectPlugs(old, destination, nullptr);
    }
    PlugSlot& d = destination.node->slot(destination.key);
    d.hasSource = true;
    d.source = source;
    source.node->slot(source.key).destinations.push_back(destination);

    MPlug srcPlug = Access::plug(source.node, source.key);
    MPlug dstPlug = Access::plug(destination.node, destination.key);
    if (source.node->px)
        guardedStatus(typeName(source.node) + ".connectionMade",
                      [&] { return source.node->px->connectionMade(srcPlug, dstPlug, true); });
    if (destination.node->px)
        guardedStatus(typeName(destination.node) + ".connectionMade",
                      [&] { return destination.node->px->connectionMade(dstPlug, srcPlug, false); });
    markDirty(destination.node, destination.key);
    notifyAttributeChanged(source.node, MNodeMessage::kConnectionMade, source.key, destination.node,
                           &destination.key);
    notifyAttributeChanged(destination.node,
                           MNodeMessage::AttributeMessage(MNodeMessage::kConnectionMade |
                                                          MNodeMessage::kIncomingDirection),
                           destination.key, source.node, &source.key);
    return MStatus::kSuccess;
}

MStatus disconnectPlugs(const PlugRef& source, const PlugRef& destination, std::string* error)
{
    bumpSceneStamp();
    if (!source.node || !destination.node) {
        if (error)
            *error = "a plug of the connection does not exist";
        return MStatus::kInvalidParameter;
    }
    PlugSlot* d = destination.node->findSlot(destination.key);
    if (!d || !d->hasSource || !(d->source == source)) {
        if (error)
            *error = plugName(source.node, source.key) + " is not connected to " +
                     plugName(destination.node, destination.key);
        return MStatus::kFailure;
    }
    d->hasSource = false;
    d->source = PlugRef{};
    if (PlugSlot* s = source.node->findSlot(source.key)) {
        auto& v = s->destinations;
        v.erase(std::remove(v.begin(), v.end(), destination), v.end());
    }
    MPlug srcPlug = Access::plug(source.node, source.key);
    MPlug dstPlug = Access::plug(destination.node, destination.key);
    if (source.node->isAlive && source.node->px)
        guardedStatus(typeName(source.node) + ".connectionBroken",
                      [&] { return source.node->px->connectionBroken(srcPlug, dstPlug, true); });
    if (destination.node->isAlive && destination.node->px)
        guardedStatus(typeName(destination.node) + ".connectionBroken",
                      [&] { return destination.node->px->connectionBroken(dstPlug, srcPlug, false); });
    // The destination keeps the value it last had, so nothing downstream changes.
    notifyAttributeChanged(source.node, MNodeMessage::kConnectionBroken, source.key, destination.node,
                           &destination.key);
    notifyAttributeChanged(destination.node,
                           MNodeMessage::AttributeMessage(MNodeMessage::kConnectionBroken |
                                                          MNodeMessage::kIncomingDirection),
                           destination.key, source.node, &source.key);
    return MStatus::kSuccess;
}

std::vector<std::pair<PlugRef, PlugRef>> connectionsOf(NodeBody* node)
{
    std::vector<std::pair<PlugRef, PlugRef>> out;
    for (auto& entry : node->slots) {
        if (entry.second.hasSource)
            out.emplace_back(entry.second.source, PlugRef{node, entry.first});
        for (const PlugRef& d : entry.second.destinations)
            if (d.node != node) // a connection within the node is listed once, as incoming
                out.emplace_back(PlugRef{node, entry.first}, d);
    }
    return out;
}

std::string plugName(const NodeBody* node, const PlugKey& key, bool longNames)
{
    std::vector<const AttributeBody*> chain;
    for (const AttributeBody* a = key.attr; a; a = a->parent)
        chain.push_back(a);
    std::string out = node ? node->name : std::string();
    std::size_t next = 0;
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        const AttributeBody* a = *it;
        // Compound ancestors are named only where an array index has to be placed.
        if (a != key.attr && a->arrayDepth() == 0)
            continue;
        out += '.';
        out += longNames ? a->longName : a->shortName;
        if (a->flags.array && next < key.indices.size())
            out += "[" + std::to_string(key.indices[next++]) + "]";
    }
    return out;
}

} // namespace host
