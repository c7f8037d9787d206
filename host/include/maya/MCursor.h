#pragma once
// MCursor: the pointer shape a context shows over the view. The host keeps the shape's name
// (the standard cursors) or "custom" for bitmaps, so tools can be checked for their cursor.

#include <maya/MTypes.h>

namespace host {
class ToolAccess;
}

class MCursor {
public:
    MCursor(short width, short height, short hotSpotX, short hotSpotY, unsigned char* bits, unsigned char* mask);
    MCursor(const MCursor& other);
    ~MCursor();

    MCursor& operator=(const MCursor& other);
    bool operator==(const MCursor& other) const;
    bool operator!=(const MCursor& other) const;

    static const MCursor defaultCursor;
    static const MCursor crossHairCursor;
    static const MCursor doubleCrossHairCursor;
    static const MCursor editCursor;
    static const MCursor pencilCursor;
    static const MCursor handCursor;

private:
    friend class host::ToolAccess;
    explicit MCursor(const char* name);
    const char* fName;
    short fWidth = 0;
    short fHeight = 0;
    short fHotSpotX = 0;
    short fHotSpotY = 0;
};
