#pragma once
// The module names that log lines carry (`MStatus::pAPIerror(module, line)`). They name the
// part of the tool a line comes from as its users and support know it, not a source file:
// the free functions of store/ and kernel/ all log as "functions".

namespace tq::logModule {

constexpr const char* kFunctions = "functions";
constexpr const char* kToolCommand = "tqSarnToolCmd";
constexpr const char* kPatchNode = "tqPatchNode";
constexpr const char* kTool = "tqSarn";
constexpr const char* kTweakNode = "tqTweakNode";

} // namespace tq::logModule
