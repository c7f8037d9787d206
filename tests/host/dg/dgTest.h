#pragma once
// The fixture of the DG suite.

#include "dgPluginTest.h"

using DgTest = hosttest::DgPluginTest;
