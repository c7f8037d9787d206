#pragma once
// Basic types shared by the API headers: fixed-width and pointer-sized integers, small
// fixed-size arrays, the plug-in callback signatures and the MSpace transformation spaces.

#include <cstddef>
#include <cstdint>
#include <sys/types.h>

#include <maya/MApiNamespace.h>

// Version numbers of the API this host implements, in the devkit's format.
#define MAYA_API_VERSION 20250000
#define MAYA_APP_VERSION 2025

// The vendor string plug-in samples pass to MFnPlugin; a plug-in may #undef and redefine it.
#ifndef PLUGIN_COMPANY
#define PLUGIN_COMPANY "Autodesk"
#endif

// Plug-ins export initializePlugin/uninitializePlugin with this; the loader finds them by name.
#ifndef PLUGIN_EXPORT
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

// Library export markers are meaningless here (one shared library, default visibility),
// but plug-in sources sometimes mention them.
#ifndef OPENMAYA_EXPORT
#define OPENMAYA_EXPORT
#endif
#ifndef FND_EXPORT
#define FND_EXPORT
#endif

// Devkit-style class bodies write "BEGIN_NO_SCRIPT_SUPPORT:" where "public:" would go.
#ifndef BEGIN_NO_SCRIPT_SUPPORT
#define BEGIN_NO_SCRIPT_SUPPORT public
#define END_NO_SCRIPT_SUPPORT public
#endif

class MStatus;
class MSyntax;
class MPxTransformationMatrix;

typedef signed short short2[2];
typedef signed short short3[3];
typedef signed int long2[2];
typedef signed int long3[3];
typedef signed int int2[2];
typedef signed int int3[3];
typedef float float2[2];
typedef float float3[3];
typedef double double2[2];
typedef double double3[3];
typedef double double4[4];

typedef std::uint64_t MUint64;
typedef std::int64_t MInt64;
typedef std::intptr_t MIntPtrSz;
typedef std::uintptr_t MUintPtrSz;

// Identifies a registered message callback (MMessage and its subclasses hand these out).
typedef MUintPtrSz MCallbackId;

typedef void* (*MCreatorFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();
typedef MStatus (*MInitializeFunction)();
typedef MPxTransformationMatrix* (*MCreateXformMatrixFunction)();

// The coordinate space a transformation or component query is expressed in.
class MSpace
{
public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,
        kPreTransform = 2,
        kPostTransform = 3,
        kWorld = 4,
        kObject = kPreTransform,
        kLast = 5
    };
};
