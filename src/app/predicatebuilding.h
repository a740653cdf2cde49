// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/predicatechoice.h"
#include "settings/predicateeditor.h"

class Clock;

/// Connects the windows to the predicate language. `clock` gives the present and the time zone for
/// the dates in a predicate.
PredicateBuilder predicateBuilder(const Clock& clock);
PredicateCheck predicateCheck(const Clock& clock);
