#pragma once
// MIOStream: the standard streams, with the names plug-in sources use unqualified
// (cout << ... << endl) brought into the global namespace.

#include <fstream>
#include <iomanip>
#include <iostream>

using std::cerr;
using std::cin;
using std::cout;
using std::endl;
using std::flush;
using std::fstream;
using std::ifstream;
using std::ios;
using std::istream;
using std::ofstream;
using std::ostream;
