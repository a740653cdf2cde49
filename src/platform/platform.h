// SPDX-License-Identifier: MIT
#pragma once

class Alerts;
class Clock;
class LogStores;
class Panels;
class ProcessRunner;
class UserDefaults;

/// Everything outside the application that a window or model may call on. Handed in at
/// construction, so that a test can stand in for any part.
struct Platform
{
    Panels& panels;
    Alerts& alerts;
    UserDefaults& defaults;
    LogStores& logStores;
    ProcessRunner& processes;
    Clock& clock;
};
