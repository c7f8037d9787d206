#pragma once
// Shared pieces of the host test suites: a fixture that starts every test from a new
// scene with an empty log, plug-in loading that tolerates an earlier load in the same
// process, and readable conversions for failure messages.

#include <host/harness.h>
#include <host/log.h>

#include <maya/MFnDependencyNode.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

namespace hosttest {

inline std::string str(const MString& s) { return std::string(s.asChar()); }

// The plug-in name the loader derives from a path: the file name without extension.
inline std::string pluginNameOf(const std::string& path)
{
    std::string name = path.substr(path.find_last_of('/') + 1);
    return name.substr(0, name.find('.'));
}

// Loads the plug-in unless it is loaded already; the loader refuses a second load.
inline ::testing::AssertionResult ensurePluginLoaded(const std::string& path)
{
    if (host::isPluginLoaded(pluginNameOf(path)))
        return ::testing::AssertionSuccess();
    std::string name;
    MStatus status = host::loadPlugin(path, &name);
    if (!status)
        return ::testing::AssertionFailure() << "loading " << path << " failed:\n" << host::logText();
    if (name != pluginNameOf(path))
        return ::testing::AssertionFailure() << "loaded " << path << " as '" << name << "'";
    return ::testing::AssertionSuccess();
}

inline std::string joined(const std::vector<std::string>& items)
{
    std::string out;
    for (const std::string& item : items)
        out += (out.empty() ? "" : ", ") + item;
    return "[" + out + "]";
}

// A node's name, or "<null>" for a null object, for messages.
inline std::string nameOf(const MObject& node)
{
    return node.isNull() ? std::string("<null>") : host::nodeName(node);
}

// An attribute of a node by long or short name.
inline MObject attributeOf(const MObject& node, const char* name)
{
    MFnDependencyNode fn(node);
    return fn.attribute(name);
}

// Every test starts from a new scene with an empty log; the plug-in given is loaded first.
class SceneTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        host::newScene();
        host::clearLog();
    }
    void TearDown() override
    {
        if (HasFailure() && !host::logEntries().empty())
            std::cerr << "Host log of the failed test:\n" << host::logText();
    }
};

} // namespace hosttest
