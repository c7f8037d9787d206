#include <maya/MSelectionList.h>

#include "dg/access.h"
#include "dg/componentBody.h"
#include "dg/plugNames.h"
#include "dg/scene.h"
#include "dg/wildcardMatch.h"

#include "host/log.h"

#include <algorithm>

using host::Access;
using host::NodeBody;

namespace {

std::string componentText(const MObject& component)
{
    auto body = Access::as<host::ComponentBody>(component);
    if (!body)
        return std::string();
    const char* kind = component.apiType() == MFn::kMeshVertComponent ? "vtx"
                       : component.apiType() == MFn::kMeshEdgeComponent ? "e"
                                                                        : "f";
    if (body->complete)
        return std::string(".") + kind + "[*]";
    std::string out;
    const auto& e = body->elements;
    for (std::size_t i = 0; i < e.size();) {
        std::size_t j = i;
        while (j + 1 < e.size() && e[j + 1] == e[j] + 1)
            ++j;
        out += std::string(" .") + kind + "[" + std::to_string(e[i]) +
               (j > i ? ":" + std::to_string(e[j]) : std::string()) + "]";
        i = j + 1;
    }
    return out;
}

} // namespace

MSelectionList::MSelectionList() = default;
MSelectionList::MSelectionList(const MSelectionList& src) = default;
MSelectionList::~MSelectionList() = default;
MSelectionList& MSelectionList::operator=(const MSelectionList& other) = default;

MStatus MSelectionList::clear()
{
    fItems.clear();
    return MStatus::kSuccess;
}

bool MSelectionList::isEmpty(MStatus* ReturnStatus) const { return length(ReturnStatus) == 0; }

unsigned int MSelectionList::length(MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    return static_cast<unsigned int>(fItems.size());
}

MStatus MSelectionList::getDependNode(unsigned int index, MObject& depNode) const
{
    if (index >= fItems.size())
        return MStatus::kInvalidParameter;
    const Item& it = fItems[index];
    depNode = it.kind == 0 ? it.node : it.kind == 1 ? it.path.node() : it.plug.node();
    if (!Access::node(depNode)) {
        depNode = MObject();
        return MStatus::kInvalidParameter; // deleted since it was selected
    }
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& dagPath, MObject& component) const
{
    if (index >= fItems.size() || fItems[index].kind != 1 || !fItems[index].path.isValid())
        return MStatus::kInvalidParameter;
    dagPath = fItems[index].path;
    component = fItems[index].component;
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& dagPath) const
{
    MObject component;
    return getDagPath(index, dagPath, component);
}

MStatus MSelectionList::getPlug(unsigned int index, MPlug& plug) const
{
    if (index >= fItems.size() || fItems[index].kind != 2)
        return MStatus::kInvalidParameter;
    plug = fItems[index].plug;
    return MStatus::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(MStringArray& array) const
{
    array.clear();
    for (unsigned int i = 0; i < fItems.size(); ++i) {
        MStringArray one;
        getSelectionStrings(i, one);
        for (unsigned int k = 0; k < one.length(); ++k)
            array.append(one[k]);
    }
    return MStatus::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(unsigned int index, MStringArray& array) const
{
    array.clear();
    if (index >= fItems.size())
        return MStatus::kInvalidParameter;
    const Item& it = fItems[index];
    if (it.kind == 0) {
        if (NodeBody* n = Access::node(it.node))
            array.append(MString(n->name.c_str()));
    } else if (it.kind == 1) {
        std::string base = it.path.partialPathName().asChar();
        if (it.component.isNull()) {
            array.append(MString(base.c_str()));
        } else {
            std::string parts = componentText(it.component);
            for (std::size_t start = 1; start < parts.size();) {
                std::size_t end = parts.find(' ', start);
                array.append(MString((base + parts.substr(start, end == std::string::npos ? end : end - start)).c_str()));
                start = end == std::string::npos ? parts.size() : end + 1;
            }
        }
    } else {
        array.append(it.plug.name());
    }
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MString& matchString, bool)
{
    std::string text = matchString.asChar();
    if (text.empty())
        return MStatus::kInvalidParameter;
    MDagPath path;
    MObject component;
    std::string error;
    if (host::parseComponent(text, path, component, &error))
        return add(path, component, true);
    if (!error.empty()) {
        host::writeLog(host::LogLevel::kError, error);
        return MStatus::kInvalidParameter;
    }
    if (text.find('.') != std::string::npos) {
        MPlug plug;
        if (!host::parsePlug(text, plug, &error)) {
            host::writeLog(host::LogLevel::kError, error);
            return MStatus::kInvalidParameter;
        }
        return add(plug, true);
    }
    std::vector<NodeBody*> matches;
    if (text.find_first_of("*?") != std::string::npos) {
        for (const host::NodePtr& n : host::Scene::current().nodes())
            if (host::wildcardMatch(text, n->name))
                matches.push_back(n.get());
    } else if (NodeBody* n = host::findNodeByPath(text)) {
        matches.push_back(n);
    }
    if (matches.empty()) {
        host::writeLog(host::LogLevel::kError, "No object matches name: " + text);
        return MStatus::kInvalidParameter;
    }
    for (NodeBody* n : matches) {
        MObject o = Access::object(n->shared_from_this());
        if (n->type->isDag)
            add(Access::pathTo(n), MObject::kNullObj, true);
        else
            add(o, true);
    }
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MObject& object, bool mergeWithExisting)
{
    NodeBody* n = Access::node(object);
    if (!n)
        return MStatus::kInvalidParameter;
    if (n->type->isDag)
        return add(Access::pathTo(n), MObject::kNullObj, mergeWithExisting);
    if (mergeWithExisting && hasItem(object))
        return MStatus::kSuccess;
    Item it;
    it.node = object;
    it.kind = 0;
    fItems.push_back(it);
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MDagPath& object, const MObject& component, bool mergeWithExisting)
{
    if (!object.isValid())
        return MStatus::kInvalidParameter;
    if (mergeWithExisting) {
        for (Item& it : fItems) {
            if (it.kind != 1 || !(it.path == object))
                continue;
            if (component.isNull() && it.component.isNull())
                return MStatus::kSuccess;
            auto have = Access::as<host::ComponentBody>(it.component);
            auto add = Access::as<host::ComponentBody>(component);
            if (have && add && it.component.apiType() == component.apiType()) {
                // Merge the elements, keeping first-seen order.
                for (int e : add->elements)
                    if (std::find(have->elements.begin(), have->elements.end(), e) == have->elements.end())
                        have->elements.push_back(e);
                have->complete = have->complete || add->complete;
                return MStatus::kSuccess;
            }
        }
    }
    Item it;
    it.path = object;
    it.component = component;
    it.kind = 1;
    fItems.push_back(it);
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MPlug& plug, bool mergeWithExisting)
{
    if (plug.isNull())
        return MStatus::kInvalidParameter;
    if (mergeWithExisting)
        for (const Item& it : fItems)
            if (it.kind == 2 && it.plug == plug)
                return MStatus::kSuccess;
    Item it;
    it.plug = plug;
    it.kind = 2;
    fItems.push_back(it);
    return MStatus::kSuccess;
}

MStatus MSelectionList::merge(const MSelectionList& other, MergeStrategy strategy)
{
    for (const Item& it : other.fItems) {
        auto match = std::find_if(fItems.begin(), fItems.end(), [&](const Item& mine) {
            return mine.kind == it.kind && mine.node == it.node && mine.path == it.path &&
                   mine.component == it.component && mine.plug == it.plug;
        });
        if (strategy == kRemoveFromList || (strategy == kXORWithList && match != fItems.end())) {
            if (match != fItems.end())
                fItems.erase(match);
        } else if (match == fItems.end()) {
            fItems.push_back(it);
        }
    }
    return MStatus::kSuccess;
}

MStatus MSelectionList::remove(unsigned int index)
{
    if (index >= fItems.size())
        return MStatus::kInvalidParameter;
    fItems.erase(fItems.begin() + index);
    return MStatus::kSuccess;
}

MStatus MSelectionList::replace(unsigned int index, const MObject& item)
{
    if (index >= fItems.size())
        return MStatus::kInvalidParameter;
    MSelectionList one;
    MStatus st = one.add(item);
    if (st)
        fItems[index] = one.fItems[0];
    return st;
}

MStatus MSelectionList::toggle(const MDagPath& object, const MObject& component)
{
    for (auto it = fItems.begin(); it != fItems.end(); ++it)
        if (it->kind == 1 && it->path == object && it->component == component) {
            fItems.erase(it);
            return MStatus::kSuccess;
        }
    return add(object, component);
}

bool MSelectionList::hasItem(const MObject& item, MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    for (unsigned int i = 0; i < fItems.size(); ++i) {
        MObject o;
        if (getDependNode(i, o) && o == item)
            return true;
    }
    return false;
}

bool MSelectionList::hasItem(const MDagPath& item, const MObject& component, MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    for (const Item& it : fItems)
        if (it.kind == 1 && it.path == item && (component.isNull() || it.component == component))
            return true;
    return false;
}
