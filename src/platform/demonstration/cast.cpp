// SPDX-License-Identifier: MIT
#include "platform/demonstration/cast.h"

namespace demonstration {

using namespace logstore::writer;

namespace {

struct Part
{
    Role role;
    const char* path;
    std::int32_t pid;
    std::uint32_t user;
    std::uint32_t persona = noPersona;
};

constexpr auto parts = std::to_array<Part>({
    {Role::Kernel, "/kernel", 0, 0},
    {Role::Backup, "/usr/libexec/DemonstrationBackup", 311, 0},
    {Role::Agent, "/usr/libexec/DemonstrationAgent", 402, 501, 99},
    {Role::Network, "/usr/sbin/DemonstrationNetwork", 167, 65},
    {Role::Window, "/Applications/Demonstration Window.app/Contents/MacOS/Demonstration Window",
     618, 501, 1000},
    {Role::Mail, "/Applications/DemonstrationMail.app/Contents/MacOS/DemonstrationMail", 733, 501},
    {Role::Quillon, "/usr/local/bin/quillon", 951, 501},
});
static_assert(parts.size() == roleCount);

constexpr std::uint8_t extensionNumber = 0x20;
constexpr std::uint8_t cacheNumber = 0x21;
constexpr std::uint8_t cacheImageNumber = 0x22;
constexpr std::uint64_t extensionLoad = 0xfe0007a40000;
constexpr std::uint32_t extensionSize = 0x20000;
/// Keeps an absolute address apart from its string's offset.
constexpr std::uint32_t codeBehindStrings = 0x8000;

SharedCache emptyCache()
{
    SharedCache cache{demonstrationUuid(cacheNumber), 2, {}, {}};
    cache.images.push_back({demonstrationUuid(cacheImageNumber),
                            "/usr/lib/system/libdemonstration.dylib", 0x1a40'0000, 0x40000});
    // Beyond 4 GiB, where references take two numbers.
    cache.images.push_back(
        {demonstrationUuid(cacheImageNumber + 1),
         "/System/Library/Frameworks/DemonstrationKit.framework/Versions/A/DemonstrationKit",
         0x1'a380'0000, 0x90000});
    return cache;
}

} // namespace

logstore::Uuid demonstrationUuid(std::uint8_t number)
{
    logstore::Uuid uuid;
    for (std::size_t i = 0; i < uuid.bytes.size(); ++i)
        uuid.bytes[i] = static_cast<std::uint8_t>(std::size_t{number} * 37
                                                  + i * (std::size_t{number} * 2 + 29));
    uuid.bytes[6] =
        static_cast<std::uint8_t>((uuid.bytes[6] & 0x0f) | 0x40); // a random one by its form
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3f) | 0x80);
    return uuid;
}

Cast::Cast() : m_cache(emptyCache())
{
    m_extension.uuid = demonstrationUuid(extensionNumber);
    m_extension.path =
        "/System/Library/Extensions/DemonstrationStorage.kext/Contents/MacOS/DemonstrationStorage";
    for (const Part& part : parts) {
        const auto index = static_cast<std::size_t>(part.role);
        m_mainImages[index].uuid = demonstrationUuid(static_cast<std::uint8_t>(index + 1));
        m_mainImages[index].path = part.path;
        Process& each = m_processes[index];
        each.pid = part.pid;
        each.user = part.user;
        each.persona = part.persona;
        each.mainImage = m_mainImages[index].uuid;
        if (part.role == Role::Kernel) {
            each.images.push_back({extensionSize, m_extension.uuid, extensionLoad});
        } else {
            each.key = {static_cast<std::uint64_t>(part.pid),
                        static_cast<std::uint32_t>(part.pid) * 3};
            each.sharedCache = m_cache.uuid;
        }
    }
}

std::uint64_t Cast::offset(const Voice& voice, std::string_view text)
{
    switch (voice.from) {
    case From::Main: return m_mainImages.at(static_cast<std::size_t>(voice.role)).offset(text);
    case From::Extension: return m_extension.offset(text);
    case From::Library: return m_cache.offset(0, text);
    case From::Framework: return m_cache.offset(1, text);
    }
    return 0;
}

StringReference Cast::format(const Voice& voice, std::string_view text)
{
    const std::uint64_t place = offset(voice, text);
    switch (voice.from) {
    case From::Main: return inMain(static_cast<std::uint32_t>(place));
    case From::Extension:
        return absolute(extensionLoad + codeBehindStrings + place,
                        static_cast<std::uint32_t>(place));
    case From::Library: return inSharedCache(place);
    case From::Framework: return inLargeSharedCache(place);
    }
    return {};
}

NameReference Cast::name(const Voice& voice, std::string_view text)
{
    return nameAt(offset(voice, text));
}

const logstore::Uuid& Cast::image(const Voice& voice) const
{
    switch (voice.from) {
    case From::Extension: return m_extension.uuid;
    case From::Library: return m_cache.images[0].uuid;
    case From::Framework: return m_cache.images[1].uuid;
    case From::Main: break;
    }
    return m_mainImages.at(static_cast<std::size_t>(voice.role)).uuid;
}

} // namespace demonstration
