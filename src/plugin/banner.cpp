#include "plugin/banner.h"

namespace tq {

MString bannerText()
{
    // A line feed, five lines of large letters, the beta notice, then a line feed and a blank.
    MString text("\n");
    text += "  _        ____                   \n";
    text += " | |_ __ _/ ___|  __ _ _ __ _ __  \n";
    text += " | __/ _` \\___ \\ / _` | '__| '_ \\ \n";
    text += " | || (_| |___) | (_| | |  | | | |\n";
    text += "  \\__\\__, |____/ \\__,_|_|  |_| |_|  [retopology]\n";
    text += "(Beta version, use at your own risk)\n ";
    return text;
}

} // namespace tq
