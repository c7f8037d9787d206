// tqsarn: plays retopology sessions through the tqSarn plug-in on the headless host, and
// describes scans. See the README for the commands and the session format.

#include "player.h"

#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    // Progress goes to stderr, and only when a person watches it.
    return tqsarn::run(args, std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
}
