#include <maya/MCursor.h>

#include <cstring>

const MCursor MCursor::defaultCursor("defaultCursor");
const MCursor MCursor::crossHairCursor("crossHairCursor");
const MCursor MCursor::doubleCrossHairCursor("doubleCrossHairCursor");
const MCursor MCursor::editCursor("editCursor");
const MCursor MCursor::pencilCursor("pencilCursor");
const MCursor MCursor::handCursor("handCursor");

MCursor::MCursor(const char* name) : fName(name) {}

// The bitmaps are not kept: the host shows no pointer, it only reports which one is set.
MCursor::MCursor(short width, short height, short hotSpotX, short hotSpotY, unsigned char*, unsigned char*)
    : fName("custom"), fWidth(width), fHeight(height), fHotSpotX(hotSpotX), fHotSpotY(hotSpotY)
{
}

MCursor::MCursor(const MCursor& other) = default;
MCursor::~MCursor() = default;
MCursor& MCursor::operator=(const MCursor& other) = default;

bool MCursor::operator==(const MCursor& other) const
{
    return std::strcmp(fName, other.fName) == 0 && fWidth == other.fWidth && fHeight == other.fHeight &&
           fHotSpotX == other.fHotSpotX && fHotSpotY == other.fHotSpotY;
}

bool MCursor::operator!=(const MCursor& other) const { return !(*this == other); }
