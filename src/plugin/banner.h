#pragma once
// The start-up banner printed once the plug-in has registered everything.

#include <maya/MString.h>

namespace tq {

MString bannerText();

} // namespace tq
