#pragma once
// MSyntax: what a command accepts: flags with up to six typed arguments, typed command
// arguments or a list of objects, and whether it has edit and query modes. The host checks
// every invocation of a plug-in command against its syntax before doIt runs.
//
// Copies share one definition, as the syntax a context command hands to appendSyntax must
// keep the flags added through the copy.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct SyntaxData;
class CommandAccess;
}

class MSyntax {
public:
    enum MArgType {
        kInvalidArgType,
        kNoArg,
        kBoolean,
        kLong,
        kDouble,
        kString,
        kUnsigned,
        kDistance,
        kAngle,
        kTime,
        kSelectionItem,
        kLastArgType
    };

    enum MObjectFormat { kInvalidObjectFormat, kNone, kStringObjects, kSelectionList, kLastObjectFormat };

    MSyntax();
    MSyntax(const MSyntax& other);
    virtual ~MSyntax();
    MSyntax& operator=(const MSyntax& rhs);

    MStatus addFlag(const char* shortName, const char* longName, MArgType argType1 = kNoArg,
                    MArgType argType2 = kNoArg, MArgType argType3 = kNoArg, MArgType argType4 = kNoArg,
                    MArgType argType5 = kNoArg, MArgType argType6 = kNoArg);
    MStatus makeFlagMultiUse(const char* flag);
    MStatus makeFlagQueryWithFullArgs(const char* flag, bool queryArgsAreOptional);
    MStatus addArg(MArgType arg);

    void useSelectionAsDefault(bool useSelectionList = false);
    MStatus setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects = 0);
    MStatus setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects, unsigned int maximumObjects);
    void setMinObjects(unsigned int minimumObjectCount);
    void setMaxObjects(unsigned int maximumObjectCount);
    void enableQuery(bool supportsQuery = true);
    void enableEdit(bool supportsEdit = true);

    unsigned int minObjects() const;
    unsigned int maxObjects() const;
    bool canQuery() const;
    bool canEdit() const;

    static const char* className();

private:
    friend class host::CommandAccess;
    std::shared_ptr<host::SyntaxData> fData;
};
