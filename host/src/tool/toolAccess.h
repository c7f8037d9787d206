#pragma once
// ToolAccess: the tool module's door into the private parts of MEvent, MCursor, MPxContext
// and MPxContextCommand.

#include <maya/MArgParser.h>
#include <maya/MCursor.h>
#include <maya/MEvent.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MSyntax.h>

#include <string>

namespace host {

struct ContextEntry;

class ToolAccess {
public:
    static MEvent event(short x, short y, int button, int modifiers)
    {
        MEvent e;
        e.fX = x;
        e.fY = y;
        e.fButton = button;
        e.fModifiers = modifiers;
        return e;
    }

    static const char* cursorName(const MCursor& cursor) { return cursor.fName; }
    static MCursor namedCursor(const char* name) { return MCursor(name); }

    static void setEntry(MPxContext* context, ContextEntry* entry) { context->fEntry = entry; }
    static ContextEntry* entry(const MPxContext* context) { return context->fEntry; }
    static std::string title(const MPxContext* context) { return context->fTitle.asChar(); }
    static std::string help(const MPxContext* context) { return context->fHelp.asChar(); }
    static std::string cursor(const MPxContext* context) { return context->fCursorName; }

    static MSyntax& syntax(MPxContextCommand* command) { return command->fSyntax; }
    static void setParser(MPxContextCommand* command, const MArgParser& parser) { command->fParser = parser; }
};

} // namespace host
