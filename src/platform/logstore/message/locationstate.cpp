// SPDX-License-Identifier: MIT
#include "platform/logstore/message/locationstate.h"

#include "platform/logstore/message/textoutput.h"

#include <cmath>

namespace logstore {

namespace {

/// Writes the members of one JSON object from a structure with natural alignment.
class StateWriter
{
public:
    StateWriter(std::string& out, Bytes state) : m_out(out), m_state(state) { m_out += '{'; }

    template <typename T = std::uint8_t>
    void flag(std::string_view name, std::size_t at)
    {
        member(name);
        m_out += loadAt<T>(m_state, at) != 0 ? "true" : "false";
    }
    template <typename T>
    void number(std::string_view name, std::size_t at)
    {
        member(name);
        appendDecimal(m_out, loadAt<T>(m_state, at));
    }
    void real(std::string_view name, std::size_t at)
    {
        member(name);
        const auto value = loadAt<double>(m_state, at);
        if (std::isfinite(value))
            appendShortest(m_out, value);
        else
            m_out += "null";
    }
    void text(std::string_view name, std::string_view value)
    {
        member(name);
        m_out.append("\"").append(value).append("\"");
    }
    void open(std::string_view name)
    {
        member(name);
        m_out += '{';
        m_first = true;
    }
    void close()
    {
        m_out += '}';
        m_first = false;
    }

private:
    void member(std::string_view name)
    {
        if (!m_first)
            m_out += ',';
        m_first = false;
        m_out.append("\"").append(name).append("\":");
    }

    std::string& m_out;
    Bytes m_state;
    bool m_first = true;
};

std::string reachabilityName(std::int32_t value)
{
    switch (value) {
    case 0: return "kReachabilityUnavailable";
    case 1: return "kReachabilitySmall";
    case 2: return "kReachabilityLarge";
    case 1000: return "kReachabilityUnachievable";
    default: return std::to_string(value);
    }
}

std::string chargerName(std::int32_t value)
{
    switch (value) {
    case 0: return "kChargerTypeUnknown";
    case 2: return "kChargerTypeUsb";
    default: return std::to_string(value);
    }
}

} // namespace

bool appendClientManagerState(std::string& out, Bytes state)
{
    if (state.size() != 8)
        return false;
    StateWriter json(out, state);
    json.flag<std::uint32_t>("locationRestricted", 4);
    json.number<std::uint32_t>("locationServicesEnabledStatus", 0);
    json.close();
    return true;
}

// f64 distance filter 0, f64 desired accuracy 8, flags 16 to 20, f64 heading filter 24, flags 32 to
// 35, i32 previous status 36, flag 40, i64 activity type 48, i32 pauses 56, flags 60 to 63; the
// long form goes on with flags 64 to 71. The misspelt names are the system's.
bool appendLocationManagerState(std::string& out, Bytes state)
{
    constexpr std::size_t shortForm = 64;
    constexpr std::size_t longForm = 72;
    if (state.size() != shortForm && state.size() != longForm)
        return false;
    const bool isLong = state.size() == longForm;
    StateWriter json(out, state);
    const auto longFlag = [&json, isLong](std::string_view name, std::size_t at) {
        if (isLong)
            json.flag(name, at);
    };
    json.flag("previousAuthorizationStatusValid", 35);
    json.flag("paused", 60);
    json.flag("requestingLocation", 17);
    longFlag("updatingVehicleSpeed", 65);
    json.real("desiredAccuracy", 8);
    json.flag("allowsBackgroundLocationUpdates", 61);
    json.flag("dynamicAccuracyReductionEnabled", 34);
    json.real("distanceFilter", 0);
    json.flag("allowsLocationPrompts", 32);
    json.number<std::int64_t>("activityType", 48);
    longFlag("groundAltitudeEnabled", 68);
    json.number<std::int32_t>("pausesLocationUpdatesAutomatially", 56);
    longFlag("fusionInfoEnabled", 69);
    longFlag("isAuthorizedForWidgetUpdates", 71);
    longFlag("updatingVehicleHeading", 66);
    longFlag("batchingLocation", 64);
    json.flag("showsBackgroundLocationIndicator", 62);
    json.flag("updatingLocation", 16);
    json.flag("requestingRanging", 18);
    json.flag("updatingHeading", 20);
    json.number<std::int32_t>("previousAuthorizationStatus", 36);
    json.flag("allowsMapCorrection", 63);
    longFlag("matchInfoEnabled", 67);
    json.flag("allowsAlteredAccessoryLoctions", 33);
    json.flag("updatingRanging", 19);
    json.flag("limitsPrecision", 40);
    longFlag("courtesyPromptNeeded", 70);
    json.real("headingFilter", 24);
    json.close();
    return true;
}

// f64 level 0, flags 8 and 9, i32 charger 12, flag 16, i32 reachability 24, i32 thermal level 28,
// flags 32 to 35.
bool appendDaemonStatus(std::string& out, Bytes state)
{
    if (state.size() != 36 && state.size() != 40)
        return false;
    StateWriter json(out, state);
    json.number<std::int32_t>("thermalLevel", 28);
    json.text("reachability", reachabilityName(loadAt<std::int32_t>(state, 24)));
    json.flag("airplaneMode", 32);
    json.open("batteryData");
    json.flag("wasConnected", 16);
    json.flag("charged", 8);
    json.real("level", 0);
    json.flag("connected", 9);
    json.text("chargerType", chargerName(loadAt<std::int32_t>(state, 12)));
    json.close();
    json.flag("restrictedMode", 35);
    json.flag("batterySaverModeEnabled", 33);
    json.close();
    return true;
}

} // namespace logstore
