// SPDX-License-Identifier: MIT
#include "platform/demonstration/papers.h"

#include "platform/base/timeunits.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace demonstration {

namespace {

struct Share
{
    const char* path;
    double percent;
};

constexpr auto shares = std::to_array<Share>({
    {"/usr/libexec/DemonstrationAgent", 31.0},
    {"/kernel", 24.5},
    {"/usr/sbin/DemonstrationNetwork", 17.8},
    {"/Applications/Demonstration Window.app/Contents/MacOS/Demonstration Window", 11.2},
    {"/usr/libexec/DemonstrationBackup", 8.1},
    {"/Applications/DemonstrationMail.app/Contents/MacOS/DemonstrationMail", 5.3},
    {"/usr/local/bin/quillon", 2.1},
});

std::string dateText(std::int64_t nanoseconds)
{
    const auto seconds = static_cast<std::time_t>(nanoseconds / nanosecondsPerSecond);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::array<char, 40> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S+0000", &parts);
    return text.data();
}

std::string record(const std::string& head, std::int64_t time, std::size_t size)
{
    std::string text = "--- !logd statistics record\n" + head + "time  : " + dateText(time) + "\n";
    text += "total : " + std::to_string(size) + "\nprocs :\n";
    for (const Share& share : shares) {
        std::array<char, 40> numbers{};
        const double bytes = static_cast<double>(size) * share.percent / 100;
        std::snprintf(numbers.data(), numbers.size(), "    - [%11.0f, %5.1f, ", bytes,
                      share.percent);
        text += numbers.data();
        text += share.path;
        text += " ]\n";
    }
    return text + "\n";
}

} // namespace

std::string statisticsText(const std::vector<Rotation>& rotations)
{
    constexpr std::size_t memorySize = 8'388'608;
    std::string text;
    for (const Rotation& rotation : rotations)
        text += record("type  : File Rotate\nfile  : " + rotation.file + "\n", rotation.time,
                       rotation.size);
    if (!rotations.empty())
        text += record("type  : Memory Rollover\n", rotations.back().time, memorySize);
    return text;
}

std::string versionPropertyList(const std::string& boot)
{
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n<dict>\n\t<key>Version</key>\n\t<integer>7</integer>\n";
    for (const char* key : {"ttl01", "ttl03", "ttl07", "ttl14", "ttl30"})
        text += "\t<key>" + std::string(key)
                + "</key>\n\t<dict>\n\t\t<key>ContinuousTime</key>\n\t\t<integer>0</integer>\n"
                + "\t\t<key>UUID</key>\n\t\t<string>" + boot + "</string>\n\t</dict>\n";
    return text + "</dict>\n</plist>\n";
}

} // namespace demonstration
