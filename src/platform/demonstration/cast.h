// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/process.h"
#include "platform/logstore/writer/sharedcache.h"
#include "platform/logstore/writer/stringreference.h"
#include "platform/logstore/writer/uuidtext.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace demonstration {

enum class Role : std::uint8_t { Kernel, Backup, Agent, Network, Window, Mail, Quillon };
constexpr std::size_t roleCount = 7;

/// The image that a message is written in.
enum class From : std::uint8_t { Main, Extension, Library, Framework };

/// Who speaks: which process, in which of its images, for which subsystem. Without subsystem and
/// category when both are empty.
struct Voice
{
    Role role = Role::Agent;
    From from = From::Main;
    std::string_view subsystem;
    std::string_view category;
};

/// The processes of the invented Mac and the images that hold their strings.
class Cast
{
public:
    Cast();

    logstore::writer::Process& process(Role role)
    {
        return m_processes.at(static_cast<std::size_t>(role));
    }
    /// The reference to a format string, which becomes part of the voice's image.
    logstore::writer::StringReference format(const Voice& voice, std::string_view text);
    /// A signpost's name in the image of the voice.
    logstore::writer::NameReference name(const Voice& voice, std::string_view text);
    const logstore::Uuid& image(const Voice& voice) const;

    const std::array<logstore::writer::UuidText, roleCount>& mainImages() const
    {
        return m_mainImages;
    }
    const logstore::writer::UuidText& extension() const { return m_extension; }
    const logstore::writer::SharedCache& sharedCache() const { return m_cache; }

private:
    std::uint64_t offset(const Voice& voice, std::string_view text);

    std::array<logstore::writer::Process, roleCount> m_processes;
    std::array<logstore::writer::UuidText, roleCount> m_mainImages;
    logstore::writer::UuidText m_extension; ///< of the kernel
    logstore::writer::SharedCache m_cache;
};

/// An identifier that differs for every number.
logstore::Uuid demonstrationUuid(std::uint8_t number);

} // namespace demonstration
